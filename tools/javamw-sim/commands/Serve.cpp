// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "commands/Serve.h"

#include <utility>

#include "Output.h"

namespace applist::sim {

Serve::Serve(SessionOptions options, Items items)
    : Watch(std::move(options)), m_items(std::move(items)) {}

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

// The list may hold what a middleware before this one left there.
void Serve::Fill(const std::string& application) {
    client().Call(application, Function::RemoveAllItems, {}, [](const Result<Items>&) {});
    client().Call(application, Function::AddItems, m_items,
                  [this, application](const Result<Items>& reply) {
                      if (reply) {
                          Print(report().Filled(application, m_items.size()));
                      } else {
                          Complain("cannot fill " + application + ": " + reply.error());
                      }
                  });
}

}  // namespace applist::sim
