// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include <gio/gio.h>

namespace applist::test {

/// Writes bus captures in the formats of packet capture tools, for tests of the capture reader.
class CaptureGenerator {
public:
    enum class Form { Pcap, PcapNanoseconds, PcapBigEndian, PcapNg };
    static constexpr uint32_t DBUS_LINK = 231;

    explicit CaptureGenerator(Form form, uint32_t link = DBUS_LINK);

    /// Adds a packet with these bytes. size is its size on the wire if the capture cut it short.
    void Add(std::string_view bytes, uint64_t microseconds, size_t size = 0);
    const std::string& bytes() const { return m_bytes; }

private:
    void Number(uint32_t value, size_t size);
    void PcapHeader(uint32_t link);
    void PcapNgHeader(uint32_t link);

    Form m_form;
    std::string m_bytes;
};

/// Bus messages. Each function returns the bytes of one whole message.
namespace busmessage {

std::string OwnerChanged(const std::string& name, const std::string& oldOwner,
                         const std::string& newOwner);
std::string Call(const std::string& from, const std::string& to, uint32_t serial,
                 std::string_view content);
std::string Reply(const std::string& from, const std::string& to, uint32_t toSerial,
                  std::string_view content);
std::string Error(const std::string& from, const std::string& to, uint32_t toSerial,
                  const char* name, const char* text);
std::string Signal(const std::string& from, const std::string& to, std::string_view content);

}  // namespace busmessage
}  // namespace applist::test
