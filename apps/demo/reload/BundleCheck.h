// Checks the files of a bundle before the demo reloads them. The readers take what they can of
// a broken file ("[0-100" is read as a section, "x=abc" as 0), so a reload of a bad edit would
// scramble the screen; this check finds such edits first: headers without "]", layout sections
// without "w" or "h", and numbers of the layout that are not numbers.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

struct BundleError
{
    std::string file; // relative to the bundle: "ini/DemoLayout.ini"
    int line = 0;     // 1-based; 0 for the whole file
    std::string message;
    std::string text; // the line, cut to kMaxText bytes
};

class CBundleCheck
{
public:
    // Most errors kept for one file, and bytes of a line kept in an error.
    static constexpr size_t kMaxErrors = 20;
    static constexpr size_t kMaxText = 80;
    // Larger files are not read: no bundle file comes near this.
    static constexpr uint64_t kMaxFileBytes = 64u << 20;

    // Checks root/relative; a file that cannot be read is an error.
    static void CheckFile(const std::string& root, const std::string& relative,
                          std::vector<BundleError>& errors);
    // Checks the text of the file named relative.
    static void CheckText(const std::string& relative, const std::string& text,
                          std::vector<BundleError>& errors);
    // ini/ files with "[parent-ctrl]" sections, as opposed to the tables of their own format.
    static bool IsLayoutFile(const std::string& relative);
    // "file:line: message: text".
    static std::string Format(const BundleError& error);
};
