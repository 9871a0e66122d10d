#include "support/TempFolder.h"

#include <cstdlib>
#include <stdexcept>

namespace QzTest
{

TempFolder::TempFolder(const std::string& tag)
{
    std::string pattern =
        (std::filesystem::temp_directory_path() / ("qzgui-" + tag + "-XXXXXX")).string();
    if (!mkdtemp(&pattern[0]))
        throw std::runtime_error("cannot make a temporary folder from " + pattern);
    std::error_code error;
    m_path = std::filesystem::canonical(pattern, error);
    if (error)
        m_path = pattern;
}

TempFolder::~TempFolder()
{
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
}

} // namespace QzTest
