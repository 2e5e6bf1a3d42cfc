// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "recording/CaptureFile.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <memory>
#include <optional>
#include <utility>

#include <pcap/pcap.h>

#include "recording/TrafficReader.h"

namespace applist::sim {
namespace {

using namespace std::string_view_literals;

// Magic numbers: pcapng, then pcap with microseconds and nanoseconds in both byte orders.
constexpr std::array MAGICS{"\x0a\x0d\x0d\x0a"sv, "\xa1\xb2\xc3\xd4"sv, "\xd4\xc3\xb2\xa1"sv,
                            "\xa1\xb2\x3c\x4d"sv, "\x4d\x3c\xb2\xa1"sv};

// The year 9999. A damaged packet may contain any time.
constexpr int64_t LAST_SECOND = 253'402'300'799;

struct CloseCapture {
    void operator()(pcap_t* capture) const { pcap_close(capture); }
};
using Capture = std::unique_ptr<pcap_t, CloseCapture>;

Result<Capture> Open(std::string_view bytes) {
    // The file is opened for reading only.
    FILE* file = fmemopen(const_cast<char*>(bytes.data()), bytes.size(), "rb");
    if (file == nullptr) {
        return Result<Capture>::Failure("out of memory");
    }
    std::array<char, PCAP_ERRBUF_SIZE> error{};
    Capture capture(
        pcap_fopen_offline_with_tstamp_precision(file, PCAP_TSTAMP_PRECISION_MICRO, error.data()));
    if (!capture) {
        // On success the capture owns the file and closes it.
        static_cast<void>(std::fclose(file));
        return Result<Capture>::Failure(error.data());
    }
    if (pcap_datalink(capture.get()) != DLT_DBUS) {
        return Result<Capture>::Failure("a capture, but not of D-Bus traffic");
    }
    return capture;
}

/// Reads packet by packet.
class CaptureReader {
public:
    void Read(const pcap_pkthdr& header, const uint8_t* bytes) {
        ++m_packet;
        // The capture program limits the size of packets. The rest of this one was not stored.
        if (header.caplen < header.len) {
            ++m_cut;
            return;
        }
        // GIO does not change the bytes, although the parameter is not const.
        const GObjectPtr<GDBusMessage> message(
            g_dbus_message_new_from_blob(const_cast<uint8_t*>(bytes), header.caplen,
                                         G_DBUS_CAPABILITY_FLAGS_UNIX_FD_PASSING, nullptr));
        if (!message) {
            ++m_damaged;
            return;
        }
        auto taken = m_traffic.Read(message.get(), TimeOf(header));
        if (taken) {
            // A capture does not have lines, so messages name the packet.
            taken->line = m_packet;
            m_recording.messages.push_back(std::move(*taken));
        }
    }

    Recording Finish(const std::string& damage) {
        // Skipped packets are named, because a comparison would report them as missing messages.
        Remark(m_cut, "truncated; capture with a larger busctl --size");
        Remark(m_damaged, "not D-Bus messages");
        if (!damage.empty()) {
            AddRemark("the end is damaged: " + damage);
        }
        return std::move(m_recording);
    }

private:
    int64_t TimeOf(const pcap_pkthdr& header) {
        const auto seconds = std::clamp<int64_t>(header.ts.tv_sec, 0, LAST_SECOND);
        const int64_t time = seconds * 1'000'000 + header.ts.tv_usec;
        m_begin = m_begin.value_or(time);
        // The clock may have been set back during the capture, or the time may be damaged.
        return std::max<int64_t>(0, time - *m_begin);
    }
    void Remark(size_t count, const std::string& what) {
        if (count > 0) {
            AddRemark("skipped " + std::to_string(count) + " packets: " + what);
        }
    }
    void AddRemark(const std::string& remark) {
        m_recording.remark += (m_recording.remark.empty() ? "" : "; ") + remark;
    }

    TrafficReader m_traffic;
    Recording m_recording;
    std::optional<int64_t> m_begin;
    size_t m_packet = 0;
    size_t m_cut = 0;
    size_t m_damaged = 0;
};

}  // namespace

bool IsCapture(std::string_view bytes) {
    return std::any_of(MAGICS.begin(), MAGICS.end(),
                       [bytes](std::string_view magic) { return bytes.starts_with(magic); });
}

Result<Recording> ReadCapture(std::string_view bytes) {
    // fmemopen() may refuse a size of 0 with an unrelated error.
    if (bytes.empty()) {
        return Result<Recording>::Failure("empty");
    }
    const auto capture = Open(bytes);
    if (!capture) {
        return Result<Recording>::Failure(capture.error());
    }
    CaptureReader reader;
    pcap_pkthdr* header = nullptr;
    const uint8_t* packet = nullptr;
    int result = 0;
    while ((result = pcap_next_ex(capture->get(), &header, &packet)) == 1) {
        reader.Read(*header, packet);
    }
    return reader.Finish(result == PCAP_ERROR ? pcap_geterr(capture->get()) : "");
}

}  // namespace applist::sim
