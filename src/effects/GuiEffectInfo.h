// The placement table of 3D effect parts, read from ini/Gui3DEffect.ini: for every part name, the
// window size it was designed for, its offset, its base scales and its rotation. One table
// serves the whole library (Instance); the GUI manager loads it at Init and on layout reloads.
#pragma once

#include "platform/system/QzSystem.h"

#include <map>
#include <string>

// Where and how large one part sits in its window. A name the table lacks reads as all zeros.
struct QzEffectPlacement
{
    unsigned int nRefWidth;  // window width the part was designed for; 0 = no width scaling
    unsigned int nRefHeight; // window height the part was designed for; 0 = no height scaling
    unsigned int nOffsetX;
    unsigned int nOffsetZ;
    float fScaleX;
    float fScaleZ;
    int nRotation; // degrees about the vertical axis
};

class CGuiEffectInfo
{
public:
    CGuiEffectInfo() = default;
    virtual ~CGuiEffectInfo();
    CGuiEffectInfo(const CGuiEffectInfo&) = delete;
    CGuiEffectInfo& operator=(const CGuiEffectInfo&) = delete;

    // The library-wide table.
    static CGuiEffectInfo& Instance();

    // Empties the table, then reads the file: one "name refW refH x z scaleX scaleZ rotation"
    // a line, names of at most 127 characters. Empty lines are skipped; a line without all eight
    // values is skipped and logged as "data error"; a later line replaces an earlier one of the
    // same name. FALSE (and an empty table, logged as "open file failed") when the file cannot
    // be opened.
    BOOL Load(const char* pszPath);
    void Clear() { m_mapPlacements.clear(); }

    // The placement of the part, or null when the table lacks it.
    const QzEffectPlacement* Find(const char* pszName) const;
    // The placement of the part, all zeros when the table lacks it.
    QzEffectPlacement Get(const char* pszName) const;
    size_t GetCount() const { return m_mapPlacements.size(); }

private:
    void ParseLine(const char* pszPath, std::string& line);

    std::map<std::string, QzEffectPlacement> m_mapPlacements;
};
