#include "platform/system/gdi/QzGdiTable.h"

#include "platform/system/QzWinKernel.h"

#include <cstring>
#include <memory>

namespace
{

// Windows caps a process at 65536 GDI objects in all; here the cap holds for each kind.
constexpr size_t kMaxObjectsOfAKind = 65536;

bool IsIdentity(const XFORM& form)
{
    return form.eM11 == 1.0f && form.eM12 == 0.0f && form.eM21 == 0.0f && form.eM22 == 1.0f &&
           form.eDx == 0.0f && form.eDy == 0.0f;
}

// The rectangles of region data, or false when the header or the size does not hold up.
bool ReadRegionData(DWORD byteCount, const RGNDATA* data, std::vector<RECT>* rects)
{
    if (!data || byteCount < sizeof(RGNDATAHEADER))
        return false;
    RGNDATAHEADER header;
    std::memcpy(&header, data, sizeof(header));
    if (header.dwSize != sizeof(RGNDATAHEADER) || header.iType != RDH_RECTANGLES)
        return false;
    if (header.nCount > (byteCount - sizeof(RGNDATAHEADER)) / sizeof(RECT))
        return false;
    const auto* bytes = reinterpret_cast<const unsigned char*>(data) + sizeof(RGNDATAHEADER);
    rects->resize(header.nCount);
    if (header.nCount > 0)
        std::memcpy(rects->data(), bytes, header.nCount * sizeof(RECT));
    return true;
}

RECT Normalized(int x1, int y1, int x2, int y2)
{
    RECT rect;
    rect.left = x1 < x2 ? x1 : x2;
    rect.right = x1 < x2 ? x2 : x1;
    rect.top = y1 < y2 ? y1 : y2;
    rect.bottom = y1 < y2 ? y2 : y1;
    return rect;
}

} // namespace

namespace QzPlatform
{

CQzGdiTable& CQzGdiTable::Instance()
{
    // Never destroyed: a host may release its windows from an exit handler.
    static CQzGdiTable& table = *new CQzGdiTable;
    return table;
}

CQzGdiTable::CQzGdiTable()
    : m_fonts(kFontHandleTag, kMaxObjectsOfAKind), m_regions(kRegionHandleTag, kMaxObjectsOfAKind)
{
}

HFONT CQzGdiTable::AddFont(const FontDescription& font)
{
    return ToHandle<HFONT>(m_fonts.Add(std::make_unique<FontDescription>(font)));
}

HRGN CQzGdiTable::AddRegion(const CQzRegion& region)
{
    return ToHandle<HRGN>(m_regions.Add(std::make_unique<CQzRegion>(region)));
}

const FontDescription* CQzGdiTable::FindFont(HFONT font) const
{
    return m_fonts.Find(FromHandle(font));
}

CQzRegion* CQzGdiTable::FindRegion(HRGN region)
{
    return m_regions.Find(FromHandle(region));
}

bool CQzGdiTable::Delete(HGDIOBJ object)
{
    return m_fonts.Remove(FromHandle(object)) || m_regions.Remove(FromHandle(object));
}

void CQzGdiTable::Reset()
{
    m_fonts.Clear();
    m_regions.Clear();
}

bool GetFontDescription(HFONT font, FontDescription* description)
{
    const FontDescription* found = CQzGdiTable::Instance().FindFont(font);
    if (!found || !description)
        return false;
    *description = *found;
    return true;
}

std::vector<RECT> GetRegionRects(HRGN region)
{
    const CQzRegion* found = CQzGdiTable::Instance().FindRegion(region);
    return found ? found->Rects() : std::vector<RECT>();
}

} // namespace QzPlatform

using QzPlatform::CQzGdiTable;

HFONT CreateFontA(int cHeight, int cWidth, int cEscapement, int cOrientation, int cWeight,
                  DWORD bItalic, DWORD bUnderline, DWORD bStrikeOut, DWORD iCharSet,
                  DWORD iOutPrecision, DWORD iClipPrecision, DWORD iQuality, DWORD iPitchAndFamily,
                  LPCSTR pszFaceName)
{
    QzPlatform::FontDescription font;
    font.faceName = pszFaceName ? std::string(pszFaceName, strnlen(pszFaceName, 31)) : "";
    font.height = cHeight;
    font.width = cWidth;
    font.weight = cWeight;
    font.italic = bItalic != 0;
    font.underline = bUnderline != 0;
    font.strikeOut = bStrikeOut != 0;
    font.charSet = iCharSet;
    return CQzGdiTable::Instance().AddFont(font);
}

BOOL DeleteObject(HGDIOBJ ho)
{
    return CQzGdiTable::Instance().Delete(ho) ? TRUE : FALSE;
}

HRGN CreateRectRgn(int x1, int y1, int x2, int y2)
{
    return CQzGdiTable::Instance().AddRegion(
        QzPlatform::CQzRegion(std::vector<RECT>{Normalized(x1, y1, x2, y2)}));
}

HRGN ExtCreateRegion(const XFORM* lpx, DWORD nCount, const RGNDATA* lpData)
{
    std::vector<RECT> rects;
    if ((lpx && !IsIdentity(*lpx)) || !ReadRegionData(nCount, lpData, &rects))
    {
        SetLastError(ERROR_INVALID_PARAMETER);
        return nullptr;
    }
    return CQzGdiTable::Instance().AddRegion(QzPlatform::CQzRegion(rects));
}

BOOL PtInRegion(HRGN hrgn, int x, int y)
{
    const QzPlatform::CQzRegion* region = CQzGdiTable::Instance().FindRegion(hrgn);
    return region && region->Contains(x, y) ? TRUE : FALSE;
}

int GetRgnBox(HRGN hrgn, LPRECT lprc)
{
    const QzPlatform::CQzRegion* region = CQzGdiTable::Instance().FindRegion(hrgn);
    if (!region || !lprc)
        return ERROR;
    return region->Box(lprc);
}

int CombineRgn(HRGN hrgnDst, HRGN hrgnSrc1, HRGN hrgnSrc2, int iMode)
{
    CQzGdiTable& table = CQzGdiTable::Instance();
    QzPlatform::CQzRegion* target = table.FindRegion(hrgnDst);
    const QzPlatform::CQzRegion* first = table.FindRegion(hrgnSrc1);
    const QzPlatform::CQzRegion* other = iMode == RGN_COPY ? first : table.FindRegion(hrgnSrc2);
    if (!target || !first || !other || iMode < RGN_AND || iMode > RGN_COPY)
        return ERROR;
    *target = QzPlatform::CQzRegion::Combine(*first, *other, iMode);
    return target->Kind();
}
