// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <deque>
#include <vector>

#include "factory_data.h"

/// Plays the factory-data service from a script. Linking it provides GetDataDirect().
namespace applist::test {

struct FakeFactoryData {
    /// One answer of the service. The value is written with any status, into the first word of an
    /// item that fills the whole buffer.
    struct Answer {
        int status = FACTORY_DATA_INTEGER;
        int value = 0;
    };
    /// One call of the service.
    struct Read {
        int id;
        void* buffer;
    };

    /// The answers to the next reads, in order; the last one is repeated. If empty, reads return -1
    /// and do not change the buffer.
    std::deque<Answer> answers;
    /// Every read, oldest first.
    std::vector<Read> reads;

    /// Makes reads succeed with value.
    void Hold(int value) { answers = {{FACTORY_DATA_INTEGER, value}}; }
};

/// The one service of the process; tests assign FakeFactoryData{} to reset it.
FakeFactoryData& TheFactoryData();

}  // namespace applist::test
