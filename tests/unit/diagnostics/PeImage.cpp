#include "PeImage.h"

#include <fstream>
#include <iterator>

namespace QzDiagnosticsTest
{

namespace
{

constexpr uint32_t kSectionRva = 0x1000;
constexpr uint32_t kSectionFileOffset = 0x200;
constexpr uint32_t kSubdirectory = 0x80000000;

void Put16(std::string& bytes, size_t offset, uint16_t value)
{
    bytes.at(offset) = static_cast<char>(value & 0xFF);
    bytes.at(offset + 1) = static_cast<char>(value >> 8);
}

void Put32(std::string& bytes, size_t offset, uint32_t value)
{
    Put16(bytes, offset, static_cast<uint16_t>(value & 0xFFFF));
    Put16(bytes, offset + 2, static_cast<uint16_t>(value >> 16));
}

// A resource directory header with `ids` numeric entries, then its entries.
void AppendDirectory(std::string& rsrc, const std::vector<std::pair<uint32_t, uint32_t>>& entries)
{
    const size_t at = rsrc.size();
    rsrc.resize(at + 16 + 8 * entries.size());
    Put16(rsrc, at + 14, static_cast<uint16_t>(entries.size()));
    for (size_t i = 0; i < entries.size(); ++i)
    {
        Put32(rsrc, at + 16 + 8 * i, entries[i].first);
        Put32(rsrc, at + 20 + 8 * i, entries[i].second);
    }
}

std::string ResourceSectionBytes(const std::vector<std::pair<uint32_t, std::string>>& dialogs)
{
    const size_t count = dialogs.size();
    const uint32_t names = 24;
    const uint32_t languages = names + 16 + 8 * static_cast<uint32_t>(count);
    const uint32_t dataEntries = languages + 24 * static_cast<uint32_t>(count);
    std::string rsrc;
    AppendDirectory(rsrc, {{5, kSubdirectory | names}});
    std::vector<std::pair<uint32_t, uint32_t>> nameEntries;
    for (size_t i = 0; i < count; ++i)
        nameEntries.emplace_back(dialogs[i].first,
                                 kSubdirectory | (languages + 24 * static_cast<uint32_t>(i)));
    AppendDirectory(rsrc, nameEntries);
    for (size_t i = 0; i < count; ++i)
        AppendDirectory(rsrc, {{0x409, dataEntries + 16 * static_cast<uint32_t>(i)}});
    rsrc.resize(dataEntries + 16 * count);
    for (size_t i = 0; i < count; ++i)
    {
        rsrc.resize((rsrc.size() + 3) & ~size_t(3));
        Put32(rsrc, dataEntries + 16 * i, kSectionRva + static_cast<uint32_t>(rsrc.size()));
        Put32(rsrc, dataEntries + 16 * i + 4, static_cast<uint32_t>(dialogs[i].second.size()));
        rsrc += dialogs[i].second;
    }
    return rsrc;
}

} // namespace

PeImage PeImage::Load(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    PeImage image;
    image.bytes.assign(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
    return image;
}

PeImage PeImage::Build(const std::vector<std::pair<uint32_t, std::string>>& dialogs, bool b64Bit)
{
    const std::string rsrc = ResourceSectionBytes(dialogs);
    const uint32_t rawSize = (static_cast<uint32_t>(rsrc.size()) + 0x1FF) & ~0x1FFu;
    const uint16_t optionalSize = b64Bit ? 240 : 224;
    PeImage image;
    std::string& bytes = image.bytes;
    bytes.assign(kSectionFileOffset, '\0');
    Put16(bytes, 0, 0x5A4D);
    Put16(bytes, 0x18, 0x40);
    Put32(bytes, 0x3C, 0x40);
    Put32(bytes, 0x40, 0x4550);
    Put16(bytes, 0x44, b64Bit ? 0x8664 : 0x14C);
    Put16(bytes, 0x46, 1);
    Put16(bytes, 0x54, optionalSize);
    const size_t optional = 0x58;
    Put16(bytes, optional, b64Bit ? 0x20B : 0x10B);
    Put32(bytes, optional + (b64Bit ? 108 : 92), 16);
    const size_t resourceDirectory = optional + (b64Bit ? 112 : 96) + 16;
    Put32(bytes, resourceDirectory, kSectionRva);
    Put32(bytes, resourceDirectory + 4, static_cast<uint32_t>(rsrc.size()));
    const size_t section = optional + optionalSize;
    bytes.replace(section, 5, ".rsrc");
    Put32(bytes, section + 8, static_cast<uint32_t>(rsrc.size()));
    Put32(bytes, section + 12, kSectionRva);
    Put32(bytes, section + 16, rawSize);
    Put32(bytes, section + 20, kSectionFileOffset);
    bytes += rsrc;
    bytes.resize(kSectionFileOffset + rawSize);
    return image;
}

std::string PeImage::Save(const std::string& name) const
{
    std::ofstream file(name, std::ios::binary | std::ios::trunc);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return name;
}

uint32_t PeImage::Dword(size_t offset) const
{
    uint32_t value = 0;
    for (size_t i = 0; i < 4; ++i)
        value |= static_cast<uint32_t>(static_cast<uint8_t>(bytes.at(offset + i))) << (8 * i);
    return value;
}

void PeImage::SetDword(size_t offset, uint32_t value)
{
    Put32(bytes, offset, value);
}

void PeImage::SetWord(size_t offset, uint16_t value)
{
    Put16(bytes, offset, value);
}

size_t PeImage::ResourceDataDirectory() const
{
    const size_t optional = PeHeader() + 24;
    const bool b64Bit = (Dword(optional) & 0xFFFF) == 0x20B;
    return optional + (b64Bit ? 112 : 96) + 16;
}

size_t PeImage::SectionTable() const
{
    return PeHeader() + 24 + (Dword(PeHeader() + 20) & 0xFFFF);
}

size_t PeImage::SectionOf(uint32_t rva) const
{
    const size_t count = Dword(PeHeader() + 6) & 0xFFFF;
    for (size_t i = 0; i < count; ++i)
    {
        const size_t section = SectionTable() + 40 * i;
        const uint32_t address = Dword(section + 12);
        if (rva >= address && rva - address < Dword(section + 16))
            return section;
    }
    return std::string::npos;
}

size_t PeImage::RvaToOffset(uint32_t rva) const
{
    const size_t section = SectionOf(rva);
    return Dword(section + 20) + (rva - Dword(section + 12));
}

size_t PeImage::ResourceSection() const
{
    return SectionOf(Dword(ResourceDataDirectory()));
}

size_t PeImage::ResourceRoot() const
{
    return RvaToOffset(Dword(ResourceDataDirectory()));
}

size_t PeImage::DialogNames() const
{
    const size_t root = ResourceRoot();
    const size_t count = (Dword(root + 12) & 0xFFFF) + (Dword(root + 12) >> 16);
    for (size_t i = 0; i < count; ++i)
    {
        if (Dword(root + 16 + 8 * i) == 5)
            return root + (Dword(root + 20 + 8 * i) & ~kSubdirectory);
    }
    return std::string::npos;
}

size_t PeImage::DialogDataEntry(size_t index) const
{
    const size_t root = ResourceRoot();
    const size_t languages = root + (Dword(DialogNameEntry(index) + 4) & ~kSubdirectory);
    return root + Dword(languages + 20);
}

} // namespace QzDiagnosticsTest
