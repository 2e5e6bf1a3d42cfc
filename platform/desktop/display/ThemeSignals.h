// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Ecore.h>
#include <memory>

namespace applist::desktop {

/// Delivers the widgets' signals to the theme before a frame is drawn. The toolkit would deliver
/// them in the next loop iteration and may draw before that, so that the focus would be shown one
/// frame late. Main thread only, while the toolkit is running.
class ThemeSignals {
public:
    ThemeSignals();

private:
    struct Delete {
        void operator()(Ecore_Idle_Enterer* enterer) const { ecore_idle_enterer_del(enterer); }
    };

    std::unique_ptr<Ecore_Idle_Enterer, Delete> m_beforeFrame;
};

}  // namespace applist::desktop
