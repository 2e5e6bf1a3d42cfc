// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "support/CaptureGenerator.h"

#include <algorithm>

#include "support/ScriptedPeer.h"

namespace applist::test {
namespace {

constexpr const char* PATH = "/org/vantu/javamw/CommunicationChannel/Applist";
constexpr const char* INTERFACE = "org.vantu.javamw.DbusCommunication";
constexpr uint32_t SNAPLEN = 4096;

// Takes ownership of message and content.
std::string Finish(GDBusMessage* message, const std::string& from, const std::string& to,
                   uint32_t serial, GVariant* content) {
    g_dbus_message_set_sender(message, from.c_str());
    if (!to.empty()) {
        g_dbus_message_set_destination(message, to.c_str());
    }
    g_dbus_message_set_serial(message, serial);
    g_dbus_message_set_body(message, content);
    size_t size = 0;
    unsigned char* blob =
        g_dbus_message_to_blob(message, &size, G_DBUS_CAPABILITY_FLAGS_NONE, nullptr);
    std::string bytes(reinterpret_cast<char*>(blob), size);
    g_free(blob);
    g_object_unref(message);
    return bytes;
}

}  // namespace

CaptureGenerator::CaptureGenerator(Form form, uint32_t link) : m_form(form) {
    if (form == Form::PcapNg) {
        PcapNgHeader(link);
    } else {
        PcapHeader(link);
    }
}

void CaptureGenerator::Number(uint32_t value, size_t size) {
    for (size_t i = 0; i < size; ++i) {
        const size_t place = m_form == Form::PcapBigEndian ? size - 1 - i : i;
        m_bytes += static_cast<char>(value >> 8U * place & 0xFFU);
    }
}

void CaptureGenerator::PcapHeader(uint32_t link) {
    Number(m_form == Form::PcapNanoseconds ? 0xA1B23C4D : 0xA1B2C3D4, 4);
    Number(2, 2);
    Number(4, 2);
    Number(0, 4);
    Number(0, 4);
    Number(SNAPLEN, 4);
    Number(link, 4);
}

void CaptureGenerator::PcapNgHeader(uint32_t link) {
    m_bytes.append("\x0a\x0d\x0d\x0a", 4);
    Number(28, 4);
    Number(0x1A2B3C4D, 4);
    Number(1, 2);
    Number(0, 2);
    Number(0xFFFFFFFF, 4);
    Number(0xFFFFFFFF, 4);
    Number(28, 4);
    Number(1, 4);
    Number(20, 4);
    Number(link, 2);
    Number(0, 2);
    Number(SNAPLEN, 4);
    Number(20, 4);
}

void CaptureGenerator::Add(std::string_view bytes, uint64_t microseconds, size_t size) {
    const auto captured = static_cast<uint32_t>(bytes.size());
    const uint32_t onTheWire = static_cast<uint32_t>(std::max(size, bytes.size()));
    const size_t padding = m_form == Form::PcapNg ? (4 - bytes.size() % 4) % 4 : 0;
    const auto block = static_cast<uint32_t>(32 + bytes.size() + padding);
    if (m_form == Form::PcapNg) {
        Number(6, 4);
        Number(block, 4);
        Number(0, 4);
        Number(static_cast<uint32_t>(microseconds >> 32U), 4);
        Number(static_cast<uint32_t>(microseconds & 0xFFFFFFFFU), 4);
    } else {
        const uint64_t unit = m_form == Form::PcapNanoseconds ? 1000 : 1;
        Number(static_cast<uint32_t>(microseconds / 1'000'000), 4);
        Number(static_cast<uint32_t>(microseconds % 1'000'000 * unit), 4);
    }
    Number(captured, 4);
    Number(onTheWire, 4);
    m_bytes += bytes;
    m_bytes.append(padding, '\0');
    if (m_form == Form::PcapNg) {
        Number(block, 4);
    }
}

namespace busmessage {

std::string OwnerChanged(const std::string& name, const std::string& oldOwner,
                         const std::string& newOwner) {
    return Finish(g_dbus_message_new_signal("/org/freedesktop/DBus", "org.freedesktop.DBus",
                                            "NameOwnerChanged"),
                  "org.freedesktop.DBus", "", 1,
                  g_variant_new("(sss)", name.c_str(), oldOwner.c_str(), newOwner.c_str()));
}

std::string Call(const std::string& from, const std::string& to, uint32_t serial,
                 std::string_view content) {
    return Finish(g_dbus_message_new_method_call(nullptr, PATH, INTERFACE, "Send"), from, to,
                  serial, Payload(content));
}

std::string Reply(const std::string& from, const std::string& to, uint32_t toSerial,
                  std::string_view content) {
    GDBusMessage* reply = g_dbus_message_new();
    g_dbus_message_set_message_type(reply, G_DBUS_MESSAGE_TYPE_METHOD_RETURN);
    g_dbus_message_set_reply_serial(reply, toSerial);
    return Finish(reply, from, to, 1, Payload(content));
}

std::string Error(const std::string& from, const std::string& to, uint32_t toSerial,
                  const char* name, const char* text) {
    GDBusMessage* error = g_dbus_message_new();
    g_dbus_message_set_message_type(error, G_DBUS_MESSAGE_TYPE_ERROR);
    g_dbus_message_set_reply_serial(error, toSerial);
    g_dbus_message_set_error_name(error, name);
    return Finish(error, from, to, 1, g_variant_new("(s)", text));
}

std::string Signal(const std::string& from, const std::string& to, std::string_view content) {
    return Finish(g_dbus_message_new_signal(PATH, INTERFACE, "SendSignal"), from, to, 1,
                  Payload(content));
}

}  // namespace busmessage
}  // namespace applist::test
