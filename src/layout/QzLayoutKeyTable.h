// The keys of a layout section and what each does to a window information record. Keys are
// compared case-sensitively; a key the table does not know goes to the record's extra pairs.
#pragma once

#include <deque>
#include <string>
#include <vector>

namespace QzGui
{

class CQzGuiWndInfo;

class CQzLayoutKeyTable
{
public:
    // Applies key=value to the record. "Link" appends the value to links and stores its index.
    static void Apply(CQzGuiWndInfo& record, const char* pszKey, const char* pszValue,
                      std::deque<std::string>& links);

private:
    static void ApplyBindList(std::vector<int>& list, const char* pszValue);
};

} // namespace QzGui
