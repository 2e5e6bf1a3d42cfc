// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace applist::desktop {

/// Redirects the toolkit's messages to the writer while it exists. At most one may exist at a time;
/// create it on the main thread before the toolkit starts.
class ToolkitMessages {
public:
    ToolkitMessages();
    ~ToolkitMessages();
    ToolkitMessages(const ToolkitMessages&) = delete;
    ToolkitMessages& operator=(const ToolkitMessages&) = delete;
    ToolkitMessages(ToolkitMessages&&) = delete;
    ToolkitMessages& operator=(ToolkitMessages&&) = delete;
};

}  // namespace applist::desktop
