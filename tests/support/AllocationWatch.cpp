// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "support/AllocationWatch.h"

#include <algorithm>
#include <cstdlib>
#include <malloc.h>
#include <new>
#include <utility>

namespace applist::test {
namespace {

AllocationMeter* g_meter = nullptr;
DeletionWatch* g_watch = nullptr;
bool g_failNext = false;

std::ptrdiff_t SizeOf(void* block) {
    return static_cast<std::ptrdiff_t>(malloc_usable_size(block));
}

}  // namespace

AllocationMeter::AllocationMeter() {
    g_meter = this;
}

AllocationMeter::~AllocationMeter() {
    g_meter = nullptr;
}

void AllocationMeter::Hold(std::ptrdiff_t size) {
    m_held += size;
    m_peak = std::max(m_peak, m_held);
}

DeletionWatch::DeletionWatch(std::function<void(const void*)> onDelete)
    : m_onDelete(std::move(onDelete)) {
    g_watch = this;
}

DeletionWatch::~DeletionWatch() {
    g_watch = nullptr;
}

AllocationFailure::AllocationFailure() {
    g_failNext = true;
}

AllocationFailure::~AllocationFailure() {
    g_failNext = false;
}

void* Allocate(std::size_t size) {
    if (std::exchange(g_failNext, false)) {
        return nullptr;
    }
    void* block = std::malloc(size == 0 ? 1 : size);
    if (g_meter != nullptr) {
        g_meter->m_total += size;
        g_meter->Hold(SizeOf(block));
    }
    return block;
}

void Release(void* block) {
    // Blocks that the callback itself frees are not reported.
    if (g_watch != nullptr && !g_watch->m_calling) {
        g_watch->m_calling = true;
        g_watch->m_onDelete(block);
        g_watch->m_calling = false;
    }
    if (g_meter != nullptr) {
        g_meter->Hold(-SizeOf(block));
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
