// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "fakes/FakeVoice.h"

#include "accessibility/Voice.h"

namespace applist::test {

std::vector<std::string>& VoiceCalls() {
    static std::vector<std::string> calls;
    return calls;
}

namespace {

class FakeVoice : public desktop::Voice {
public:
    explicit FakeVoice(const std::string& language) { VoiceCalls().push_back("open " + language); }
    ~FakeVoice() override { VoiceCalls().emplace_back("close"); }
    FakeVoice(const FakeVoice&) = delete;
    FakeVoice& operator=(const FakeVoice&) = delete;
    FakeVoice(FakeVoice&&) = delete;
    FakeVoice& operator=(FakeVoice&&) = delete;

    void Say(const std::string& text) override { VoiceCalls().push_back("say " + text); }
    void Stop() override { VoiceCalls().emplace_back("stop"); }
};

}  // namespace
}  // namespace applist::test

namespace applist::desktop {

std::unique_ptr<Voice> OpenVoice(const std::string& language) {
    return std::make_unique<test::FakeVoice>(language);
}

bool VoiceConnects() {
    return false;
}

}  // namespace applist::desktop
