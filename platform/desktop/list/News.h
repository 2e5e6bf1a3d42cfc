// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Evas.h>
#include <functional>
#include <string>

namespace applist::desktop {

/// Something that a viewer who does not see the screen must be told. The texts are translated,
/// valid UTF-8.
struct News {
    enum class Kind {
        /// A row has the focus.
        FOCUSED,
        /// An empty list waits, rows have changed, or the list closes soon. The text is empty when
        /// the last message does not hold any more.
        MESSAGE,
        /// An alert is shown.
        ALERT,
    };
    Kind kind;
    /// The list, or the alert's panel.
    Evas_Object* source;
    /// The title of the list or of the alert if it has not been told yet.
    std::string title;
    std::string text;
};

/// Calls all listeners. Logs an exception that one of them throws, and does not call those after
/// it. Main thread only.
void TellNews(const News& news);

/// Receives the news of this program while it exists. A new listener is first told the current
/// state of each list. Most news are not computed without a listener. Main thread only.
class [[nodiscard]] NewsListener {
public:
    using Function = std::function<void(const News& news)>;

    explicit NewsListener(Function function);
    ~NewsListener();
    NewsListener(const NewsListener&) = delete;
    NewsListener& operator=(const NewsListener&) = delete;
    NewsListener(NewsListener&&) = delete;
    NewsListener& operator=(NewsListener&&) = delete;

    /// Returns true if there is a listener.
    static bool Any();
    /// Returns how many listeners have been created so far.
    static unsigned int Created();

private:
    friend void TellNews(const News& news);

    Function m_function;
};

}  // namespace applist::desktop
