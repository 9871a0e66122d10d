// A GUI scene whose data root holds an animation file with known images and an animation group,
// and a window class that writes down what reaches it and lets a test set the state that input
// would set.
#pragma once

#include "support/GuiScene.h"

#include "framework/QzBaseWindow.h"
#include "framework/QzGuiMgr.h"
#include "layout/QzGuiInfoMgr.h"
#include "platform/services/QzScreenAdapter.h"
#include "platform/services/QzWidgetKit.h"

#include <functional>
#include <string>
#include <vector>

namespace BaseWindowTest
{

using namespace QzGui;

using QzTest::Seen;

// Images of the animation file: a.png 10x10, b.png 12x12, c.png 14x14, f20.png 20x20, n0..n8
// 8x8 (the nine pieces) and mask.png, 4x2, opaque only in its left half.
const char* const kAniFile = "[Centre20]\nFrameAmount=1\nFrame0=img/f20.png\n"
                             "[Two]\nFrameAmount=2\nFrame0=img/a.png\nFrame1=img/b.png\n"
                             "[Three]\nFrameAmount=3\nFrame0=img/a.png\nFrame1=img/b.png\n"
                             "Frame2=img/c.png\n"
                             "[Nine]\nFrameAmount=9\nFrame0=img/n0.png\nFrame1=img/n1.png\n"
                             "Frame2=img/n2.png\nFrame3=img/n3.png\nFrame4=img/n4.png\n"
                             "Frame5=img/n5.png\nFrame6=img/n6.png\nFrame7=img/n7.png\n"
                             "Frame8=img/n8.png\n"
                             "[Hit_MSK]\nFrameAmount=2\nFrame0=img/mask.png\nKind0=2\n"
                             "Frame1=img/mask.png\nKind1=0\n";

const char* const kAniGroups = "[Grp]\nAmount=2\nSection_1=Two\nTop_1=5\nLeft_1=3\n"
                               "Section_2=Centre20\nTop_2=7\nLeft_2=9\n";

// A window of a chosen type that records its messages and its hooks' calls.
class TestWindow : public CQzBaseWindow
{
public:
    explicit TestWindow(int nType = QZ_WND_BUTTON, DWORD nId = 0) : m_nType(nType) { SetId(nId); }

    int GetWndType() override { return m_nType; }
    BOOL OnCreate() override { return createResult; }
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        seen.push_back({message, wParam, lParam});
        if (message == WM_TIMER && onTimer)
            onTimer(static_cast<DWORD>(wParam));
        return CQzBaseWindow::WindowProc(message, wParam, lParam);
    }
    BOOL OnShowing(int nCmdShow) override
    {
        showing.push_back(nCmdShow);
        return allowShow;
    }
    BOOL OnHiding(int nCmdShow) override
    {
        hiding.push_back(nCmdShow);
        return allowHide;
    }
    void OnMouseLeave() override { ++leaves; }

    // What input and the loader would set.
    void SetMouseIn(bool bIn) { m_bMouseIn = bIn; }
    HRGN GetRegion() const { return m_hRgn; }
    const std::string& GetCursorName() const { return m_strCursor; }
    IMyBitmap* GetBackBitmap() const { return m_pBackBitmap; }

    BOOL createResult = 1;
    BOOL allowShow = 1;
    BOOL allowHide = 1;
    int leaves = 0;
    std::vector<int> showing;
    std::vector<int> hiding;
    std::vector<Seen> seen;
    std::function<void(DWORD)> onTimer;

private:
    int m_nType;
};

class BaseWindowScene : public QzTest::GuiScene
{
protected:
    BaseWindowScene() : GuiScene({{"ani/Control.ani", kAniFile}, {"ini/AniGroup.ini", kAniGroups}})
    {
        QzTest::RecordingDevice& device = m_harness.Device();
        device.DefineTexture("img/a.png", 10, 10);
        device.DefineTexture("img/b.png", 12, 12);
        device.DefineTexture("img/c.png", 14, 14);
        device.DefineTexture("img/f20.png", 20, 20);
        for (int i = 0; i < 9; ++i)
            device.DefineTexture("img/n" + std::to_string(i) + ".png", 8, 8);
        device.DefineTexture("img/mask.png", {"##..", "##.."});
        device.DefineTexture("img/back.png", 64, 32);
        QzPlatform::GetWidgetKit().Clear();
        m_harness.Log().Clear();
    }

    // Replaces the layout file and reads it again.
    void Load(const std::string& layout)
    {
        m_root.Write("ini/Test.ini", layout);
        m_pMgr->GetInfoMgr()->ReloadLayout("Test.ini");
        m_harness.Log().Clear();
    }
    // A window created on the manager, as a child of pParent when given.
    void Create(TestWindow& window, CQzBaseWindow* pParent = nullptr)
    {
        window.SetParent(pParent);
        window.Create(m_pMgr);
    }
    std::vector<QzTest::DrawCall> Textures() { return Calls(QzTest::DrawKind::Texture); }
};

} // namespace BaseWindowTest
