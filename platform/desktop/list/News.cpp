// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "list/News.h"

#include <utility>
#include <vector>

#include "CallbackGuard.h"

namespace applist::desktop {
namespace {

unsigned int g_created = 0;

std::vector<const NewsListener*>& Listeners() {
    static std::vector<const NewsListener*> listeners;
    return listeners;
}

}  // namespace

NewsListener::NewsListener(Function function) : m_function(std::move(function)) {
    ++g_created;
    Listeners().push_back(this);
}

NewsListener::~NewsListener() {
    std::erase(Listeners(), this);
}

bool NewsListener::Any() {
    return !Listeners().empty();
}

unsigned int NewsListener::Created() {
    return g_created;
}

// Guarded, because the toolkit's callbacks tell news before they move the focus.
void TellNews(const News& news) {
    GuardCallback([&news] {
        // A copy, because a listener may create another one.
        for (const auto listeners = Listeners(); const NewsListener* listener : listeners) {
            listener->m_function(news);
        }
    });
}

}  // namespace applist::desktop
