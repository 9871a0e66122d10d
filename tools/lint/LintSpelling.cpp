#include "LintSpelling.h"

#include <algorithm>

namespace QzLint
{

namespace
{

constexpr size_t kMaxEdits = 3;

char Fold(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

std::string Trim(const std::string& text)
{
    const size_t first = text.find_first_not_of(" \t");
    if (first == std::string::npos)
        return std::string();
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

size_t Limit(const std::string& word)
{
    return std::clamp<size_t>(word.size() / 3, 1, kMaxEdits);
}

} // namespace

// Three rows of the distance table: the one before the last, the last and the current.
size_t CLintSpelling::Distance(const std::string& a, const std::string& b)
{
    std::vector<size_t> before(b.size() + 1);
    std::vector<size_t> last(b.size() + 1);
    std::vector<size_t> row(b.size() + 1);
    for (size_t j = 0; j <= b.size(); ++j)
        last[j] = j;
    for (size_t i = 1; i <= a.size(); ++i)
    {
        row[0] = i;
        for (size_t j = 1; j <= b.size(); ++j)
        {
            const size_t cost = Fold(a[i - 1]) == Fold(b[j - 1]) ? 0 : 1;
            row[j] = std::min({last[j] + 1, row[j - 1] + 1, last[j - 1] + cost});
            if (i > 1 && j > 1 && Fold(a[i - 1]) == Fold(b[j - 2]) &&
                Fold(a[i - 2]) == Fold(b[j - 1]))
                row[j] = std::min(row[j], before[j - 2] + 1);
        }
        before.swap(last);
        last.swap(row);
    }
    return last[b.size()];
}

std::string CLintSpelling::Nearest(const std::string& word,
                                   const std::vector<std::string>& candidates)
{
    const std::string trimmed = Trim(word);
    if (trimmed.empty())
        return std::string();
    const size_t limit = Limit(trimmed);
    std::string nearest;
    size_t best = limit + 1;
    for (const std::string& candidate : candidates)
    {
        // Lengths further apart than the limit cannot come within it: not worth the table.
        const size_t gap = candidate.size() > trimmed.size() ? candidate.size() - trimmed.size()
                                                             : trimmed.size() - candidate.size();
        if (gap > limit)
            continue;
        const size_t distance = Distance(trimmed, candidate);
        if (distance < best)
        {
            best = distance;
            nearest = candidate;
        }
    }
    return nearest;
}

std::string CLintSpelling::Hint(const std::string& word, const std::vector<std::string>& candidates,
                                bool bCaseCounts)
{
    const std::string nearest = Nearest(word, candidates);
    if (nearest.empty())
        return std::string();
    std::string why;
    if (Trim(word) != word && Distance(Trim(word), nearest) == 0)
        why = " blanks around it count";
    else if (bCaseCounts && Distance(word, nearest) == 0)
        why = " letter case counts";
    return " (did you mean " + nearest + "?" + why + ")";
}

} // namespace QzLint
