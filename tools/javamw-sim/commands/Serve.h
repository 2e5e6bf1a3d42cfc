// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "commands/Watch.h"
#include "protocol/Item.h"

namespace applist::sim {

/// Fills the list of every application that connects, then watches.
class Serve : public Watch {
public:
    Serve(SessionOptions options, Items items);

protected:
    void OnConnected(const std::string& application) override;

private:
    Items m_items;
};

}  // namespace applist::sim
