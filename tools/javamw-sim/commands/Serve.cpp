// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "commands/Serve.h"

#include <utility>

#include "Output.h"

namespace applist::sim {

Serve::Serve(SessionOptions options, Items items)
    : Watch(std::move(options)), m_items(std::move(items)) {}

// The list may hold what a middleware before this one left there.
void Serve::OnConnected(const std::string& application) {
    Watch::OnConnected(application);
    client().Call(application, Function::RemoveAllItems, {}, [](const Result<Items>&) {});
    client().Call(application, Function::AddItems, m_items,
                  [this, application](const Result<Items>& reply) {
                      if (reply) {
                          Print("filled " + application + " with " +
                                std::to_string(m_items.size()) + " items");
                      } else {
                          Complain("cannot fill " + application + ": " + reply.error());
                      }
                  });
}

}  // namespace applist::sim
