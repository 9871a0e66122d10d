#include "support/TempFolder.h"

#include <random>
#include <stdexcept>

namespace QzTest
{

namespace
{

// A folder of a new random name (as mkdtemp makes, which Windows does not have); empty when
// none can be made.
std::filesystem::path MakeUniqueFolder(const std::filesystem::path& parent, const std::string& tag)
{
    static const char kLetters[] = "abcdefghijklmnopqrstuvwxyz0123456789";
    std::random_device seed;
    std::mt19937 random(seed());
    std::uniform_int_distribution<size_t> pick(0, sizeof(kLetters) - 2);
    for (int attempt = 0; attempt < 100; ++attempt)
    {
        std::string name = "qzgui-" + tag + "-";
        for (int i = 0; i < 6; ++i)
            name += kLetters[pick(random)];
        std::error_code error;
        if (std::filesystem::create_directory(parent / name, error))
            return parent / name;
        if (error)
            break;
    }
    return {};
}

} // namespace

TempFolder::TempFolder(const std::string& tag)
{
    const std::filesystem::path parent = std::filesystem::temp_directory_path();
    const std::filesystem::path made = MakeUniqueFolder(parent, tag);
    if (made.empty())
        throw std::runtime_error("cannot make a temporary folder in " + parent.string());
    std::error_code error;
    m_path = std::filesystem::canonical(made, error);
    if (error)
        m_path = made;
}

TempFolder::~TempFolder()
{
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
}

} // namespace QzTest
