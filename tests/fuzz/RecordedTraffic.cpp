// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "fuzz/Properties.h"
#include "recording/Comparison.h"
#include "recording/RecordingFile.h"
#include "support/CaptureGenerator.h"

namespace applist::test {
namespace {

using namespace std::string_view_literals;

constexpr const char* HEADER = "{\"javamw-recording\":1}\n";
constexpr const char* SERVICE_SYN = "org.vantu.JavaMW.Applist_SERVICE_SYN";

std::string TextOf(const sim::Recording& recording) {
    std::string text = HEADER;
    for (const sim::RecordedMessage& message : recording.messages) {
        text += sim::RecordingLine(message) + '\n';
    }
    return text;
}

std::string Capture(CaptureGenerator::Form form) {
    CaptureGenerator capture(form);
    capture.Add(busmessage::OwnerChanged(SERVICE_SYN, ":1.2", ""), 1);
    capture.Add(busmessage::Call(":1.1", ":1.2", 7, "\xD1\x07\x00\x00"sv), 2);
    capture.Add(busmessage::Error("org.freedesktop.DBus", ":1.1", 7, "a.b", "gone"), 3);
    capture.Add(busmessage::Signal(":1.2", ":1.1", "\x01\x00\x00\x00"sv), 4);
    return capture.bytes();
}

}  // namespace

std::string CheckRecordedTraffic(std::string_view bytes) {
    const auto read = sim::IsCapture(bytes) ? sim::ReadCapture(bytes) : sim::ParseRecording(bytes);
    if (!read) {
        return read.error().empty() ? "a file is refused without a reason" : "";
    }
    const auto again = sim::ParseRecording(TextOf(*read));
    if (!again) {
        return "the written recording cannot be read: " + again.error();
    }
    if (TextOf(*again) != TextOf(*read)) {
        return "the recording differs after writing and reading";
    }
    return Compare(StepsOf(*read, false), StepsOf(*again, false), 0).empty()
               ? ""
               : "a recording differs from itself";
}

std::vector<std::string> RecordedTrafficSeeds() {
    return {
        "",
        HEADER,
        std::string(HEADER) +
            R"({"us":51,"kind":"call","side":"middleware","from":":1.1","to":":1.2","call":1,)"
            R"("bytes":"d2070000","note":"GetAllItems"})"
            "\n"
            R"({"us":52,"kind":"error","side":"application","call":1,"name":"a.b","text":"\"[\\"})",
        Capture(CaptureGenerator::Form::Pcap),
        Capture(CaptureGenerator::Form::PcapNg),
    };
}

}  // namespace applist::test
