// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <functional>

/// What the program under test takes from the heap and gives back. Linking it replaces the global
/// operators new and delete by ones that count. Single thread only; one of each at a time.
namespace applist::test {

/// Measures the memory taken while it lives.
class AllocationMeter {
public:
    AllocationMeter();
    ~AllocationMeter();
    AllocationMeter(const AllocationMeter&) = delete;
    AllocationMeter& operator=(const AllocationMeter&) = delete;
    AllocationMeter(AllocationMeter&&) = delete;
    AllocationMeter& operator=(AllocationMeter&&) = delete;

    /// The sum of all blocks so far, in bytes, also of those given back.
    std::size_t Total() const { return m_total; }
    /// What is held now beyond what was held at first, and the most at once; in bytes as the
    /// allocator rounds them.
    std::size_t Held() const { return static_cast<std::size_t>(m_held); }
    std::size_t Peak() const { return static_cast<std::size_t>(m_peak); }

private:
    friend void* Allocate(std::size_t size);
    friend void Release(void* block);
    void Hold(std::ptrdiff_t size);

    std::size_t m_total = 0;
    std::ptrdiff_t m_held = 0;
    std::ptrdiff_t m_peak = 0;
};

/// Calls back for each block that is given back while it lives.
class DeletionWatch {
public:
    /// onDelete gets the block's address, just before it goes, and may allocate.
    explicit DeletionWatch(std::function<void(const void*)> onDelete);
    ~DeletionWatch();
    DeletionWatch(const DeletionWatch&) = delete;
    DeletionWatch& operator=(const DeletionWatch&) = delete;
    DeletionWatch(DeletionWatch&&) = delete;
    DeletionWatch& operator=(DeletionWatch&&) = delete;

private:
    friend void Release(void* block);
    std::function<void(const void*)> m_onDelete;
    bool m_calling = false;
};

}  // namespace applist::test
