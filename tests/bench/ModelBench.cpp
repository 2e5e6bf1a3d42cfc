// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// Compares filling the list with the cost of its lookup rule alone: each item is compared with all
// earlier ones, and both ids are fetched for each comparison.
#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include "applist/DefaultAppListItem.h"
#include "applist/DefaultAppListModel.h"

namespace applist::bench {
namespace {

// The length of the middleware's ids.
std::string IdOf(int item) {
    std::string id = "application-id-of-forty-characters-00000";
    const std::string number = std::to_string(item);
    return id.replace(id.size() - number.size(), number.size(), number);
}

class Items {
public:
    explicit Items(int count) {
        for (int i = 0; i < count; ++i) {
            m_owned.push_back(std::make_unique<DefaultAppListItem>("Name", IdOf(i)));
            all.push_back(m_owned.back().get());
        }
    }
    std::vector<AppListItem*> all;

private:
    std::vector<std::unique_ptr<AppListItem>> m_owned;
};

void AddItemsByTheRuleAlone(benchmark::State& state) {
    const Items items(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        std::vector<AppListItem*> list;
        for (AppListItem* item : items.all) {
            if (std::find_if(list.begin(), list.end(), ApplistItemComparator(item)) == list.end()) {
                list.push_back(item);
            }
        }
        benchmark::DoNotOptimize(list.data());
    }
}

void AddItems(benchmark::State& state) {
    const Items items(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        DefaultAppListModel model;
        model.AddItems(items.all);
        benchmark::DoNotOptimize(model.GetItemsCount());
    }
}

BENCHMARK(AddItemsByTheRuleAlone)->Name("AddItems/reference")->Arg(100)->Arg(1000)->Arg(10000);
BENCHMARK(AddItems)->Name("AddItems/list")->Arg(100)->Arg(1000)->Arg(10000);

}  // namespace
}  // namespace applist::bench

BENCHMARK_MAIN();
