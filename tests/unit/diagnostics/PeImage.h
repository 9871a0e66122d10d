// A PE file's bytes in a test: read from a fixture or built around dialog templates, with the
// places of its headers and resource directory found, so that a test can make hostile variants
// of a good file by patching or cutting it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace QzDiagnosticsTest
{

class PeImage
{
public:
    // The file's bytes; empty when it cannot be read.
    static PeImage Load(const std::string& path);
    // A module with one section that holds a resource directory of dialogs (type 5) with
    // these identifiers and templates, in this order; 64-bit optional header unless told.
    static PeImage Build(const std::vector<std::pair<uint32_t, std::string>>& dialogs,
                         bool b64Bit = true);

    // Writes the bytes into the current directory under the name; returns the name.
    std::string Save(const std::string& name) const;

    uint32_t Dword(size_t offset) const;
    void SetDword(size_t offset, uint32_t value);
    void SetWord(size_t offset, uint16_t value);

    // File offsets in a well-formed image.
    size_t PeHeader() const { return Dword(0x3C); }
    // The resource entry (address, size) of the optional header's data directories.
    size_t ResourceDataDirectory() const;
    size_t SectionTable() const;
    // The header of the section that holds the resource directory.
    size_t ResourceSection() const;
    size_t ResourceRoot() const;
    // The directory of dialog names (the subdirectory of type 5).
    size_t DialogNames() const;
    // The n-th entry of that directory, and the data entry of its first language.
    size_t DialogNameEntry(size_t index) const { return DialogNames() + 16 + 8 * index; }
    size_t DialogDataEntry(size_t index) const;
    // The template of the n-th dialog.
    size_t DialogTemplate(size_t index) const { return RvaToOffset(Dword(DialogDataEntry(index))); }
    size_t RvaToOffset(uint32_t rva) const;

    std::string bytes;

private:
    size_t SectionOf(uint32_t rva) const;
};

} // namespace QzDiagnosticsTest
