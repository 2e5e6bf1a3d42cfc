// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <deque>
#include <vector>

#include "factory_data.h"

/// The factory-data service as a script. Linking it provides GetDataDirect().
namespace applist::test {

struct FakeFactoryData {
    /// One answer of the service. The value reaches the caller with any status, in the first word
    /// of an item that fills the whole buffer.
    struct Answer {
        int status = FACTORY_DATA_INTEGER;
        int value = 0;
    };
    /// One call of the service.
    struct Read {
        int id;
        void* buffer;
    };

    /// What the next reads give, in order; the last answer stays. None at all: status -1, and the
    /// buffer is left as it was.
    std::deque<Answer> answers;
    /// Every read, oldest first.
    std::vector<Read> reads;

    /// The item is there and holds value.
    void Hold(int value) { answers = {{FACTORY_DATA_INTEGER, value}}; }
};

/// The one service of the process; tests assign FakeFactoryData{} to start afresh.
FakeFactoryData& TheFactoryData();

}  // namespace applist::test
