// A picture with its back effect and caption and no look states. It draws no background until
// the host turns it on with SetShowBack(true).
#pragma once

#include "controls/QzCtrl.h"

namespace QzGui
{

class CQzImage : public CQzCtrl
{
public:
    CQzImage();
    CQzImage(const CQzImage&) = default;
    CQzImage& operator=(const CQzImage&) = default;

    ~CQzImage() override = default;
    void OnLButtonDown(UINT nFlags, POINT point) override;
    void OnLButtonUp(UINT /*nFlags*/, POINT /*point*/) override {}
    int GetWndType() override { return QZ_WND_IMAGE; }
    BOOL Show() override;
    WORD UpdateState() override { return m_wState; }

    // New virtual operation: drawn between the back effect and the caption.
    virtual BOOL OnShowImage() { return 1; }
};

} // namespace QzGui
