#include "CShrinker.h"

#include <algorithm>
#include <numeric>

namespace QzMonkey
{

std::vector<size_t> CShrinker::ShortestTail(size_t nCount, const Test& fails)
{
    std::vector<size_t> all(nCount);
    std::iota(all.begin(), all.end(), size_t{0});
    for (size_t length = 1; length < nCount; length *= 2)
    {
        std::vector<size_t> tail(all.end() - static_cast<std::ptrdiff_t>(length), all.end());
        if (fails(tail))
            return tail;
    }
    return all;
}

bool CShrinker::DropAChunk(std::vector<size_t>& current, size_t nChunks, const Test& fails)
{
    const size_t chunk = (current.size() + nChunks - 1) / nChunks;
    for (size_t start = 0; start < current.size(); start += chunk)
    {
        std::vector<size_t> rest(current.begin(),
                                 current.begin() + static_cast<std::ptrdiff_t>(start));
        const size_t end = std::min(start + chunk, current.size());
        rest.insert(rest.end(), current.begin() + static_cast<std::ptrdiff_t>(end), current.end());
        if (rest.empty() || !fails(rest))
            continue;
        current = std::move(rest);
        return true;
    }
    return false;
}

std::vector<size_t> CShrinker::Shrink(size_t nCount, const Test& fails)
{
    std::vector<size_t> current = ShortestTail(nCount, fails);
    size_t chunks = 2;
    while (current.size() > 1)
    {
        if (DropAChunk(current, chunks, fails))
        {
            chunks = std::max<size_t>(chunks - 1, 2);
            continue;
        }
        if (chunks >= current.size())
            break;
        chunks = std::min(chunks * 2, current.size());
    }
    return current;
}

} // namespace QzMonkey
