// A window of any library class whose message entries (SendMessage, WindowProc and the
// per-frame Show) report a call after the window's removal.
#pragma once

#include "CRemovalProbe.h"

#include <string>
#include <utility>

namespace QzMonkey
{

template <class TWindow> class CProbe : public TWindow, public CRemovalProbe
{
public:
    template <class... Args>
    explicit CProbe(std::string name, Args&&... args)
        : TWindow(std::forward<Args>(args)...), CRemovalProbe(this, std::move(name))
    {
    }

    LRESULT SendMessage(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        Enter("SendMessage", message);
        return TWindow::SendMessage(message, wParam, lParam);
    }
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        Enter("WindowProc", message);
        return TWindow::WindowProc(message, wParam, lParam);
    }
    BOOL Show() override
    {
        Enter("Show", 0);
        return TWindow::Show();
    }
};

} // namespace QzMonkey
