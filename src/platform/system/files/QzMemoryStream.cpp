#include "platform/system/files/QzMemoryStream.h"

#include "platform/system/files/QzMemoryFiles.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <sys/types.h>

namespace QzPlatform
{

namespace
{

struct Stream
{
    std::string path;
    std::string bytes;
    size_t position = 0;
    bool canWrite = false;
    bool appends = false;
};

ssize_t ReadStream(void* cookie, char* buffer, size_t size)
{
    Stream* stream = static_cast<Stream*>(cookie);
    if (stream->position >= stream->bytes.size())
        return 0;
    const size_t count = std::min(size, stream->bytes.size() - stream->position);
    std::memcpy(buffer, stream->bytes.data() + stream->position, count);
    stream->position += count;
    return static_cast<ssize_t>(count);
}

ssize_t WriteStream(void* cookie, const char* buffer, size_t size)
{
    Stream* stream = static_cast<Stream*>(cookie);
    if (!stream->canWrite)
        return -1;
    if (stream->appends)
        stream->position = stream->bytes.size();
    if (stream->position > stream->bytes.size())
        stream->bytes.resize(stream->position, '\0');
    stream->bytes.replace(stream->position, std::min(size, stream->bytes.size() - stream->position),
                          buffer, size);
    stream->position += size;
    CQzMemoryFiles::Instance().Write(stream->path, stream->bytes);
    return static_cast<ssize_t>(size);
}

int SeekStream(void* cookie, off64_t* offset, int whence)
{
    Stream* stream = static_cast<Stream*>(cookie);
    const off64_t base = whence == SEEK_SET   ? 0
                         : whence == SEEK_CUR ? static_cast<off64_t>(stream->position)
                                              : static_cast<off64_t>(stream->bytes.size());
    if (*offset < -base)
        return -1;
    stream->position = static_cast<size_t>(base + *offset);
    *offset = static_cast<off64_t>(stream->position);
    return 0;
}

int CloseStream(void* cookie)
{
    delete static_cast<Stream*>(cookie);
    return 0;
}

} // namespace

FILE* OpenMemoryStream(const std::string& path, const char* mode)
{
    CQzMemoryFiles& files = CQzMemoryFiles::Instance();
    const char kind = mode ? mode[0] : '\0';
    if (kind != 'r' && kind != 'w' && kind != 'a')
        return nullptr;
    const CQzMemoryFiles::File* file = files.Find(path);
    if ((kind == 'r' && !file) || (!file && !files.CanCreate(path)))
        return nullptr;
    auto stream = std::make_unique<Stream>();
    stream->path = path;
    stream->canWrite = kind != 'r' || std::strchr(mode, '+') != nullptr;
    stream->appends = kind == 'a';
    if (file && kind != 'w')
        stream->bytes = *file->bytes;
    if (kind != 'r' && (!file || kind == 'w'))
        files.Write(path, stream->bytes);
    const cookie_io_functions_t functions = {ReadStream, WriteStream, SeekStream, CloseStream};
    FILE* result = fopencookie(stream.get(), mode, functions);
    if (result)
        stream.release();
    return result;
}

} // namespace QzPlatform
