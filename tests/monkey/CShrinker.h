// Delta debugging over a failing list: the shortest failing tail first (a failure usually needs
// the last events and little of what came long before), then chunks of it dropped, halving the
// chunks whenever none can go, until no single element can be dropped.
#pragma once

#include <cstddef>
#include <functional>
#include <vector>

namespace QzMonkey
{

class CShrinker
{
public:
    // True when the list of indexes (ascending, into the original list) still fails.
    using Test = std::function<bool(const std::vector<size_t>&)>;

    // Indexes of the nCount elements, all of which fail together; returns the smallest failing
    // list found, from which no single index can be dropped.
    static std::vector<size_t> Shrink(size_t nCount, const Test& fails);

private:
    static std::vector<size_t> ShortestTail(size_t nCount, const Test& fails);
    // One pass over the chunks; true when one could be dropped (the list is then shorter).
    static bool DropAChunk(std::vector<size_t>& current, size_t nChunks, const Test& fails);
};

} // namespace QzMonkey
