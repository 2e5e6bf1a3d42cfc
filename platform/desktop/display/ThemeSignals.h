// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Ecore.h>
#include <memory>

namespace applist::desktop {

/// Lets themes act on what widgets have told them before a frame is drawn. The toolkit hands the
/// signals over in the next turn of its loop, and may draw in between: the focus would be seen one
/// frame behind the key. Main thread only; lives while the toolkit does.
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
