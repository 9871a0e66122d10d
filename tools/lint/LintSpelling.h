// Which known name a mistyped one was meant to be: the nearest by edit distance (insertions,
// deletions, substitutions and swaps of two neighbours), without regard to ASCII case.
#pragma once

#include <string>
#include <vector>

namespace QzLint
{

class CLintSpelling
{
public:
    // Edits that turn one text into the other, letters compared without regard to ASCII case.
    static size_t Distance(const std::string& a, const std::string& b);
    // The nearest candidate (the first of equally near ones); empty when none is near enough:
    // at most a third of the word's length in edits, at least 1 and at most 3.
    static std::string Nearest(const std::string& word, const std::vector<std::string>& candidates);
    // " (did you mean X?)" for the nearest candidate, saying so when only letter case (and
    // bCaseCounts) or blanks around the word tell them apart; empty without a candidate.
    static std::string Hint(const std::string& word, const std::vector<std::string>& candidates,
                            bool bCaseCounts);
};

} // namespace QzLint
