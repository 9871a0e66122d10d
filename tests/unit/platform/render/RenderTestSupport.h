// Shared set-up of the render tests: a temporary data root as the current directory, with files
// written into it, and the data set and string table forgotten before and after.
#pragma once

#include "platform/render/DataSet.h"
#include "platform/services/QzStringTable.h"
#include "platform/system/HostedSystem.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace QzTest
{

class ScopedDataRoot
{
public:
    ScopedDataRoot() : m_previous(std::filesystem::current_path())
    {
        std::string pattern =
            (std::filesystem::temp_directory_path() / "qzgui-render-XXXXXX").string();
        const char* made = mkdtemp(&pattern[0]);
        EXPECT_NE(made, nullptr);
        m_root = made ? made : std::filesystem::temp_directory_path();
        std::filesystem::current_path(m_root);
        Forget();
    }

    ~ScopedDataRoot()
    {
        Forget();
        std::filesystem::current_path(m_previous);
        std::error_code ignored;
        std::filesystem::remove_all(m_root, ignored);
    }

    ScopedDataRoot(const ScopedDataRoot&) = delete;
    ScopedDataRoot& operator=(const ScopedDataRoot&) = delete;

    // Writes a file under the root, creating its folders.
    void Write(const std::string& relativePath, const std::string& text) const
    {
        const std::filesystem::path path = m_root / relativePath;
        std::filesystem::create_directories(path.parent_path());
        std::ofstream(path, std::ios::binary) << text;
    }

private:
    static void Forget()
    {
        TableDataSetQuery()->Reload();
        QzPlatform::ReloadStringTable();
    }

    std::filesystem::path m_previous;
    std::filesystem::path m_root;
};

// Holds timeGetTime at the value a test sets while it lives.
class ScopedClock
{
public:
    explicit ScopedClock(DWORD ms) { Set(ms); }
    ~ScopedClock() { QzPlatform::CHostedSystem::Instance().Clock().UseRealClock(); }
    ScopedClock(const ScopedClock&) = delete;
    ScopedClock& operator=(const ScopedClock&) = delete;

    void Set(DWORD ms) { QzPlatform::CHostedSystem::Instance().Clock().Set(ms); }
};

} // namespace QzTest
