// The preview tool run in this process: its command line and exit status, the cases where it
// must not write a picture, a small bundle rendered to a PNG whose pixels are checked (the
// dialog's skin where the dialog is, each control's skin and sample content where its record
// puts it, and the clear colour elsewhere), and the watch loop's steps: one render after each
// change of the files a render reads, none for other files.
#include "../../../../tools/preview/PreviewTool.h"
#include "../../../../tools/preview/PreviewOptions.h"
#include "../../../../tools/preview/PreviewWatcher.h"

#include "CCairoDevice.h"
#include "support/LogCapture.h"
#include "support/TempDataDir.h"

#include <gtest/gtest.h>

#include <cairo.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

namespace
{

using QzPreview::CPreviewTool;

struct ToolResult
{
    int status = -1;
    std::string out;
    std::string err;
};

ToolResult RunTool(std::vector<std::string> args)
{
    args.insert(args.begin(), "qzgui-preview");
    std::vector<const char*> argv;
    for (const std::string& arg : args)
        argv.push_back(arg.c_str());
    ToolResult result;
    result.status =
        CPreviewTool::Run(static_cast<int>(argv.size()), argv.data(), result.out, result.err);
    return result;
}

// Opaque colours, as cairo keeps them (ARGB in a native 32-bit word).
constexpr uint32_t kRed = 0xFFFF0000;
constexpr uint32_t kGreen = 0xFF00FF00;
constexpr uint32_t kBlue = 0xFF0000FF;
constexpr uint32_t kYellow = 0xFFFFFF00;
constexpr uint32_t kWhite = 0xFFFFFFFF;
constexpr uint32_t kClear = QzPlatform::CCairoDevice::kDefaultClearColor;
constexpr uint32_t kSampleItem = 0xFFB0B8C8;
constexpr uint32_t kSamplePicture = 0xFF7090C0;

void WriteSolidPng(const std::string& path, uint32_t argb, int width = 10)
{
    cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, 10);
    cairo_t* cr = cairo_create(surface);
    cairo_set_source_rgb(cr, ((argb >> 16) & 0xFF) / 255.0, ((argb >> 8) & 0xFF) / 255.0,
                         (argb & 0xFF) / 255.0);
    cairo_paint(cr);
    cairo_destroy(cr);
    EXPECT_EQ(CAIRO_STATUS_SUCCESS, cairo_surface_write_to_png(surface, path.c_str()));
    cairo_surface_destroy(surface);
}

class Png
{
public:
    explicit Png(const std::string& path)
        : m_pSurface(cairo_image_surface_create_from_png(path.c_str()))
    {
    }
    ~Png() { cairo_surface_destroy(m_pSurface); }
    Png(const Png&) = delete;
    Png& operator=(const Png&) = delete;

    bool Ok() const { return cairo_surface_status(m_pSurface) == CAIRO_STATUS_SUCCESS; }
    int Width() const { return cairo_image_surface_get_width(m_pSurface); }
    int Height() const { return cairo_image_surface_get_height(m_pSurface); }
    // Pixels of the rectangle (right and bottom outside) that are not of the colour.
    int CountOther(int left, int top, int right, int bottom, uint32_t color) const
    {
        int count = 0;
        for (int y = top; y < bottom; ++y)
        {
            for (int x = left; x < right; ++x)
                count += At(x, y) != color ? 1 : 0;
        }
        return count;
    }
    uint32_t At(int x, int y) const
    {
        uint32_t pixel = 0;
        std::memcpy(&pixel,
                    cairo_image_surface_get_data(m_pSurface) +
                        y * cairo_image_surface_get_stride(m_pSurface) + x * 4,
                    sizeof pixel);
        return pixel;
    }

private:
    cairo_surface_t* m_pSurface;
};

// A bundle with dialog 10 at (100, 50), 200 x 120, skinned red, that would fly in from the
// left; its controls, each skinned in a colour of its own; a second dialog whose control must
// not appear; a control section without a size; and section names that are not ids.
class PreviewToolTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        data.Write("ani/Control.ani", "[Red]\nFrameAmount=1\nFrame0=images/red.png\n"
                                      "[Green]\nFrameAmount=1\nFrame0=images/green.png\n"
                                      "[Bar]\nFrameAmount=2\nFrame0=images/blue.png\n"
                                      "Frame1=images/trough.png\n"
                                      "[Yellow]\nFrameAmount=1\nFrame0=images/yellow.png\n"
                                      "[White]\nFrameAmount=1\nFrame0=images/white.png\n");
        data.MakeFolder("images");
        WriteSolidPng(data.Folder() + "/images/red.png", kRed);
        WriteSolidPng(data.Folder() + "/images/green.png", kGreen);
        // A bar's fill is a part of its frame, not stretched: the frames are as wide as the bar.
        WriteSolidPng(data.Folder() + "/images/blue.png", kBlue, 80);
        WriteSolidPng(data.Folder() + "/images/trough.png", kWhite, 80);
        WriteSolidPng(data.Folder() + "/images/yellow.png", kYellow);
        WriteSolidPng(data.Folder() + "/images/white.png", kWhite);
        data.Write("ini/Test.ini",
                   "[0-10]\nx=100\ny=50\nw=200\nh=120\nAniSection=Red\nBackShowMode=2\nFlyDir=1\n"
                   "; a button, a bar at half, a list, a slider at half, a grid variant\n"
                   "[10-1]\ntype=2\nx=10\ny=10\nw=30\nh=20\nAniSection=Green\nBackShowMode=2\n"
                   "[10-2]\ntype=8\nx=10\ny=40\nw=80\nh=10\nAniSection=Bar\nProgressStyle=1\n"
                   "[10-3]\ntype=7\nx=120\ny=10\nw=30\nh=30\nAniSection=Yellow\nBackShowMode=2\n"
                   "[10-4]\ntype=15\nx=10\ny=70\nw=60\nh=10\nAniSection=White\nSliderBtnLen=10\n"
                   "[10-5]\ntype=2\nx=0\ny=0\nw=10\n"
                   "[10-6]\ntype=22\nx=160\ny=60\nw=36\nh=36\n"
                   "; an image, an edit box and a marquee without titles\n"
                   "[10-7]\ntype=4\nx=160\ny=10\nw=36\nh=40\nAniSection=Green\nBackShowMode=2\n"
                   "[10-8]\ntype=3\nx=10\ny=88\nw=80\nh=16\n"
                   "[10-9]\ntype=5\nx=100\ny=88\nw=56\nh=16\nWHLMoveRate=30\n"
                   "[abc]\n[10-x]\nw=1\nh=1\n"
                   "[0-20]\nx=0\ny=0\nw=50\nh=50\n"
                   "[20-1]\ntype=2\nx=150\ny=80\nw=20\nh=20\nAniSection=Green\nBackShowMode=2\n");
    }

    std::string OutPath() const { return data.Folder() + "/out.png"; }

    QzTest::LogCapture log;
    QzTest::TempDataDir data;
};

TEST_F(PreviewToolTest, DialogAndControlsAreDrawnWhereTheirRecordsPutThem)
{
    const ToolResult result =
        RunTool({"--size", "400x300", "--frames", "3", data.Folder(), "Test.ini", "10", "out.png"});
    ASSERT_EQ(result.status, 0) << result.err;
    EXPECT_NE(result.out.find("dialog 10 with 8 controls"), std::string::npos) << result.out;

    const Png png(OutPath());
    ASSERT_TRUE(png.Ok());
    ASSERT_EQ(png.Width(), 400);
    ASSERT_EQ(png.Height(), 300);
    // Outside the dialog, and inside it where no control is.
    EXPECT_EQ(png.At(50, 40), kClear);
    EXPECT_EQ(png.At(350, 200), kClear);
    EXPECT_EQ(png.At(102, 52), kRed);
    EXPECT_EQ(png.At(297, 167), kRed);
    // The button; the list's skin, 17 pixels narrower than its record (its scroll bar's strip).
    EXPECT_EQ(png.At(125, 70), kGreen);
    EXPECT_EQ(png.At(225, 85), kYellow);
    EXPECT_EQ(png.At(240, 85), kRed);
    // The grid's one cell holds a sample item.
    EXPECT_EQ(png.At(270, 120), kSampleItem);
    // The bar is filled over 40 of its 80 pixels, on its back layer.
    EXPECT_EQ(png.At(112, 95), kBlue);
    EXPECT_EQ(png.At(148, 95), kBlue);
    EXPECT_EQ(png.At(155, 95), kWhite);
    EXPECT_EQ(png.At(195, 95), kRed);
    // The slider draws only its thumb, 25 pixels along its 50-pixel track.
    EXPECT_EQ(png.At(140, 125), kWhite);
    EXPECT_EQ(png.At(115, 125), kRed);
    // Dialog 20's control would lie at (250, 130) inside dialog 10.
    EXPECT_EQ(png.At(260, 140), kRed);
    // The image's sample picture covers the middle half of its skin.
    EXPECT_EQ(png.At(278, 80), kSamplePicture);
    EXPECT_EQ(png.At(262, 62), kGreen);
    // The edit box's sample text and the marquee's news, already in view.
    EXPECT_GT(png.CountOther(110, 138, 190, 154, kRed), 20);
    EXPECT_GT(png.CountOther(200, 138, 256, 154, kRed), 20);
}

// The loop's steps at made-up times: a change waits for 100 quiet milliseconds, then renders
// once; files a render does not read change nothing, nor does the picture written among them.
TEST_F(PreviewToolTest, WatchRendersOnceAfterEachChange)
{
    const char* argv[] = {"qzgui-preview", "--watch", "b", "Test.ini", "10", "o.png"};
    QzPreview::PreviewOptions options;
    std::string error;
    ASSERT_TRUE(QzPreview::PreviewOptions::Parse(6, argv, options, error)) << error;
    ASSERT_TRUE(options.bWatch);
    options.strBundleDir = data.Folder();
    const std::string outPath = data.Folder() + "/images/out.png";
    QzPreview::CPreviewWatcher watcher;
    ASSERT_TRUE(watcher.Open(error)) << error;
    watcher.WatchBundle(data.Folder(), outPath);
    data.MakeFolder("scripts");

    struct Change
    {
        const char* file;
        bool bRenders;
    };
    const Change changes[] = {
        {"ini/Test.ini", true},       {"ani/Control.ani", true},    {"images/green.png", true},
        {"ini/New.ini", true},        {"ini/.Test.ini.swp", false}, {"ini/Test.ini~", false},
        {"scripts/login.txt", false}, {"notes.txt", false},
    };
    uint64_t now = 1000;
    std::string out;
    std::string err;
    const auto step = [&](uint64_t at)
    {
        return QzPreview::CPreviewTool::RunWatchStep(
            watcher, options, data.Folder(), outPath, at, [&](const std::string& t) { out += t; },
            [&](const std::string& t) { err += t; });
    };
    for (const Change& change : changes)
    {
        const std::string before = data.Read(change.file);
        // A burst: the file written twice.
        data.Write(change.file, before + "\n");
        EXPECT_FALSE(step(now)) << change.file;
        data.Write(change.file, before);
        EXPECT_FALSE(step(now + 50)) << change.file;
        EXPECT_FALSE(step(now + 50 + QzPreview::CPreviewWatcher::kQuietMs - 1)) << change.file;
        EXPECT_EQ(step(now + 50 + QzPreview::CPreviewWatcher::kQuietMs), change.bRenders)
            << change.file;
        // What the render wrote (the picture into a watched folder) and what the library
        // opened for writing (the layout file, as a record is missing) is no change.
        EXPECT_FALSE(step(now + 1000)) << change.file;
        EXPECT_FALSE(step(now + 1000 + QzPreview::CPreviewWatcher::kQuietMs)) << change.file;
        now += 2000;
    }
    EXPECT_EQ(std::count(out.begin(), out.end(), '\n'), 4) << out;
    EXPECT_EQ(err, "");
    EXPECT_TRUE(data.Exists("images/out.png"));
}

TEST_F(PreviewToolTest, MissingBundleLayoutOrDialogFailsWithOneLineAndNoPicture)
{
    data.Write("ini/NoSize.ini", "[0-10]\nx=1\ny=1\nw=50\n");
    const std::vector<std::vector<std::string>> cases = {
        {data.Folder() + "/missing", "Test.ini", "10", OutPath()},
        {data.Folder(), "Missing.ini", "10", OutPath()},
        // Dialog 11 has no section.
        {data.Folder(), "Test.ini", "11", OutPath()},
        {data.Folder(), "NoSize.ini", "10", OutPath()},
    };
    for (const auto& args : cases)
    {
        const ToolResult result = RunTool(args);
        EXPECT_EQ(result.status, 1) << args[1] << " " << args[2];
        EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1) << result.err;
        EXPECT_EQ(result.err.rfind("qzgui-preview: ", 0), 0u) << result.err;
        EXPECT_FALSE(data.Exists("out.png")) << args[1] << " " << args[2];
    }
}

TEST_F(PreviewToolTest, UnwritablePictureFails)
{
    const ToolResult result = RunTool({data.Folder(), "Test.ini", "10", "no/such/folder/x.png"});
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.err.find("cannot write"), std::string::npos) << result.err;
}

TEST(PreviewCommandLineTest, WrongCommandLinesExitWithUsage)
{
    const std::vector<std::vector<std::string>> cases = {
        {},
        {"b", "L.ini", "10"},
        {"b", "L.ini", "10", "o.png", "extra"},
        {"--size", "0x10", "b", "L.ini", "10", "o.png"},
        {"--size", "10x", "b", "L.ini", "10", "o.png"},
        {"--size", "8193x10", "b", "L.ini", "10", "o.png"},
        {"--size", "-5x10", "b", "L.ini", "10", "o.png"},
        {"--frames", "0", "b", "L.ini", "10", "o.png"},
        {"--frames", "1001", "b", "L.ini", "10", "o.png"},
        {"--frames", "2x", "b", "L.ini", "10", "o.png"},
        {"b", "L.ini", "10", "o.png", "--frames"},
        {"b", "L.ini", "0", "o.png"},
        {"b", "L.ini", "65536", "o.png"},
        {"b", "L.ini", "ten", "o.png"},
        {"--scale", "2", "b", "L.ini", "10", "o.png"},
    };
    for (const auto& args : cases)
    {
        const ToolResult result = RunTool(args);
        std::string line;
        for (const std::string& arg : args)
            line += arg + " ";
        EXPECT_EQ(result.status, 2) << line;
        EXPECT_NE(result.err.find("usage: qzgui-preview"), std::string::npos) << line;
    }
}

} // namespace
