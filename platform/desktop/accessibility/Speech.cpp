// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "accessibility/Speech.h"

#include <Ecore_Input.h>

#include "CallbackGuard.h"
#include "data/SettingsStore.h"
#include "i18n_text.h"

namespace applist::desktop {
namespace {

Eina_Bool OnPress(void* speech, int, void*) {
    GuardCallback([speech] { static_cast<Speech*>(speech)->Stop(); });
    // Only observes the key; the toolkit still handles it.
    return ECORE_CALLBACK_PASS_ON;
}

}  // namespace

void Speech::Update() {
    const bool on = ReadFlag(SPEECH_KEY);
    if (on && !m_voice) {
        Start();
    } else if (!on && m_voice) {
        // The voice last, because both callbacks use it.
        m_press = {};
        m_news.reset();
        m_voice.reset();
    }
}

void Speech::Start() {
    m_voice = OpenVoice(i18n_get_text("TEXT_LANGUAGE"));
    // In front, because other handlers discard keys.
    m_press = EventHandler::InFront(ECORE_EVENT_KEY_DOWN, OnPress, this);
    m_news.emplace([this](const News& news) { Tell(news); });
}

void Speech::Stop() {
    if (m_voice) {
        m_voice->Stop();
    }
}

// A message does not interrupt the row that the viewer has just chosen.
void Speech::Tell(const News& news) {
    // The text of a withdrawn message is empty. What has been spoken cannot be withdrawn.
    if (news.text.empty()) {
        return;
    }
    if (news.kind != News::Kind::MESSAGE) {
        m_voice->Stop();
    }
    m_voice->Say(news.title + (news.title.empty() ? "" : ". ") + news.text);
}

}  // namespace applist::desktop
