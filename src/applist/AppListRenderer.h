// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

class AppListModel;

/// Shows a model on the screen. Main thread only.
class AppListRenderer {
public:
    /// Connects the renderer to the model, which is not owned and must outlive it. Call once.
    virtual void SetModel(AppListModel* model) = 0;
    virtual ~AppListRenderer() = default;
};
