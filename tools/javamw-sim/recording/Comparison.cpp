// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "recording/Comparison.h"

#include <algorithm>
#include <map>
#include <utility>

namespace applist::sim {
namespace {

// How many steps to look ahead for one in common; the time grows with the square of it.
constexpr size_t NEAR = 4000;

/// The steps of both sides as numbers, equal iff the steps are.
class Keys {
public:
    std::vector<size_t> Number(const std::vector<Step>& steps) {
        std::vector<size_t> numbers;
        numbers.reserve(steps.size());
        for (const Step& step : steps) {
            numbers.push_back(m_numbers.try_emplace(step.key, m_numbers.size()).first->second);
        }
        return numbers;
    }

private:
    std::map<std::string, size_t> m_numbers;
};

class Comparer {
public:
    Comparer(const std::vector<Step>& first, const std::vector<Step>& second,
             std::optional<int64_t> tolerance)
        : m_first(first), m_second(second), m_tolerance(tolerance) {
        Keys keys;
        m_firstKeys = keys.Number(first);
        m_secondKeys = keys.Number(second);
    }

    std::vector<Difference> Run() {
        while (m_i < m_first.size() || m_j < m_second.size()) {
            if (m_i < m_first.size() && m_j < m_second.size() && Same(m_i, m_j)) {
                TakeCommon();
                continue;
            }
            const auto [i, j] = NextCommon();
            for (; m_i < i; ++m_i) {
                m_differences.push_back({m_first[m_i], std::nullopt});
            }
            for (; m_j < j; ++m_j) {
                m_differences.push_back({std::nullopt, m_second[m_j]});
            }
        }
        return std::move(m_differences);
    }

private:
    bool Same(size_t i, size_t j) const { return m_firstKeys[i] == m_secondKeys[j]; }

    void TakeCommon() {
        const int64_t apart = m_first[m_i].time - m_second[m_j].time;
        if (m_tolerance && std::max(apart, -apart) > *m_tolerance) {
            m_differences.push_back({m_first[m_i], m_second[m_j]});
        }
        ++m_i;
        ++m_j;
    }

    std::pair<size_t, size_t> NextCommon() const {
        const size_t lefts = m_first.size() - m_i;
        const size_t rights = m_second.size() - m_j;
        for (size_t distance = 1; distance < std::min(lefts + rights, NEAR); ++distance) {
            for (size_t ahead = 0; ahead <= distance; ++ahead) {
                const size_t other = distance - ahead;
                if (ahead < lefts && other < rights && Same(m_i + ahead, m_j + other)) {
                    return {m_i + ahead, m_j + other};
                }
            }
        }
        return {m_first.size(), m_second.size()};
    }

    const std::vector<Step>& m_first;
    const std::vector<Step>& m_second;
    std::optional<int64_t> m_tolerance;
    std::vector<size_t> m_firstKeys;
    std::vector<size_t> m_secondKeys;
    size_t m_i = 0;
    size_t m_j = 0;
    std::vector<Difference> m_differences;
};

}  // namespace

std::vector<Difference> Compare(const std::vector<Step>& first, const std::vector<Step>& second,
                                std::optional<int64_t> tolerance) {
    return Comparer(first, second, tolerance).Run();
}

}  // namespace applist::sim
