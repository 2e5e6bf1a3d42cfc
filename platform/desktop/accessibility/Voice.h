// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <string>

namespace applist::desktop {

/// A speech service. SpeechDispatcher.cpp implements it; a set with another service names its own
/// source file in the build option APPLIST_VOICE. Main thread only, while GLib's default main
/// context runs. No function may block.
class Voice {
public:
    Voice() = default;
    virtual ~Voice() = default;
    Voice(const Voice&) = delete;
    Voice& operator=(const Voice&) = delete;
    Voice(Voice&&) = delete;
    Voice& operator=(Voice&&) = delete;

    /// Speaks text after the texts that are not spoken yet. text is valid UTF-8 and may contain any
    /// characters of the broadcast, which must not be read as commands or markup.
    virtual void Say(const std::string& text) = 0;
    /// Stops speaking and discards the texts that are not spoken yet.
    virtual void Stop() = 0;
};

/// Opens the service for texts in this language, such as "pt-BR". Called when the viewer switches
/// speech on. A service that fails, then or later, is logged once, and its Voice does nothing.
/// Never returns null.
std::unique_ptr<Voice> OpenVoice(const std::string& language);

/// Returns true if OpenVoice() may have to connect to a Unix socket after the program has locked
/// itself.
bool VoiceConnects();

}  // namespace applist::desktop
