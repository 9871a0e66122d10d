// The monkey's shrinker against made-up failures: which elements it keeps, and that it keeps
// the number of replays down.
#include "CShrinker.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <set>
#include <vector>

namespace
{

using QzMonkey::CShrinker;
using Indexes = std::vector<size_t>;

// Fails while every one of the culprits is in the list.
CShrinker::Test Needs(std::set<size_t> culprits)
{
    return [culprits](const Indexes& indexes)
    {
        return std::all_of(
            culprits.begin(), culprits.end(),
            [&](size_t culprit)
            { return std::find(indexes.begin(), indexes.end(), culprit) != indexes.end(); });
    };
}

struct ShrinkCase
{
    const char* pszName;
    size_t nCount;
    CShrinker::Test fails;
    Indexes expected;
    int nMaxTests;
};

TEST(Shrinker, KeepsExactlyWhatTheFailureNeedsWithinFewTests)
{
    const ShrinkCase cases[] = {
        {"one element, nothing to drop", 1, Needs({0}), {0}, 0},
        {"the last element", 100, Needs({99}), {99}, 2},
        {"the first element", 100, Needs({0}), {0}, 30},
        {"one in the middle", 1000, Needs({500}), {500}, 60},
        {"two far apart", 200, Needs({3, 150}), {3, 150}, 80},
        {"three together at the end", 64, Needs({60, 61, 62}), {60, 61, 62}, 40},
        {"any three elements",
         40,
         [](const Indexes& indexes) { return indexes.size() >= 3; },
         {37, 38, 39},
         60},
    };
    for (const ShrinkCase& c : cases)
    {
        int tests = 0;
        const Indexes kept =
            CShrinker::Shrink(c.nCount,
                              [&](const Indexes& indexes)
                              {
                                  ++tests;
                                  EXPECT_TRUE(std::is_sorted(indexes.begin(), indexes.end()));
                                  return c.fails(indexes);
                              });
        EXPECT_EQ(c.expected, kept) << c.pszName;
        EXPECT_LE(tests, c.nMaxTests) << c.pszName;
    }
}

TEST(Shrinker, AFailureThatNeedsOrderKeepsBothEnds)
{
    // Fails when an element below 10 comes before one above 90: the shrunk list is one of each.
    const Indexes kept = CShrinker::Shrink(
        100,
        [](const Indexes& indexes)
        {
            const auto low =
                std::find_if(indexes.begin(), indexes.end(), [](size_t i) { return i < 10; });
            return std::any_of(low, indexes.end(), [](size_t i) { return i > 90; });
        });
    ASSERT_EQ(2u, kept.size());
    EXPECT_LT(kept[0], 10u);
    EXPECT_GT(kept[1], 90u);
}

} // namespace
