// Fonts and regions: region data as a file gives it, malformed headers, point tests at edges.
#include "KernelFolderTest.h"
#include "SlotReuse.h"

#include "platform/system/QzWinKernel.h"
#include "support/GeometryPrint.h"

#include <cstring>
#include <vector>

namespace
{

using GdiTest = KernelFolderTest;

// Region data as it lies in a file: header, then the rectangles, at any alignment.
std::vector<char> RegionData(const std::vector<RECT>& rects, DWORD count, DWORD size = 32,
                             DWORD type = RDH_RECTANGLES)
{
    std::vector<char> bytes(1 + sizeof(RGNDATAHEADER) + rects.size() * sizeof(RECT));
    RGNDATAHEADER header = {};
    header.dwSize = size;
    header.iType = type;
    header.nCount = count;
    std::memcpy(bytes.data() + 1, &header, sizeof(header));
    if (!rects.empty())
        std::memcpy(bytes.data() + 1 + sizeof(header), rects.data(), rects.size() * sizeof(RECT));
    return bytes;
}

HRGN Create(const std::vector<char>& bytes, DWORD byteCount, const XFORM* form = nullptr)
{
    return ExtCreateRegion(form, byteCount, reinterpret_cast<const RGNDATA*>(bytes.data() + 1));
}

DWORD FullSize(const std::vector<char>& bytes)
{
    return static_cast<DWORD>(bytes.size() - 1);
}

TEST_F(GdiTest, RegionFromDataHoldsThePointsOfItsRectangles)
{
    const auto bytes = RegionData({RECT{0, 0, 10, 5}, RECT{20, 0, 30, 5}}, 2);
    HRGN region = Create(bytes, FullSize(bytes));
    ASSERT_NE(nullptr, region);
    EXPECT_TRUE(PtInRegion(region, 0, 0));
    EXPECT_TRUE(PtInRegion(region, 9, 4));
    EXPECT_FALSE(PtInRegion(region, 10, 0)); // right edge is outside
    EXPECT_FALSE(PtInRegion(region, 0, 5));  // bottom edge is outside
    EXPECT_FALSE(PtInRegion(region, 15, 2));
    EXPECT_TRUE(PtInRegion(region, 20, 2));
    EXPECT_FALSE(PtInRegion(region, -1, 0));
    RECT box;
    EXPECT_EQ(COMPLEXREGION, GetRgnBox(region, &box));
    EXPECT_EQ((RECT{0, 0, 30, 5}), box);
    EXPECT_EQ(2u, QzPlatform::GetRegionRects(region).size());
    EXPECT_TRUE(DeleteObject(region));
    EXPECT_FALSE(PtInRegion(region, 0, 0));
    EXPECT_FALSE(DeleteObject(region));
    EXPECT_EQ(ERROR, GetRgnBox(region, &box));
}

TEST_F(GdiTest, MalformedRegionDataIsRejected)
{
    const auto good = RegionData({RECT{0, 0, 1, 1}, RECT{1, 1, 2, 2}}, 2);
    EXPECT_NE(nullptr, Create(good, FullSize(good)));

    SetLastError(0);
    EXPECT_EQ(nullptr, Create(good, FullSize(good) - 1)); // the last rectangle is cut
    EXPECT_EQ(static_cast<DWORD>(ERROR_INVALID_PARAMETER), GetLastError());
    EXPECT_EQ(nullptr, Create(good, 31));
    EXPECT_EQ(nullptr, ExtCreateRegion(nullptr, 64, nullptr));
    const auto tooMany = RegionData({RECT{0, 0, 1, 1}}, 0x10000001);
    EXPECT_EQ(nullptr, Create(tooMany, FullSize(tooMany)));
    const auto badSize = RegionData({RECT{0, 0, 1, 1}}, 1, 28);
    EXPECT_EQ(nullptr, Create(badSize, FullSize(badSize)));
    const auto badType = RegionData({RECT{0, 0, 1, 1}}, 1, 32, 2);
    EXPECT_EQ(nullptr, Create(badType, FullSize(badType)));

    XFORM identity = {1, 0, 0, 1, 0, 0};
    EXPECT_NE(nullptr, Create(good, FullSize(good), &identity));
    XFORM moved = {1, 0, 0, 1, 5, 0};
    EXPECT_EQ(nullptr, Create(good, FullSize(good), &moved));

    // No rectangles is an empty region; extra bytes after the rectangles do no harm.
    const auto none = RegionData({}, 0);
    HRGN empty = Create(none, FullSize(none));
    RECT box;
    EXPECT_EQ(NULLREGION, GetRgnBox(empty, &box));
    const auto spare = RegionData({RECT{0, 0, 1, 1}, RECT{5, 5, 6, 6}}, 1);
    HRGN first = Create(spare, FullSize(spare));
    EXPECT_TRUE(PtInRegion(first, 0, 0));
    EXPECT_FALSE(PtInRegion(first, 5, 5));
}

TEST_F(GdiTest, RectangleRegionsAndCombinations)
{
    HRGN a = CreateRectRgn(10, 10, 0, 0); // corners in any order
    RECT box;
    EXPECT_EQ(SIMPLEREGION, GetRgnBox(a, &box));
    EXPECT_EQ((RECT{0, 0, 10, 10}), box);
    HRGN b = CreateRectRgn(5, 5, 15, 15);
    HRGN result = CreateRectRgn(0, 0, 0, 0);
    EXPECT_EQ(NULLREGION, GetRgnBox(result, &box));

    EXPECT_NE(ERROR, CombineRgn(result, a, b, RGN_AND));
    EXPECT_TRUE(PtInRegion(result, 5, 5));
    EXPECT_FALSE(PtInRegion(result, 4, 5));
    EXPECT_FALSE(PtInRegion(result, 10, 9));

    EXPECT_NE(ERROR, CombineRgn(result, a, b, RGN_DIFF));
    EXPECT_TRUE(PtInRegion(result, 4, 9));
    EXPECT_FALSE(PtInRegion(result, 5, 5));
    EXPECT_TRUE(PtInRegion(result, 9, 4));

    EXPECT_NE(ERROR, CombineRgn(result, a, b, RGN_XOR));
    EXPECT_TRUE(PtInRegion(result, 0, 0));
    EXPECT_TRUE(PtInRegion(result, 14, 14));
    EXPECT_FALSE(PtInRegion(result, 7, 7));

    EXPECT_NE(ERROR, CombineRgn(a, a, b, RGN_OR)); // the target may be a source
    EXPECT_TRUE(PtInRegion(a, 0, 0));
    EXPECT_TRUE(PtInRegion(a, 14, 14));
    EXPECT_FALSE(PtInRegion(a, 14, 0));
    EXPECT_EQ(ERROR, CombineRgn(result, a, nullptr, RGN_OR));
    EXPECT_EQ(ERROR, CombineRgn(result, a, b, 9));
    EXPECT_EQ(SIMPLEREGION, CombineRgn(result, b, nullptr, RGN_COPY));
}

TEST_F(GdiTest, FontsRecordTheirDescriptionUntilDeleted)
{
    HFONT font = CreateFontA(-12, 0, 0, 0, FW_BOLD, TRUE, FALSE, FALSE, GB2312_CHARSET,
                             OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY,
                             DEFAULT_PITCH | FF_DONTCARE, "\xCB\xCE\xCC\xE5");
    ASSERT_NE(nullptr, font);
    QzPlatform::FontDescription description;
    ASSERT_TRUE(QzPlatform::GetFontDescription(font, &description));
    EXPECT_EQ("\xCB\xCE\xCC\xE5", description.faceName);
    EXPECT_EQ(-12, description.height);
    EXPECT_EQ(FW_BOLD, description.weight);
    EXPECT_TRUE(description.italic);
    EXPECT_EQ(static_cast<DWORD>(GB2312_CHARSET), description.charSet);
    HFONT other = CreateFontA(16, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, nullptr);
    EXPECT_NE(font, other);
    EXPECT_TRUE(DeleteObject(font));
    EXPECT_FALSE(QzPlatform::GetFontDescription(font, &description));
    EXPECT_FALSE(DeleteObject(font));
    EXPECT_FALSE(DeleteObject(nullptr));
    EXPECT_TRUE(DeleteObject(other));
}

TEST_F(GdiTest, DeletedObjectsStayInvalidWhenANewObjectTakesTheirSlot)
{
    const auto makeFont = [] { return CreateFontA(12, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, "A"); };
    const auto deleteObject = [](HGDIOBJ object) { return DeleteObject(object); };
    const HFONT font = makeFont();
    ASSERT_TRUE(DeleteObject(font));
    const HFONT newFont = NewInSlotOf(font, makeFont, deleteObject);
    ASSERT_NE(nullptr, newFont);
    QzPlatform::FontDescription description;
    EXPECT_FALSE(QzPlatform::GetFontDescription(font, &description));
    EXPECT_FALSE(DeleteObject(font));
    EXPECT_TRUE(QzPlatform::GetFontDescription(newFont, &description));

    const auto makeRegion = [] { return CreateRectRgn(0, 0, 10, 10); };
    const HRGN region = makeRegion();
    ASSERT_TRUE(DeleteObject(region));
    const HRGN newRegion = NewInSlotOf(region, makeRegion, deleteObject);
    ASSERT_NE(nullptr, newRegion);
    EXPECT_FALSE(PtInRegion(region, 1, 1));
    EXPECT_EQ(ERROR, CombineRgn(region, newRegion, nullptr, RGN_COPY));
    EXPECT_FALSE(DeleteObject(region));
    EXPECT_TRUE(PtInRegion(newRegion, 1, 1));

    // A handle of one kind names nothing of the other.
    EXPECT_FALSE(PtInRegion(reinterpret_cast<HRGN>(newFont), 1, 1));
    EXPECT_FALSE(QzPlatform::GetFontDescription(reinterpret_cast<HFONT>(newRegion), &description));
}

} // namespace
