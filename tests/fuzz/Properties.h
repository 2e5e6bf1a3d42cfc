// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>
#include <vector>

/// Properties that must hold for any bytes. Each check returns a description of the first violated
/// property, or an empty string. The sanitizers detect memory errors.
namespace applist::test {

/// Reads items from bytes until a read fails. The items written again must equal the start of
/// bytes, and the failed read must not change its item.
std::string CheckItemStream(std::string_view bytes);

/// Treats bytes as one frame. Id and payload must reach the handler unchanged; a frame that is too
/// short must not reach it.
std::string CheckAdapterFrame(std::string_view bytes);

/// Treats bytes as steps of the whole program (see ProgramStep), which runs without a bus and
/// without the toolkit. After each step its replies, signals, announcements, rows, focus, requests
/// to end, timer and registrations must be those of the protocol.
std::string CheckWholeProgram(std::string_view bytes);

/// Treats bytes as a recording or a capture of a bus. A readable one must be the same after it was
/// written and read back; an unreadable one must be refused with a reason.
std::string CheckRecordedTraffic(std::string_view bytes);

/// Treats bytes as a file of the set's settings and as the text of one setting. Changing a value of
/// a readable file must leave it readable and the other values unchanged.
std::string CheckSettingsFile(std::string_view bytes);

/// Treats bytes as a scenario of the simulated middleware. Each line must give a statement whose
/// text parses to the same statement, an error inside that line, or nothing.
std::string CheckScenario(std::string_view bytes);

/// Treats bytes as a recorded transport stream, as consecutive sections, as the body of a table (in
/// a section with correct length and CRC) and as applications in XML. The resulting lists must not
/// contain duplicates, each update must lead to the next list, and texts must be UTF-8.
std::string CheckBroadcastStream(std::string_view bytes);
std::string CheckSectionFile(std::string_view bytes);
std::string CheckTableBody(std::string_view bytes);
std::string CheckApplicationXml(std::string_view bytes);

/// One step: the action's number, the payload's length in one byte, the payload. Actions 0 to 10
/// call the functions 1999 to 2009. The others are keys, the viewer, time, the handshake and the
/// platform's callbacks, in the order of STEPS in WholeProgram.cpp.
std::string ProgramStep(int action, const std::string& payload);

// The fuzzers' start inputs.
std::vector<std::string> ItemStreamSeeds();
std::vector<std::string> AdapterFrameSeeds();
std::vector<std::string> RecordedTrafficSeeds();
std::vector<std::string> WholeProgramSeeds();
std::vector<std::string> ScenarioSeeds();
std::vector<std::string> SettingsFileSeeds();
std::vector<std::string> BroadcastStreamSeeds();
std::vector<std::string> SectionFileSeeds();
std::vector<std::string> TableBodySeeds();
std::vector<std::string> ApplicationXmlSeeds();

/// Inputs found in long fuzzing runs; each takes another path through the code. They exist for the
/// fuzzers of data from other processes and files: "item_stream", "adapter_frame",
/// "settings_file" and "whole_program". Empty for other names.
std::vector<std::string> Corpus(const std::string& fuzzer);

}  // namespace applist::test
