// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include <gio/gio.h>

namespace applist::test {

/// Writes captures of a bus as tools for packets do, for tests of who reads them.
class CaptureGenerator {
public:
    enum class Form { Pcap, PcapNanoseconds, PcapBigEndian, PcapNg };
    static constexpr uint32_t DBUS_LINK = 231;

    explicit CaptureGenerator(Form form, uint32_t link = DBUS_LINK);

    /// A packet of these bytes; size is what it had on the wire, if more than that.
    void Add(std::string_view bytes, uint64_t microseconds, size_t size = 0);
    const std::string& bytes() const { return m_bytes; }

private:
    void Number(uint32_t value, size_t size);
    void PcapHeader(uint32_t link);
    void PcapNgHeader(uint32_t link);

    Form m_form;
    std::string m_bytes;
};

/// What passes a bus. Each gives the bytes of one whole message.
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
