// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

/// A speech service that records its calls. Linking it provides OpenVoice() and VoiceConnects().
namespace applist::test {

/// "open LANGUAGE", "say TEXT", "stop" and "close", oldest first. Tests may add their own entries
/// and clear it.
std::vector<std::string>& VoiceCalls();

}  // namespace applist::test
