// What every fuzz target shares: a temporary data root (in memory under /dev/shm when there)
// that is the current directory for the whole run, inputs written into its files, quiet log
// and diagnostic sinks, so that the thousands of data errors a run provokes cost little, and a
// render device that knows every image, so that drawing goes all the way to the device.
#pragma once

#include "platform/render/NullRenderDevice.h"
#include "platform/services/QzAssert.h"
#include "platform/services/QzLog.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>

namespace QzFuzz
{

class CQuietSinks : public QzPlatform::ILogSink, public QzPlatform::IDiagnosticSink
{
public:
    void Write(const QzPlatform::LogRecord&) override {}
    void OnAssert(const char*, const char*, int) override {}
    void OnLogMsg(const std::string&) override {}
};

// Every image exists: "name_<w>x<h>.png" is w by h pixels (1 to 4096), any other 64 by 32;
// pixels are transparent in a checkerboard. Nothing is drawn.
class CFuzzDevice : public QzPlatform::CNullRenderDevice
{
public:
    QzPlatform::TextureId LoadTexture(const std::string& path) override
    {
        int width = 64;
        int height = 32;
        const size_t cross = path.find_last_of('x');
        if (cross != std::string::npos && cross > 0)
        {
            const size_t start = path.find_last_not_of("0123456789", cross - 1) + 1;
            const int w = std::atoi(path.substr(start, cross - start).c_str());
            const int h = std::atoi(path.c_str() + cross + 1);
            if (w > 0 && w <= 4096 && h > 0 && h <= 4096)
            {
                width = w;
                height = h;
            }
        }
        return static_cast<QzPlatform::TextureId>((width << 13) | height);
    }
    QzPlatform::SizeI GetTextureSize(QzPlatform::TextureId texture) const override
    {
        QzPlatform::SizeI size;
        size.cx = static_cast<int>(texture >> 13);
        size.cy = static_cast<int>(texture & 0x1FFF);
        return size;
    }
    bool IsTransparent(QzPlatform::TextureId texture, int x, int y) const override
    {
        const QzPlatform::SizeI size = GetTextureSize(texture);
        return x < 0 || y < 0 || x >= size.cx || y >= size.cy || ((x ^ y) & 1) != 0;
    }
};

inline std::filesystem::path& DataRoot()
{
    static std::filesystem::path root;
    return root;
}

inline void RemoveDataRoot()
{
    std::error_code ignored;
    std::filesystem::remove_all(DataRoot(), ignored);
}

// Once per process, from LLVMFuzzerInitialize: the data root with ini/ and ani/ as the
// current directory (removed at exit), the quiet sinks, a fixed log time, the device.
inline void Setup()
{
    static CQuietSinks sinks;
    static CFuzzDevice device;
    QzPlatform::SetRenderDevice(&device);
    QzPlatform::SetLogSink(&sinks);
    QzPlatform::SetDiagnosticSink(&sinks);
    QzPlatform::SetTimeTextForTesting("2000-01-01 00:00:00");
    std::error_code error;
    const std::filesystem::path base = std::filesystem::is_directory("/dev/shm", error)
                                           ? std::filesystem::path("/dev/shm")
                                           : std::filesystem::temp_directory_path();
    std::string pattern = (base / "qzgui-fuzz-XXXXXX").string();
    if (!mkdtemp(&pattern[0]))
        throw std::runtime_error("no temporary folder");
    DataRoot() = pattern;
    std::filesystem::create_directories(DataRoot() / "ini");
    std::filesystem::create_directories(DataRoot() / "ani");
    std::filesystem::current_path(DataRoot());
    std::atexit(RemoveDataRoot);
}

// Replaces the file under the data root with the bytes.
inline void WriteFile(const char* relative, const uint8_t* data, size_t size)
{
    std::ofstream out(DataRoot() / relative, std::ios::binary | std::ios::trunc);
    out.write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
}

inline void WriteFile(const char* relative, const std::string& text)
{
    WriteFile(relative, reinterpret_cast<const uint8_t*>(text.data()), text.size());
}

} // namespace QzFuzz
