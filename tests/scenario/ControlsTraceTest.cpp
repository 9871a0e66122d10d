// The demo's controls window run in-process through the demo's own controls script, on the
// recording device: text is laid out on a fixed cell there, so the draw calls do not depend on
// the machine's fonts. The calls of every shot are compared with expected/controls.trace.
// After a deliberate change of the drawing, run with QZGUI_UPDATE_TRACES=1 to write the file
// anew, and review its diff like code.
#include "ControlsDialog.h"
#include "DemoScript.h"
#include "PanelCaption.h"
#include "ScopedCurrentDir.h"

#include "support/ImageComparePng.h"
#include "support/QzHarness.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

namespace
{

namespace fs = std::filesystem;

const char* const kExpected = QZGUI_SOURCE_DIR "/tests/scenario/expected/controls.trace";

// Every image of the bundle, at its size, so that sprites reach the device.
void DefineBundleImages(QzTest::RecordingDevice& device)
{
    for (const fs::directory_entry& entry : fs::directory_iterator("images"))
    {
        QzTest::Image image;
        if (entry.path().extension() == ".png" && QzTest::ReadPng(entry.path().string(), image))
            device.DefineTexture("images/" + entry.path().filename().string(), image.width,
                                 image.height);
    }
}

std::string ReadFile(const char* path)
{
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

class ControlsRun
{
public:
    ControlsRun() : m_caption(nullptr, CControlsDialog::kPanelId)
    {
        DefineBundleImages(m_harness.Device());
        m_pMgr = QzGui::CreateGuiMgr();
        m_pMgr->Init(GetModuleHandleA(nullptr), m_harness.MainWindow(), CControlsDialog::kId,
                     "DemoLayout.ini");
        m_harness.SetMessageHandler([this](UINT message, WPARAM wParam, LPARAM lParam)
                                    { return m_pMgr->OnMessage(message, wParam, lParam); });
        m_pMgr->AddDialog(&m_dialog, nullptr, false);
        m_dialog.ShowWindow(SW_SHOW);
        m_caption = CPanelCaption(m_pMgr, CControlsDialog::kPanelId);
        m_pMgr->SetDrawHook(&m_caption, CControlsDialog::kPanelId);
    }
    ~ControlsRun()
    {
        m_harness.SetMessageHandler(nullptr);
        m_pMgr->RemoveDialog(&m_dialog);
        m_pMgr->Release();
    }
    ControlsRun(const ControlsRun&) = delete;
    ControlsRun& operator=(const ControlsRun&) = delete;

    // The steps of the script as a host passes them on; every shot adds its frame's calls.
    std::string Run(const CDemoScript& script)
    {
        Frame();
        std::string trace;
        for (const DemoStep& step : script.Steps())
            trace += RunStep(step);
        return trace;
    }

private:
    void Frame()
    {
        m_harness.Frame([this] { m_pMgr->Show(); });
    }
    std::string RunStep(const DemoStep& step)
    {
        switch (step.kind)
        {
        case DemoStep::Frame:
            for (int i = 0; i < step.value; ++i)
                Frame();
            break;
        case DemoStep::Wait:
            for (int waited = 0; waited < step.value; waited += QzTest::Harness::kFrameMs)
                Frame();
            break;
        case DemoStep::Move:
            m_harness.MouseMove(step.x, step.y);
            break;
        case DemoStep::Down:
            m_harness.LButtonDown(step.x, step.y);
            break;
        case DemoStep::Up:
            m_harness.LButtonUp(step.x, step.y);
            break;
        case DemoStep::Click:
            m_harness.Click(step.x, step.y);
            break;
        case DemoStep::Shot:
            m_harness.Device().Clear();
            Frame();
            return "== " + step.text + "\n" + m_harness.Device().Trace();
        default:
            ADD_FAILURE() << "the controls script uses a step this test does not replay";
            break;
        }
        return "";
    }

    QzTest::Harness m_harness;
    QzGui::IQzGuiMgr* m_pMgr = nullptr;
    CControlsDialog m_dialog;
    CPanelCaption m_caption;
};

} // namespace

TEST(DemoControlsTrace, ScriptDrawsTheRecordedCalls)
{
    ScopedCurrentDir bundle(QZGUI_BINARY_DIR "/demo-bundle");
    CDemoScript script;
    std::string error;
    ASSERT_TRUE(script.Load("scripts/controls.txt", error)) << error;
    ControlsRun run;
    const std::string trace = run.Run(script);

    if (std::getenv("QZGUI_UPDATE_TRACES"))
        std::ofstream(kExpected, std::ios::binary) << trace;
    const std::string expected = ReadFile(kExpected);
    ASSERT_FALSE(expected.empty()) << kExpected << " is missing";
    // Line by line, so that a failure names the first call that differs.
    std::istringstream got(trace);
    std::istringstream want(expected);
    std::string gotLine;
    std::string wantLine;
    int line = 0;
    while (std::getline(want, wantLine))
    {
        ++line;
        ASSERT_TRUE(std::getline(got, gotLine)) << "the trace ends before line " << line;
        ASSERT_EQ(wantLine, gotLine) << "line " << line << " of " << kExpected;
    }
    EXPECT_FALSE(std::getline(got, gotLine)) << "the trace goes on after line " << line;
}
