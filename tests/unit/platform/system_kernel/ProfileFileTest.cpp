// The index a profile file keeps through its edits: after any sequence of writes and deletions
// it is the index that reading the edited text afresh gives, key lines given new values and
// keys added in place included.
#include "platform/system/kernel/QzProfileFile.h"

#include <gtest/gtest.h>

#include <random>
#include <sstream>
#include <string>

namespace
{

using QzPlatform::CQzProfileFile;

// The index as text: one line a section and one a key, every offset and the key look-ups.
std::string Describe(const CQzProfileFile& file)
{
    std::ostringstream out;
    for (const CQzProfileFile::Section& section : file.Sections())
    {
        out << "[" << section.name << "] " << section.headerBegin << " " << section.headerNext
            << " " << section.end << "\n";
        for (const CQzProfileFile::Entry& entry : section.entries)
        {
            const CQzProfileFile::Entry* found = file.FindEntry(section.name, entry.name);
            out << "  " << entry.name << (entry.hasValue ? "=" : "") << entry.value << " "
                << entry.lineBegin << " " << entry.lineEnd << " " << entry.nextLine << " -> "
                << (found ? int(found->lineBegin) : -1) << "\n";
        }
    }
    return out.str();
}

std::string Pick(std::mt19937& random, std::initializer_list<const char*> choices)
{
    return *(choices.begin() + random() % choices.size());
}

} // namespace

TEST(ProfileFile, EditedIndexIsTheIndexOfTheEditedText)
{
    std::mt19937 random(20261124);
    for (int round = 0; round < 200; ++round)
    {
        std::string text = round % 3 == 0 ? "\xEF\xBB\xBF" : "";
        const std::string eol = Pick(random, {"\r\n", "\n", "\r"});
        for (int line = int(random() % 8); line > 0; --line)
        {
            text += Pick(random, {"[A]", " [ b ] ", "[a", "x=1", " X = 2 ", "y", ";c", "", "[z=y",
                                  "k=v]", "\t"});
            text += random() % 8 ? eol : "\n";
        }
        if (random() % 2)
            text += Pick(random, {"tail=1", "[A]", ";t"}); // a last line without a line break
        CQzProfileFile file(text, 936);
        for (int edit = 0; edit < 12; ++edit)
        {
            const std::string section = Pick(random, {"A", "b", " B ", "new", "z=y"});
            const std::string key = Pick(random, {"x", "X ", "y", "new", "[w", ";v", "k=1", ""});
            const int kind = int(random() % 6);
            if (kind == 0)
                file.DeleteKey(section, key);
            else if (kind == 1)
                file.DeleteSection(section);
            else
                file.SetValue(section, key, Pick(random, {"1", " 2 ", "v]", "a\nb", "", "=q"}));
            const CQzProfileFile fresh(file.Text(), 936);
            ASSERT_EQ(Describe(fresh), Describe(file)) << "round " << round << " edit " << edit;
        }
    }
}
