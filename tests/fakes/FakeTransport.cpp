// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "fakes/FakeTransport.h"

#include <utility>

#include "fakes/FakePlatformLog.h"

namespace applist::test {

FakeTransport& TheTransport() {
    static FakeTransport transport;
    return transport;
}

std::string ToHex(const std::vector<char>& bytes) {
    static constexpr const char* DIGITS = "0123456789abcdef";
    std::string text;
    for (const char byte : bytes) {
        const auto value = static_cast<unsigned char>(byte);
        text += text.empty() ? "" : " ";
        text += DIGITS[value >> 4U];
        text += DIGITS[value & 0x0FU];
    }
    return text;
}

namespace {

void Record(const std::vector<char>& data, std::optional<std::string> partner) {
    Note("notify " + partner.value_or("all") + ": " + ToHex(data));
    TheTransport().sent.push_back({data, std::move(partner)});
}

}  // namespace
}  // namespace applist::test

using applist::test::Note;
using applist::test::Record;
using applist::test::TheTransport;

JavaMWDbusLocal::JavaMWDbusLocal(std::string name) : m_name(std::move(name)) {
    Note("transport created: " + m_name);
    TheTransport().live = this;
    TheTransport().name = m_name;
}

JavaMWDbusLocal::~JavaMWDbusLocal() {
    Note("transport destroyed");
    TheTransport().live = nullptr;
}

void JavaMWDbusLocal::BroadcastName(std::string& name) {
    Note("broadcast: " + name);
}

std::vector<char> JavaMWDbusLocal::SendMessage(std::vector<char>& data) {
    Note("call: " + applist::test::ToHex(data));
    return {};
}

void JavaMWDbusLocal::SendNotification(std::vector<char>& data, const std::string& partner) {
    Record(data, partner);
}

void JavaMWDbusLocal::SendNotification(std::vector<char>& data) {
    Record(data, std::nullopt);
}

bool JavaMWDbusLocal::IsConnectionReady(const std::string& partner) {
    return TheTransport().connected.count(partner) > 0;
}

std::vector<char> JavaMWDbusLocal::HandleMessage(std::vector<char>& data) {
    Note("unhandled message: " + applist::test::ToHex(data));
    return {};
}

void JavaMWDbusLocal::HandleNotification(std::vector<char>& data) {
    Note("unhandled notification: " + applist::test::ToHex(data));
}

void JavaMWDbusLocal::HandleConnectionReady(bool ready, const std::string& partner) {
    Note("unhandled connection: " + partner + (ready ? " ready" : " lost"));
}
