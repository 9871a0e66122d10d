#include "platform/render/EmotionTextLayout.h"

#include "platform/services/QzClock.h"

#include <algorithm>

namespace QzPlatform
{

namespace
{

bool IsDigitAt(const std::string& text, size_t pos)
{
    return pos < text.size() && text[pos] >= '0' && text[pos] <= '9';
}

} // namespace

CEmotionTextLayout::CEmotionTextLayout(const std::string& utf8, IDataIcon* icons,
                                       const FontSpec& font, int iconCell)
    : m_pIcons(icons), m_font(font), m_nIconCell(iconCell)
{
    if (utf8.empty())
        return;
    size_t start = 0;
    while (start <= utf8.size())
    {
        size_t end = utf8.find('\n', start);
        if (end == std::string::npos)
            end = utf8.size();
        std::string text = utf8.substr(start, end - start);
        if (!text.empty() && text.back() == '\r')
            text.pop_back();
        AddLine(text);
        start = end + 1;
    }
}

size_t CEmotionTextLayout::CodeLengthAt(const std::string& text, size_t pos)
{
    if (pos >= text.size() || text[pos] != '#' || !IsDigitAt(text, pos + 1) ||
        !IsDigitAt(text, pos + 2))
        return 0;
    if (pos + 3 < text.size() && text[pos + 3] == '|' && IsDigitAt(text, pos + 4) &&
        IsDigitAt(text, pos + 5))
        return 6;
    return 3;
}

void CEmotionTextLayout::AddLine(const std::string& text)
{
    Line line;
    line.top = m_size.iHeight;
    std::string run;
    std::string allText; // the line's text without its icons, for the text height
    size_t pos = 0;
    while (pos < text.size())
    {
        const size_t codeLength = CodeLengthAt(text, pos);
        IDataAni* pIcon = codeLength ? FindIcon(text.substr(pos, codeLength)) : nullptr;
        if (pIcon)
        {
            AddText(line, run);
            run.clear();
            AddIcon(line, pIcon);
            pos += codeLength;
            continue;
        }
        // Not a code, or a code without an icon: it stays text as a whole.
        const size_t length = codeLength ? codeLength : 1;
        run.append(text, pos, length);
        allText.append(text, pos, length);
        pos += length;
    }
    AddText(line, run);
    const int textHeight = GetRenderDevice().MeasureText(allText, m_font).cy;
    line.height = std::max(textHeight, m_nIconCell);
    m_size.iWidth = std::max(m_size.iWidth, line.width);
    m_size.iHeight += line.height;
    m_vecLines.push_back(std::move(line));
}

void CEmotionTextLayout::AddText(Line& line, const std::string& text)
{
    if (text.empty())
        return;
    Piece piece;
    piece.text = text;
    piece.x = line.width;
    const SizeI size = GetRenderDevice().MeasureText(text, m_font);
    piece.width = size.cx;
    piece.height = size.cy;
    line.width += piece.width;
    line.pieces.push_back(std::move(piece));
}

void CEmotionTextLayout::AddIcon(Line& line, IDataAni* pIcon)
{
    Piece piece;
    piece.pIcon = pIcon;
    const int count = pIcon->GetFrameCount();
    piece.frame = count > 1 ? static_cast<int>((QzPlatform::NowMs() / kIconFrameMs) % count) : 0;
    IDataFrame* pFrame = pIcon->GetFrame(piece.frame);
    piece.x = line.width;
    piece.width = pFrame ? pFrame->GetFrameWidth() : 0;
    piece.height = pFrame ? pFrame->GetFrameHeight() : 0;
    line.width += piece.width;
    line.pieces.push_back(std::move(piece));
}

IDataAni* CEmotionTextLayout::FindIcon(const std::string& code) const
{
    if (!m_pIcons)
        return nullptr;
    IDataAni* pIcon = m_pIcons->GetIconAni(code.c_str());
    return pIcon && pIcon->GetFrameCount() > 0 ? pIcon : nullptr;
}

void CEmotionTextLayout::Draw(int x, int y, uint32_t colour, uint32_t shadowColour) const
{
    IRenderDevice& device = GetRenderDevice();
    for (const Line& line : m_vecLines)
    {
        for (const Piece& piece : line.pieces)
        {
            if (!piece.pIcon)
            {
                device.DrawText(x + piece.x, y + line.top, piece.text, m_font, colour,
                                shadowColour);
                continue;
            }
            const int iconY = y + line.top + (line.height - piece.height) / 2;
            piece.pIcon->ShowAni(piece.frame, x + piece.x, iconY, 0, 0, 1.0f, 255);
        }
    }
}

} // namespace QzPlatform
