// The library's side: the same screen as one layout file of dialogs and controls, created once;
// each frame the host updates the labels and bars, passes one mouse move and shows the screen
// on the given device.
#pragma once

#include "PeerScreen.h"

#include "platform/render/IRenderDevice.h"
#include "platform/system/QzSystem.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace QzGui
{
class CQzBaseWindow;
class CQzDialog;
class CQzGuiMgr;
class CQzProgress;
class CQzStatic;
} // namespace QzGui

namespace PeerBench
{

class QzGuiSide : public IPeerSide
{
public:
    // The device draws; `counts` says how many vertices, indices and commands its last frame
    // drew.
    struct Tally
    {
        long vertices = 0;
        long indices = 0;
        long commands = 0;
    };
    using Counts = std::function<Tally()>;
    QzGuiSide(int windows, QzPlatform::IRenderDevice& device, Counts counts);
    ~QzGuiSide() override;
    QzGuiSide(const QzGuiSide&) = delete;
    QzGuiSide& operator=(const QzGuiSide&) = delete;

    void Frame(int frame) override;
    long Vertices() const override { return m_counts().vertices; }
    long Indices() const override { return m_counts().indices; }
    long Commands() const override { return m_counts().commands; }

    // The layout file of the screen (ini/ of the current folder): dialog d is [0-d].
    static std::string LayoutText(int windows);
    static constexpr int kWindowWidth = kColumns * kColumnWidth + 16;
    static constexpr int kRowHeight = 23;
    static constexpr int kTitleHeight = 24;
    static constexpr int kWindowHeight =
        kTitleHeight + (kControlsPerWindow / kColumns) * kRowHeight + 12;

private:
    void AddWindow(int w);
    std::unique_ptr<QzGui::CQzBaseWindow> MakeControl(int index);

    QzPlatform::IRenderDevice& m_device;
    Counts m_counts;
    HWND m_hWnd = nullptr;
    QzGui::CQzGuiMgr* m_pMgr = nullptr;
    std::vector<std::unique_ptr<QzGui::CQzBaseWindow>> m_controls;
    std::vector<std::unique_ptr<QzGui::CQzDialog>> m_dialogs;
    std::vector<QzGui::CQzStatic*> m_labels;
    std::vector<QzGui::CQzProgress*> m_bars;
};

} // namespace PeerBench
