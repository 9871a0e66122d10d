// The data library's object: the client's language, its display switch, texts and numbers of
// the string table, and the mapping of configured font faces to the faces to draw with.
#pragma once

#include <cstdint>
#include <map>
#include <string>

namespace QzPlatform
{

class CQzGameData
{
public:
    // "Chinese" unless the host sets another; never null.
    const char* GetLanguageName() const { return m_strLanguage.c_str(); }
    void SetLanguageName(const char* name) { m_strLanguage = name ? name : ""; }

    // When on, text runs go through the display transform before they are drawn.
    bool IsLanguageSwitchOn() const { return m_bLanguageSwitch; }
    void SetLanguageSwitch(bool on) { m_bLanguageSwitch = on; }

    // The string-table text of id, "" when unknown; never null. The caller's source unit and
    // line identify the look-up in a debugger; they do not change the result.
    const char* GetString(uint32_t id, const char* source, int line) const;
    // The string-table entry of key read as a decimal integer (0 when missing or not a number).
    int QueryInt(uint32_t key) const;

    // The face to draw with for a configured face: the host's mapping, else the face itself
    // ("" for null); never null.
    const char* GetFont(const char* face) const;
    // Maps a face; a null or empty target removes the mapping.
    void SetFontMapping(const char* face, const char* drawFace);

    // Back to the defaults.
    void Reset();

private:
    std::string m_strLanguage = "Chinese";
    bool m_bLanguageSwitch = false;
    std::map<std::string, std::string> m_mapFonts;
};

// The process-wide data object.
CQzGameData& GetGameData();

} // namespace QzPlatform
