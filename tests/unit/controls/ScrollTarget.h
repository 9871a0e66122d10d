// The window that scroll buttons and sliders drive in the control tests: it records every
// message sent to it as (number, wParam, lParam).
#pragma once

#include "controls/QzStatic.h"

#include <tuple>
#include <vector>

namespace ControlTest
{

using Sent = std::tuple<UINT, WPARAM, LPARAM>;

struct ScrollTarget : QzGui::CQzStatic
{
    LRESULT SendMessage(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        got.emplace_back(message, wParam, lParam);
        return 1;
    }
    std::vector<Sent> got;
};

} // namespace ControlTest
