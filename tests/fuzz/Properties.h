// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>
#include <vector>

/// What must hold for any bytes. Each check returns the first property that does not, in words, or
/// an empty string; memory errors are the sanitizers' to find.
namespace applist::test {

/// Reads items from bytes until a read fails: what was read, written again, is how bytes begin,
/// and the failed read changed nothing.
std::string CheckItemStream(std::string_view bytes);

/// Takes bytes for one frame: id and payload reach the handler whole, too short a frame nobody.
std::string CheckAdapterFrame(std::string_view bytes);

/// Takes bytes for a session of remote calls and local actions (see SessionStep), with a view that
/// holds on to what it saw: list, selection and responses agree after each step.
std::string CheckRemoteProtocol(std::string_view bytes);

/// Takes bytes for a recording or a capture of a bus: what can be read can be written and read back
/// without a difference, what cannot is refused with a reason.
std::string CheckRecordedTraffic(std::string_view bytes);

/// Takes bytes for a file of the set's settings and for one setting's text: what can be read can be
/// changed, value by value, without becoming unreadable and without touching the other values.
std::string CheckSettingsFile(std::string_view bytes);

/// Takes bytes for a scenario of the middleware's double: each line is a statement that its own
/// text means again, an error inside that line, or nothing.
std::string CheckScenario(std::string_view bytes);

/// Takes bytes for a recorded transport stream, for sections back to back, for the body of a table
/// (in a section whose length and CRC are right) and for applications in XML: whatever comes out
/// makes lists without look-alikes, updates that lead from each to the next, and text in UTF-8.
std::string CheckBroadcastStream(std::string_view bytes);
std::string CheckSectionFile(std::string_view bytes);
std::string CheckTableBody(std::string_view bytes);
std::string CheckApplicationXml(std::string_view bytes);

/// One step of a session: the action's number, the payload's length in one byte, the payload.
/// 0 to 10 are the functions 1999 to 2009; others are the viewer's selections and clicks.
std::string SessionStep(int action, const std::string& payload);

// Where a fuzzer may begin.
std::vector<std::string> ItemStreamSeeds();
std::vector<std::string> AdapterFrameSeeds();
std::vector<std::string> RecordedTrafficSeeds();
std::vector<std::string> RemoteProtocolSeeds();
std::vector<std::string> ScenarioSeeds();
std::vector<std::string> SettingsFileSeeds();
std::vector<std::string> BroadcastStreamSeeds();
std::vector<std::string> SectionFileSeeds();
std::vector<std::string> TableBodySeeds();
std::vector<std::string> ApplicationXmlSeeds();

/// What long runs of a fuzzer have found, each of which takes the code another way: of those that
/// face what comes from other processes and files, "item_stream", "adapter_frame",
/// "remote_protocol" and "settings_file". Nothing for others.
std::vector<std::string> Corpus(const std::string& fuzzer);

}  // namespace applist::test
