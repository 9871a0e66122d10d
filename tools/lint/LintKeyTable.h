// What the library reads from a layout section: the keys of the record table (each fills a
// field of the record) and the extra keys that some window classes read from the record's
// extra pairs. Any other key lands in the extra pairs and is never read. Keys are compared
// case-sensitively, as the reader compares them. Also the window type codes ("type") the
// library has a window class for.
#pragma once

#include <string>
#include <vector>

namespace QzLint
{

class CLintKeyTable
{
public:
    static const std::vector<std::string>& RecordKeys();
    static const std::vector<std::string>& ExtraKeys();
    // Record keys, then extra keys.
    static const std::vector<std::string>& AllKeys();
    static bool IsKnown(const std::string& key);

    static const std::vector<int>& Types();
    static bool IsKnownType(int nType);
    // The type codes as ranges: "1 to 8, 15 to 17, 19 to 22".
    static std::string DescribeTypes();
};

} // namespace QzLint
