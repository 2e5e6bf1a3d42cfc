// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "recording/RecordingFile.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <limits>
#include <memory>
#include <optional>
#include <stdexcept>
#include <utility>

#include <glib/gstdio.h>
#include <nlohmann/json.hpp>
#include <pcap/pcap.h>

#include "File.h"
#include "link/Connection.h"
#include "link/Protocol.h"
#include "shared/LineReader.h"
#include "shared/Output.h"

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
    return std::ranges::any_of(
        MAGICS, [bytes](std::string_view magic) { return bytes.starts_with(magic); });
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

namespace {

using tools::Json;

constexpr const char* VERSION_MEMBER = "javamw-recording";
constexpr std::array SIDES{Side::Application, Side::Middleware};
constexpr std::array KINDS{MessageKind::Acquired, MessageKind::Released, MessageKind::Call,
                           MessageKind::Reply,    MessageKind::Error,    MessageKind::Signal,
                           MessageKind::Left};

/// Thrown for a line that cannot be used, with the reason.
struct LineError : std::runtime_error {
    using runtime_error::runtime_error;
};

[[noreturn]] void Refuse(const std::string& member, const std::string& why) {
    throw LineError('"' + member + "\" " + why);
}

// The following functions return a member of an object, or an empty value if it is absent.

std::string TextOf(const Json& object, const char* member) {
    const auto found = object.find(member);
    if (found != object.end() && !found->is_string()) {
        Refuse(member, "is not a string");
    }
    return found == object.end() ? std::string() : found->get<std::string>();
}

int64_t NumberOf(const Json& object, const char* member) {
    // A larger number would become negative in the conversion.
    constexpr uint64_t MOST = std::numeric_limits<int64_t>::max();
    const auto found = object.find(member);
    if (found != object.end() && (!found->is_number_unsigned() || found->get<uint64_t>() > MOST)) {
        Refuse(member, "is not a non-negative integer");
    }
    return found == object.end() ? 0 : found->get<int64_t>();
}

template <typename Choices>
auto ChoiceOf(const Json& object, const char* member, const Choices& choices) {
    const std::string text = TextOf(object, member);
    const auto found =
        std::ranges::find_if(choices, [&text](auto choice) { return NameOf(choice) == text; });
    if (found == choices.end()) {
        Refuse(member, "is unknown: '" + text + "'");
    }
    return *found;
}

Bytes BytesOf(const Json& object, const char* member) {
    auto bytes = FromHex(TextOf(object, member));
    if (!bytes) {
        Refuse(member, "is not hexadecimal");
    }
    return std::move(*bytes);
}

// The parser is not recursive, so deep nesting is harmless.
Json ParseObject(std::string_view line) {
    Json object;
    try {
        object = Json::parse(line);
    } catch (const Json::parse_error& error) {
        throw LineError("not JSON at byte " + std::to_string(error.byte));
    } catch (const Json::exception&) {
        throw LineError("not JSON: a number is out of range");
    }
    if (!object.is_object()) {
        throw LineError("not a JSON object");
    }
    return object;
}

void CheckHeader(std::string_view line) {
    const Json object = ParseObject(line);
    const auto version = object.find(VERSION_MEMBER);
    if (version == object.end() || !version->is_number_unsigned() || *version == 0) {
        throw LineError("not the header of a recording");
    }
    if (*version != RECORDING_VERSION) {
        throw LineError("unsupported version " + version->dump() + " of recordings");
    }
}

RecordedMessage ParseMessage(std::string_view line, size_t number) {
    const Json object = ParseObject(line);
    return {.line = number,
            .time = NumberOf(object, "us"),
            .kind = ChoiceOf(object, "kind", KINDS),
            .side = ChoiceOf(object, "side", SIDES),
            .from = TextOf(object, "from"),
            .to = TextOf(object, "to"),
            .call = static_cast<uint64_t>(NumberOf(object, "call")),
            .name = TextOf(object, "name"),
            .text = TextOf(object, "text"),
            .bytes = BytesOf(object, "bytes")};
}

}  // namespace

std::string RecordingHeader(const std::string& started) {
    return tools::JsonLine({{VERSION_MEMBER, RECORDING_VERSION}, {"started", started}});
}

std::string RecordingLine(const RecordedMessage& message) {
    Json object{
        {"us", message.time}, {"kind", NameOf(message.kind)}, {"side", NameOf(message.side)}};
    const auto add = [&object](const char* member, const std::string& text) {
        if (!text.empty()) {
            object[member] = text;
        }
    };
    add("from", message.from);
    add("to", message.to);
    if (message.call > 0) {
        object["call"] = message.call;
    }
    add("name", message.name);
    add("text", message.text);
    add("bytes", ToHex(message.bytes));
    if (CarriesBytes(message.kind)) {
        object["note"] = Describe(message);
    }
    return tools::JsonLine(object);
}

Result<Recording> ParseRecording(std::string_view text) {
    Recording recording;
    bool begun = false;
    size_t number = 0;
    for (const std::string_view line : tools::LinesOf(text)) {
        ++number;
        // Empty lines are allowed, but counted, so that messages name the right line.
        if (line.find_first_not_of(" \t\r") == std::string_view::npos) {
            continue;
        }
        try {
            if (std::exchange(begun, true)) {
                recording.messages.push_back(ParseMessage(line, number));
            } else {
                CheckHeader(line);
            }
        } catch (const LineError& error) {
            return Result<Recording>::Failure(std::to_string(number) + ": " + error.what());
        }
    }
    return begun ? Result(std::move(recording)) : Result<Recording>::Failure("1: empty");
}

namespace {

std::string Now() {
    g_autoptr(GDateTime) now = g_date_time_new_now_utc();
    g_autofree char* text = g_date_time_format_iso8601(now);
    return text;
}

}  // namespace

Result<Recording> LoadRecording(const std::string& file) {
    const auto input = ReadFile(file);
    if (!input) {
        return Result<Recording>::Failure(input.error());
    }
    const std::string_view content = *input;
    const bool capture = IsCapture(content);
    auto recording = capture ? ReadCapture(content) : ParseRecording(content);
    if (!recording) {
        return Result<Recording>::Failure(file + (capture ? ": " : ":") + recording.error());
    }
    if (!recording->remark.empty()) {
        recording->remark = file + ": " + recording->remark;
    }
    return recording;
}

void RecordingFile::CloseFile::operator()(FILE* file) const {
    // Standard output belongs to the program, and each line was flushed. A failed close loses
    // nothing.
    if (file != stdout) {
        static_cast<void>(std::fclose(file));
    }
}

Result<RecordingFile> RecordingFile::Create(const std::string& file) {
    // The "e" closes the file in child processes.
    FILE* opened = file == "-" ? stdout : g_fopen(file.c_str(), "we");
    if (opened == nullptr) {
        return Result<RecordingFile>::Failure(file + ": " + g_strerror(errno));
    }
    return RecordingFile(file, opened);
}

void RecordingFile::Begin() {
    if (!std::exchange(m_begun, true)) {
        WriteText(RecordingHeader(Now()));
    }
}

void RecordingFile::Write(const RecordedMessage& message) {
    Begin();
    WriteText(RecordingLine(message));
    ++m_count;
}

void RecordingFile::WriteText(const std::string& line) {
    FILE* file = m_file.get();
    const bool written = std::fwrite(line.data(), 1, line.size(), file) == line.size() &&
                         std::fputc('\n', file) != EOF && std::fflush(file) == 0;
    // A later error would hide the first one, at which the recording became incomplete.
    if (!written && m_error.empty()) {
        m_error = m_name + ": " + g_strerror(errno);
    }
}

namespace {

// Common prefix of all handshake names.
constexpr const char* NAMESPACE = "org.vantu.JavaMW";

}  // namespace

Result<std::unique_ptr<SessionRecorder>> SessionRecorder::Start(GDBusConnection* connection,
                                                                TrafficTap::Use use,
                                                                const std::string& file) {
    using Started = Result<std::unique_ptr<SessionRecorder>>;
    auto created = RecordingFile::Create(file);
    if (!created) {
        return Started::Failure(created.error());
    }
    return Started(std::make_unique<SessionRecorder>(connection, use, std::move(*created)));
}

SessionRecorder::SessionRecorder(GDBusConnection* connection, TrafficTap::Use use,
                                 RecordingFile file)
    : m_file(std::move(file)),
      m_tap(std::make_unique<TrafficTap>(connection, use, [this](const RecordedMessage& message) {
          const std::lock_guard lock(m_mutex);
          m_file.Write(message);
      })) {
    if (use == TrafficTap::Use::Participant) {
        // The bus reports names only to subscribers. The tap sees the resulting signals.
        m_announcements =
            Subscribe(connection, OwnerChangesOf(NAMESPACE, true), [](const auto&, GVariant*) {});
    }
}

std::string SessionRecorder::Begin() {
    const std::lock_guard lock(m_mutex);
    m_file.Begin();
    return m_file.error();
}

std::string SessionRecorder::Finish() {
    m_announcements.Release();
    // The tap writes in another thread until it is destroyed. The error is complete only then.
    m_tap.reset();
    return m_file.error();
}

}  // namespace applist::sim
