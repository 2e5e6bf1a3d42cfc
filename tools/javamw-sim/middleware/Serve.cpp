// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "middleware/Serve.h"

#include <algorithm>
#include <utility>

#include "common/Output.h"

namespace applist::sim {
namespace {

constexpr double MS_PER_SECOND = 1000;
constexpr double LONGEST_WAIT_S = 1000000;

}  // namespace

Serve::Serve(SessionOptions options, Feed feed)
    : Watch(std::move(options)),
      m_items(std::move(feed.items)),
      m_changes(std::make_move_iterator(feed.changes.begin()),
                std::make_move_iterator(feed.changes.end())) {}

void Serve::OnDisconnected(const std::string& application) {
    m_filled.erase(application);
    Watch::OnDisconnected(application);
}

void Serve::OnNotified(const std::string& application, const Notification& notification) {
    Watch::OnNotified(application, notification);
    if (notification.event == Event::LocalCreated && m_filled.insert(application).second) {
        Fill(application);
    }
}

// Clears the list first, because an earlier middleware may have left items in it.
void Serve::Fill(const std::string& application) {
    client().Call(application, Function::RemoveAllItems, {}, [](const Result<Items>&) {});
    client().Call(application, Function::AddItems, m_items,
                  [this, application, count = m_items.size()](const Result<Items>& reply) {
                      if (reply) {
                          OnFilled(application, count);
                      } else {
                          Complain("cannot fill " + application + ": " + reply.error());
                      }
                  });
}

void Serve::OnFilled(const std::string& application, size_t count) {
    Print(report().Filled(application, count));
    if (!m_playing) {
        m_playing = true;
        ScheduleChange();
    }
}

void Serve::ScheduleChange() {
    if (!m_changes.empty()) {
        const double wait = std::clamp(m_changes.front().seconds, 0.0, LONGEST_WAIT_S);
        m_clock =
            OwnSource(g_timeout_add(static_cast<unsigned>(wait * MS_PER_SECOND), &cb_Change, this));
    }
}

void Serve::OnChange() {
    m_clock.Forget();
    const ListUpdate update = UpdateList(m_items, m_changes.front().items);
    m_changes.pop_front();
    m_items = update.items;
    for (const std::string& application : m_filled) {
        Update(application, update);
    }
    ScheduleChange();
}

void Serve::Update(const std::string& application, const ListUpdate& update) {
    for (const ListCall& call : update.calls) {
        const bool last = &call == &update.calls.back();
        client().Call(application, call.function, call.items,
                      [this, application, last,
                       counts = UpdateCounts{update.added, update.removed, update.renamed}](
                          const auto& reply) {
                          if (!reply) {
                              Complain("cannot update " + application + ": " + reply.error());
                          } else if (last) {
                              Print(report().Updated(application, counts));
                          }
                      });
    }
}

int Serve::cb_Change(void* serve) noexcept {
    static_cast<Serve*>(serve)->OnChange();
    return G_SOURCE_REMOVE;
}

}  // namespace applist::sim
