// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "subcommands/Numbers.h"

#include <charconv>
#include <cmath>

namespace applist::sim {
namespace {

template <typename Number>
std::optional<Number> Parse(const std::string& text) {
    Number number{};
    const char* end = text.data() + text.size();
    const auto [last, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && last == end ? std::optional(number) : std::nullopt;
}

}  // namespace

Result<unsigned> WholeNumber(const std::string& option, const std::string& what,
                             const std::string& text) {
    const auto number = Parse<unsigned>(text);
    return number ? Result(*number)
                  : Result<unsigned>::Failure("--" + option + " takes " + what + ", not '" + text +
                                              "'");
}

Result<std::optional<double>> Speed(const std::string& text) {
    using Speed = Result<std::optional<double>>;
    if (text == "max") {
        return Speed(std::nullopt);
    }
    const auto number = Parse<double>(text);
    return number && std::isfinite(*number) && *number > 0
               ? Speed(number)
               : Speed::Failure("--speed takes a number above 0 or max, not '" + text + "'");
}

}  // namespace applist::sim
