// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <functional>

/// Counts the heap allocations of the program under test, and fails one. Linking it replaces the
/// global operators new and delete. Single thread only; one object of each class at a time.
namespace applist::test {

/// Measures the memory allocated during its lifetime.
class AllocationMeter {
public:
    AllocationMeter();
    ~AllocationMeter();
    AllocationMeter(const AllocationMeter&) = delete;
    AllocationMeter& operator=(const AllocationMeter&) = delete;

    /// The sum of all allocations so far in bytes, including blocks freed since.
    std::size_t Total() const { return m_total; }
    /// Held() is the memory in use now minus that at construction; Peak() is its maximum. Both in
    /// bytes, rounded as the allocator does.
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

/// Calls back for each block that is freed during its lifetime.
class DeletionWatch {
public:
    /// onDelete receives the block's address just before it is freed. It may allocate.
    explicit DeletionWatch(std::function<void(const void*)> onDelete);
    ~DeletionWatch();
    DeletionWatch(const DeletionWatch&) = delete;
    DeletionWatch& operator=(const DeletionWatch&) = delete;

private:
    friend void Release(void* block);
    std::function<void(const void*)> m_onDelete;
    bool m_calling = false;
};

/// Makes the first allocation during its lifetime fail.
class AllocationFailure {
public:
    AllocationFailure();
    ~AllocationFailure();
    AllocationFailure(const AllocationFailure&) = delete;
    AllocationFailure& operator=(const AllocationFailure&) = delete;
};

}  // namespace applist::test
