// A plain caption: everything is the control base's; the dialog lets clicks fall through it.
#pragma once

#include "controls/QzCtrl.h"

namespace QzGui
{

class CQzStatic : public CQzCtrl
{
public:
    CQzStatic() = default;
    CQzStatic(const CQzStatic&) = default;
    CQzStatic& operator=(const CQzStatic&) = default;

    ~CQzStatic() override;
    int GetWndType() override { return QZ_WND_STATIC; }
};

} // namespace QzGui
