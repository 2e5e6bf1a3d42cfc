// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <cstdlib>
#include <fstream>

#include "fuzz/Properties.h"

namespace applist::test {
namespace {

std::string Decoded(const std::string& digits) {
    std::string bytes;
    for (size_t i = 0; i + 1 < digits.size(); i += 2) {
        bytes += static_cast<char>(std::strtoul(digits.substr(i, 2).c_str(), nullptr, 16));
    }
    return bytes;
}

}  // namespace

std::vector<std::string> Corpus(const std::string& fuzzer) {
    std::vector<std::string> inputs;
    std::ifstream file(FUZZ_CORPUS "/" + fuzzer + ".hex");
    for (std::string line; std::getline(file, line);) {
        inputs.push_back(Decoded(line));
    }
    return inputs;
}

}  // namespace applist::test
