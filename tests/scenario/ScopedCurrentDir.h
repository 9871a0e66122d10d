// The bundle folder is the current directory while a test runs the demo's windows in-process,
// as it is for the demo.
#pragma once

#include <filesystem>

class ScopedCurrentDir
{
public:
    explicit ScopedCurrentDir(const std::filesystem::path& path)
        : m_previous(std::filesystem::current_path())
    {
        std::filesystem::current_path(path);
    }
    ~ScopedCurrentDir() { std::filesystem::current_path(m_previous); }
    ScopedCurrentDir(const ScopedCurrentDir&) = delete;
    ScopedCurrentDir& operator=(const ScopedCurrentDir&) = delete;

private:
    std::filesystem::path m_previous;
};
