// Lays out text with inline emotion codes: "#" and two digits, or "#", two digits, "|" and two
// digits. A code whose icon the icon set has becomes an icon piece, everything else text runs.
// Lines end at '\n' (a '\r' before it is dropped); each line is as high as its text and at
// least the icon cell, and icons are centred on it. An icon with several frames shows the frame
// of the clock (one frame every 200 ms).
#pragma once

#include "platform/render/C3Types.h"
#include "platform/render/DataSet.h"
#include "platform/render/IRenderDevice.h"

#include <string>
#include <vector>

namespace QzPlatform
{

class CEmotionTextLayout
{
public:
    static constexpr DWORD kIconFrameMs = 200;

    // icons may be null: codes then stay text.
    CEmotionTextLayout(const std::string& utf8, IDataIcon* icons, const FontSpec& font,
                       int iconCell);

    C3_SIZE GetSize() const { return m_size; }
    void Draw(int x, int y, uint32_t colour, uint32_t shadowColour) const;

    // Length of the emotion code at text[pos] (6, 3) or 0 when none starts there.
    static size_t CodeLengthAt(const std::string& text, size_t pos);

private:
    struct Piece
    {
        std::string text;
        IDataAni* pIcon = nullptr; // null for a text run
        int frame = 0;
        int x = 0;
        int width = 0;
        int height = 0;
    };

    struct Line
    {
        std::vector<Piece> pieces;
        int top = 0;
        int width = 0;
        int height = 0;
    };

    void AddLine(const std::string& text);
    void AddText(Line& line, const std::string& text);
    void AddIcon(Line& line, IDataAni* pIcon);
    IDataAni* FindIcon(const std::string& code) const;

    IDataIcon* m_pIcons;
    FontSpec m_font;
    int m_nIconCell;
    std::vector<Line> m_vecLines;
    C3_SIZE m_size = {0, 0};
};

} // namespace QzPlatform
