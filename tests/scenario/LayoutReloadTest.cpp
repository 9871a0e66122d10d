// The demo's client with every window live, its layout reloaded over and over the ways a designer
// and a game reload it: the records that reloads replace are freed, so memory stays flat.
#include "DemoHost.h"
#include "ScopedCurrentDir.h"

#include "framework/IQzGuiMgr.h"
#include "layout/QzGuiWndInfo.h"

#include <gtest/gtest.h>

namespace
{

using QzGui::CQzGuiWndInfo;

TEST(LayoutReload, AThousandReloadsWithEveryWindowLiveKeepTheLiveRecordsFlat)
{
    ScopedCurrentDir bundle(QZGUI_BINARY_DIR "/demo-bundle");
    CDemoHost host(1024, 768);
    ASSERT_TRUE(host.Create(false));
    QzGui::IQzGuiMgr* pMgr = host.GetGuiMgr();
    host.RunFrame();
    pMgr->ReloadLayout();
    host.RunFrame();
    const size_t nLive = CQzGuiWndInfo::GetLiveCount();
    ASSERT_GT(nLive, 20u);

    for (int i = 0; i < 1000; ++i)
    {
        if (i % 3 == 0)
            pMgr->ReloadLayout();
        else if (i % 3 == 1)
            pMgr->LoadLayout("DemoLayout.ini");
        else
            pMgr->ReloadDialog(i % 2 ? CControlsDialog::kId : CShowcaseDialog::kId);
        host.RunFrame();
    }
    pMgr->ReloadLayout();
    host.RunFrame();
    EXPECT_EQ(nLive, CQzGuiWndInfo::GetLiveCount());
}

} // namespace
