// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <optional>

#include "accessibility/Voice.h"
#include "display/EventHandler.h"
#include "list/News.h"

namespace applist::desktop {

/// Speaks the news of this program while the viewer's setting SPEECH_KEY is on. Each key press
/// interrupts what is being spoken. Does not use the speech service while the setting is off. Main
/// thread only, while the toolkit is running.
class Speech {
public:
    Speech() { Update(); }
    ~Speech() = default;
    Speech(const Speech&) = delete;
    Speech& operator=(const Speech&) = delete;
    Speech(Speech&&) = delete;
    Speech& operator=(Speech&&) = delete;

    /// Reads the setting again. An invalid or unreadable setting is logged and counts as off.
    void Update();
    /// Stops what is being spoken and discards what waits.
    void Stop();

private:
    void Start();
    void Tell(const News& news);

    std::unique_ptr<Voice> m_voice;
    std::optional<NewsListener> m_news;
    EventHandler m_press;
};

}  // namespace applist::desktop
