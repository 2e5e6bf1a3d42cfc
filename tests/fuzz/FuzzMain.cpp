// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <iostream>

#include "fuzz/Properties.h"

/// libFuzzer's entry point. FUZZED_PROPERTY is the check of this program.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const std::string broken = applist::test::FUZZED_PROPERTY(bytes);
    if (!broken.empty()) {
        std::cerr << "does not hold: " << broken << std::endl;
        std::abort();
    }
    return 0;
}
