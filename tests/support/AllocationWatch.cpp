// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "support/AllocationWatch.h"

#include <cstdlib>
#include <new>
#include <utility>

namespace applist::test {
namespace {

AllocationMeter* g_meter = nullptr;
DeletionWatch* g_watch = nullptr;

}  // namespace

AllocationMeter::AllocationMeter() {
    g_meter = this;
}

AllocationMeter::~AllocationMeter() {
    g_meter = nullptr;
}

DeletionWatch::DeletionWatch(std::function<void(const void*)> onDelete)
    : m_onDelete(std::move(onDelete)) {
    g_watch = this;
}

DeletionWatch::~DeletionWatch() {
    g_watch = nullptr;
}

void* Allocate(std::size_t size) {
    if (g_meter != nullptr) {
        g_meter->m_total += size;
    }
    return std::malloc(size == 0 ? 1 : size);
}

void Release(void* block) {
    // What the callback itself gives back is not reported.
    if (g_watch != nullptr && !g_watch->m_calling) {
        g_watch->m_calling = true;
        g_watch->m_onDelete(block);
        g_watch->m_calling = false;
    }
    std::free(block);
}

}  // namespace applist::test

void* operator new(std::size_t size) {
    void* block = applist::test::Allocate(size);
    if (block == nullptr) {
        throw std::bad_alloc();
    }
    return block;
}

void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
    return applist::test::Allocate(size);
}

void operator delete(void* block) noexcept {
    applist::test::Release(block);
}

void operator delete(void* block, std::size_t /*size*/) noexcept {
    applist::test::Release(block);
}

void operator delete(void* block, const std::nothrow_t& /*tag*/) noexcept {
    applist::test::Release(block);
}
