// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

class AppListModel;

/// Makes the remote control act on a model. Main thread only.
class AppListControl {
public:
    /// Connects the control to the model, which is not owned and must outlive it. Call once.
    virtual void SetModel(AppListModel* model) = 0;
    virtual ~AppListControl() = default;
};
