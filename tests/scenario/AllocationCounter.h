// Counts the allocations made through operator new while a counter is alive, for tests that
// show that a steady state allocates nothing. The scenario program replaces the global
// operator new and delete for it (AllocationCounter.cpp); only one counter counts at a time.
// Under a memory checker that brings its own operator new the count stays 0.
#pragma once

class CAllocationCounter
{
public:
    CAllocationCounter();
    ~CAllocationCounter();
    CAllocationCounter(const CAllocationCounter&) = delete;
    CAllocationCounter& operator=(const CAllocationCounter&) = delete;

    int Count() const;
};
