// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <utility>

namespace applist {

/// A value, or an error message for the user.
template <typename Value>
class Result {
public:
    Result(Value value) : m_value(std::move(value)) {}  // NOLINT(google-explicit-constructor)

    static Result Failure(const std::string& error) {
        Result result;
        result.m_error = error;
        return result;
    }

    explicit operator bool() const { return m_value.has_value(); }
    /// REQUIRES: success.
    Value& operator*() { return *m_value; }
    const Value& operator*() const { return *m_value; }
    Value* operator->() { return &*m_value; }
    const Value* operator->() const { return &*m_value; }
    /// Empty after success.
    const std::string& error() const { return m_error; }

private:
    Result() = default;

    std::optional<Value> m_value;
    std::string m_error;
};

}  // namespace applist
