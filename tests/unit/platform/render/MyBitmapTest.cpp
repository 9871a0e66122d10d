// The render library's static functions: shapes, screen and font queries, text measuring on the
// null device, lead-byte tests, bitmap images, LogMsg and the matrix functions.
#include "platform/render/MyBitmap.h"
#include "platform/render/NullRenderDevice.h"
#include "platform/system/text/QzCodePageHost.h"
#include "support/GeometryPrint.h"
#include "support/LogCapture.h"
#include "support/RecordingDevice.h"
#include "support/TempDataDir.h"

#include <gtest/gtest.h>

#include <cmath>

namespace
{

using QzPlatform::CNullRenderDevice;
using QzPlatform::FontSpec;
using QzTest::RecordingDevice;

FontSpec Font(int size)
{
    FontSpec font;
    font.size = size;
    return font;
}

TEST(NullRenderDeviceTest, MeasuresOnAFixedCell)
{
    CNullRenderDevice device;
    EXPECT_EQ(device.MeasureText("abcd", Font(12)), (QzPlatform::SizeI{24, 12}));
    // CJK, Hangul and fullwidth forms are a whole cell wide; Latin-1 and Cyrillic half.
    EXPECT_EQ(device.MeasureText("\xE4\xBD\xA0\xEA\xB0\x80\xEF\xBC\xA1", Font(12)).cx, 36);
    EXPECT_EQ(device.MeasureText("\xC3\xA9\xD0\x96", Font(12)).cx, 12);
    EXPECT_EQ(device.MeasureText("\xF0\xA0\x80\x80", Font(12)).cx, 12);
    // Bytes that are not UTF-8 count as one narrow character each.
    EXPECT_EQ(device.MeasureText("\xFF\xC4", Font(12)).cx, 12);
    EXPECT_EQ(device.MeasureText("ab\ncdef\n", Font(10)), (QzPlatform::SizeI{20, 30}));
    EXPECT_EQ(device.MeasureText("", Font(12)), (QzPlatform::SizeI{0, 12}));
    EXPECT_EQ(device.MeasureText("abc", Font(13)).cx, 18);
    EXPECT_EQ(device.LoadTexture("ani/a.png"), 0u);
    EXPECT_EQ(device.GetScreenWidth(), 1024);
    EXPECT_EQ(device.GetScreenHeight(), 768);
}

TEST(MyBitmapTest, TextIsMeasuredInTheAnsiCodePageOnTheDefaultFont)
{
    ASSERT_EQ(&QzPlatform::GetRenderDevice(), &QzPlatform::GetNullRenderDevice());
    C3_SIZE size = CMyBitmap::CalcuTextExtent("abcd", nullptr, 0, nullptr, 0, nullptr);
    EXPECT_EQ(size, (C3_SIZE{24, 12}));
    // Two GBK characters: four bytes, two wide characters.
    size = CMyBitmap::CalcuTextExtent("\xC4\xE3\xBA\xC3");
    EXPECT_EQ(size.iWidth, 24);
    size = CMyBitmap::CalcuTextExtent(nullptr);
    EXPECT_EQ(size, (C3_SIZE{0, 0}));
    EXPECT_EQ(CMyBitmap::CalcuTextExtent("abcd", "Face", 20).iWidth, 40);
}

TEST(MyBitmapTest, FontDefaultsAndHostSettings)
{
    C3_SIZE cell = {0, 0};
    CMyBitmap::GetFontSize(cell);
    EXPECT_EQ(cell, (C3_SIZE{6, 12}));
    EXPECT_EQ(CMyBitmap::GetFontSize(), 12);
    EXPECT_EQ(CMyBitmap::GetFontWidth(nullptr, 12, nullptr), 6);
    EXPECT_STREQ(CMyBitmap::GetDefaultFontName(), "Sans");

    CMyBitmap::SetDefaultFontSize(16);
    CMyBitmap::SetDefaultFontName("WenQuanYi Micro Hei");
    CMyBitmap::GetFontSize(cell);
    EXPECT_EQ(cell, (C3_SIZE{8, 16}));
    EXPECT_EQ(CMyBitmap::GetFontWidth(nullptr, 0, nullptr), 8);
    EXPECT_STREQ(CMyBitmap::GetDefaultFontName(), "WenQuanYi Micro Hei");
    CMyBitmap::SetDefaultFontSize(0);
    CMyBitmap::SetDefaultFontName(nullptr);
    EXPECT_EQ(CMyBitmap::GetFontSize(), 12);
    EXPECT_STREQ(CMyBitmap::GetDefaultFontName(), "Sans");
}

TEST(MyBitmapTest, LeadBytesAreFoundByWalkingFromTheStart)
{
    // "a", "ni" (C4 E3), "hao" (BA C3), "b", then C4 C4 (a character whose second byte has a
    // lead byte's value) and a lone lead byte at the end.
    const char* text = "a\xC4\xE3\xBA\xC3"
                       "b\xC4\xC4\xC4";
    const bool expected[] = {false, true, false, true, false, false, true, false, false, false};
    for (int i = 0; i < 10; ++i)
        EXPECT_EQ(CMyBitmap::IsDBCSLeadByte(text, i), expected[i]) << i;
    EXPECT_FALSE(CMyBitmap::IsDBCSLeadByte(text, -1));
    EXPECT_FALSE(CMyBitmap::IsDBCSLeadByte(text, 100));
    EXPECT_FALSE(CMyBitmap::IsDBCSLeadByte(nullptr, 0));

#ifdef _WIN32
    GTEST_SKIP() << "a Windows process cannot switch its ANSI code page to UTF-8";
#endif
    ASSERT_TRUE(QzPlatform::SetAnsiCodePage(65001));
    EXPECT_FALSE(CMyBitmap::IsDBCSLeadByte("\xE4\xBD\xA0", 0));
    QzPlatform::SetAnsiCodePage(936);
}

TEST(MyBitmapTest, ShapesAndScreenSizeGoToTheDevice)
{
    RecordingDevice device;
    device.SetScreenSize(800, 600);
    EXPECT_EQ(CMyBitmap::GetScreenWidth(), 800);
    EXPECT_EQ(CMyBitmap::GetScreenHeight(), 600);
    CMyBitmap::ShowBlock(1, 2, 3, 4, 0x50000000);
    CMyBitmap::ShowRect(5, 6, 7, 8, 0xF0000000);
    CMyBitmap::ShowLine(9, 10, 11, 12, 0xFFFF0000);
    EXPECT_EQ(device.Trace(), "fill 1,2,3,4 #50000000\n"
                              "outline 5,6,7,8 #F0000000\n"
                              "line 9,10,11,12 #FFFF0000\n");
}

TEST(MyBitmapTest, BitmapImagesLoadThroughTheDevice)
{
    QzTest::TempDataDir root;
    QzTest::LogCapture log;
    RecordingDevice device;
    device.DefineTexture("Data\\Back.PNG", 40, 30);
    root.Write("data/back.png", "");

    IMyBitmap* pImage = MyBitmapCreate("data\\back.png");
    ASSERT_NE(pImage, nullptr);
    EXPECT_EQ(pImage->GetSize(), (C3_SIZE{40, 30}));
    EXPECT_TRUE(pImage->ShowImage(5, 6, 0, 100, 50, 128, 0, 0, 1.0f));
    EXPECT_TRUE(pImage->ShowImage(5, 6, 0, 0, 0, 255, 0, 0, 2.0f));
    EXPECT_EQ(device.Trace(),
              "texture Data\\Back.PNG src(0,0,40,30) at 5,6 size 100x50 alpha 128 scale 1\n"
              "texture Data\\Back.PNG src(0,0,40,30) at 5,6 size 40x30 alpha 255 scale 2\n");
    pImage->Release();
    EXPECT_TRUE(log.Empty());

    EXPECT_EQ(MyBitmapCreate("data/missing.png"), nullptr);
    ASSERT_EQ(log.Records().size(), 1u);
    EXPECT_EQ(log.Records()[0].message, "open file failed");
    EXPECT_EQ(log.Records()[0].Get("file_name"), "data/missing.png");
    EXPECT_EQ(MyBitmapCreate(nullptr), nullptr);
}

TEST(MyBitmapTest, LogMsgFormatsOneLine)
{
    QzTest::LogCapture log;
    LogMsg("ASSERT(m_bPreSetParam) in %d line of %s", 40, "QzSlider");
    LogMsg("%s", "");
    ASSERT_EQ(log.LogMsgs().size(), 2u);
    EXPECT_EQ(log.LogMsgs()[0], "ASSERT(m_bPreSetParam) in 40 line of QzSlider");
    EXPECT_EQ(log.LogMsgs()[1], "");
}

void ExpectMatrixNear(const D3DXMATRIX& actual, const D3DXMATRIX& expected)
{
    for (int row = 0; row < 4; ++row)
    {
        for (int column = 0; column < 4; ++column)
            EXPECT_NEAR(actual.m[row][column], expected.m[row][column], 1e-5f)
                << row << "," << column;
    }
}

TEST(D3DXMathTest, MultiplyAppliesTheLeftFactorFirstAndMayWriteIntoAFactor)
{
    D3DXMATRIX translation;
    D3DXMATRIX rotation;
    D3DXMatrixTranslation(&translation, 1.0f, 2.0f, 3.0f);
    D3DXMatrixRotationY(&rotation, 1.5707964f);
    D3DXMATRIX product;
    D3DXMatrixMultiply(&product, &translation, &rotation);
    // The point (0, 0, 0) moved to (1, 2, 3) and then turned about y: (3, 2, -1).
    EXPECT_NEAR(product._41, 3.0f, 1e-5f);
    EXPECT_NEAR(product._42, 2.0f, 1e-5f);
    EXPECT_NEAR(product._43, -1.0f, 1e-5f);

    D3DXMATRIX left = translation;
    EXPECT_EQ(D3DXMatrixMultiply(&left, &left, &rotation), &left);
    ExpectMatrixNear(left, product);
    D3DXMATRIX right = rotation;
    D3DXMatrixMultiply(&right, &translation, &right);
    ExpectMatrixNear(right, product);
    D3DXMATRIX square = rotation;
    D3DXMATRIX expectedSquare;
    D3DXMatrixRotationY(&expectedSquare, 2 * 1.5707964f);
    D3DXMatrixMultiply(&square, &square, &square);
    ExpectMatrixNear(square, expectedSquare);
}

TEST(D3DXMathTest, BuildersFillTheRowVectorLayout)
{
    D3DXMATRIX matrix;
    const float angle = 0.5235988f;
    D3DXMatrixRotationX(&matrix, angle);
    EXPECT_EQ(matrix._22, std::cos(angle));
    EXPECT_EQ(matrix._23, std::sin(angle));
    EXPECT_EQ(matrix._32, -std::sin(angle));
    EXPECT_EQ(matrix._44, 1.0f);
    D3DXMatrixRotationY(&matrix, angle);
    EXPECT_EQ(matrix._13, -std::sin(angle));
    EXPECT_EQ(matrix._31, std::sin(angle));
    D3DXMatrixScaling(&matrix, 2.0f, 3.0f, 4.0f);
    EXPECT_EQ(matrix.m[0][0], 2.0f);
    EXPECT_EQ(matrix.m[1][1], 3.0f);
    EXPECT_EQ(matrix.m[2][2], 4.0f);
    EXPECT_EQ(matrix.m[0][1], 0.0f);
    D3DXMatrixTranslation(&matrix, 5.0f, 6.0f, 7.0f);
    EXPECT_EQ(matrix.m[3][0], 5.0f);
    EXPECT_EQ(matrix.m[3][2], 7.0f);
    EXPECT_EQ(matrix.m[0][3], 0.0f);
}

} // namespace
