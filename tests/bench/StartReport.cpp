// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// start-ledger REPETITIONS: starts applist with ten rows on a set whose middleware is running, and
// prints the median of what each step uses. The last line is the sum of starts before which the
// program's files were removed from the file cache, except pages that other programs use.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <memory>
#include <unistd.h>

#include "support/StartLedger.h"

namespace applist::bench {
namespace {

using test::StartLedger;
using test::StartStep;

template <typename Value>
Value Median(const std::vector<StartStep>& steps, Value StartStep::*value) {
    std::vector<Value> values;
    values.reserve(steps.size());
    for (const StartStep& step : steps) {
        values.push_back(step.*value);
    }
    std::nth_element(values.begin(), values.begin() + values.size() / 2, values.end());
    return values[values.size() / 2];
}

// One line with the medians of the same step in several starts.
void Print(const std::string& name, const std::vector<StartStep>& steps, long files) {
    std::printf("%-30s %8.1f %10.2f %8ld %6ld %6ld %10ld %6ld\n", name.c_str(),
                Median(steps, &StartStep::milliseconds),
                Median(steps, &StartStep::processorMilliseconds), Median(steps, &StartStep::faults),
                Median(steps, &StartStep::readingFaults), Median(steps, &StartStep::roundTrips),
                Median(steps, &StartStep::libraries), files);
}

void RemoveFromCache(const std::set<std::string>& files) {
    for (const std::string& name : files) {
        const int file = open(name.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
        if (file >= 0) {
            posix_fadvise(file, 0, 0, POSIX_FADV_DONTNEED);
            close(file);
        }
    }
}

std::string TenRows() {
    std::string rows;
    for (int row = 0; row < 10; ++row) {
        rows += std::to_string(row) + "\tName of row " + std::to_string(row) + '\n';
    }
    return rows;
}

class StartReport {
public:
    explicit StartReport(int repetitions)
        : m_repetitions(repetitions),
          m_middleware(
              m_set.StartMiddleware({"serve", "--items", m_set.WriteFile("items", TenRows())})) {}

    bool Run() {
        const StartLedger traced = test::RecordStart(m_set, true);
        const std::vector<StartLedger> warm = Repeat({});
        std::set<std::string> files = traced.files;
        files.insert(traced.libraries.begin(), traced.libraries.end());
        files.insert(test::BuiltProgram("applist"));
        const std::vector<StartLedger> cold = Repeat(files);
        if (traced.steps.empty() || warm.empty() || cold.empty()) {
            static_cast<void>(std::fputs("start-ledger: applist did not draw its rows\n", stderr));
            return false;
        }
        Report(traced, warm, cold);
        return true;
    }

private:
    // Starts after these files were removed from the cache. Empty if one of them fails.
    std::vector<StartLedger> Repeat(const std::set<std::string>& removed) {
        std::vector<StartLedger> ledgers;
        for (int i = 0; i < m_repetitions; ++i) {
            RemoveFromCache(removed);
            ledgers.push_back(test::RecordStart(m_set, false));
            if (ledgers.back().steps.empty()) {
                return {};
            }
        }
        return ledgers;
    }

    static std::vector<StartStep> Totals(const std::vector<StartLedger>& ledgers) {
        std::vector<StartStep> totals;
        totals.reserve(ledgers.size());
        for (const StartLedger& ledger : ledgers) {
            totals.push_back(ledger.Total());
        }
        return totals;
    }

    static void Report(const StartLedger& traced, const std::vector<StartLedger>& warm,
                       const std::vector<StartLedger>& cold) {
        std::printf("%-30s %8s %10s %8s %6s %6s %10s %6s\n", "step", "ms", "processor", "faults",
                    "reads", "trips", "libraries", "files");
        for (size_t i = 0; i < traced.steps.size(); ++i) {
            std::vector<StartStep> steps;
            steps.reserve(warm.size());
            for (const StartLedger& ledger : warm) {
                steps.push_back(ledger.steps.at(i));
            }
            Print(traced.steps[i].name, steps, traced.steps[i].files);
        }
        Print("total", Totals(warm), traced.Total().files);
        Print("total, cold caches", Totals(cold), traced.Total().files);
    }

    int m_repetitions;
    test::Television m_set{{}, {"openbox", ""}};
    std::unique_ptr<test::Middleware> m_middleware;
};

}  // namespace
}  // namespace applist::bench

int main(int argc, char** argv) {
    const int repetitions = argc == 2 ? static_cast<int>(std::strtol(argv[1], nullptr, 10)) : 0;
    if (repetitions < 1) {
        static_cast<void>(std::fputs("Usage: start-ledger REPETITIONS\n", stderr));
        return 2;
    }
    return applist::bench::StartReport(repetitions).Run() ? 0 : 1;
}
