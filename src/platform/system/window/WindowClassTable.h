// Registered window classes: the application's own (RegisterClass) and the built-in classes of
// the hosted system, which other platform units add once (RegisterSystemClass) and which
// survive a reset. Names compare without regard to the case of ASCII letters.
#pragma once

#include "platform/system/QzWinUser.h"
#include "platform/system/window/WindowProcRef.h"

#include <string>
#include <vector>

namespace QzPlatform
{

struct HostedWindowClass
{
    std::wstring name;
    ATOM atom = 0;
    WindowProcRef proc;
    UINT style = 0;
    int windowExtraBytes = 0;
    HINSTANCE instance = nullptr;
    HCURSOR cursor = nullptr;
    bool system = false;
};

class CWindowClassTable
{
public:
    // The class's atom; 0 when a class of that name exists (the caller reports it).
    ATOM Register(HostedWindowClass windowClass);
    // A built-in class with a procedure of each kind (either may be null, not both); 0 when the
    // name is taken.
    ATOM RegisterSystemClass(const wchar_t* name, WNDPROC ansiProc, WNDPROC wideProc,
                             int windowExtraBytes);
    const HostedWindowClass* Find(const std::wstring& name) const;
    const HostedWindowClass* FindAtom(ATOM atom) const;
    // False when there is no such application class.
    bool Unregister(const std::wstring& name);
    void ClearApplicationClasses();

private:
    ATOM FreeAtom() const;

    std::vector<HostedWindowClass> m_vecClasses;
    ATOM m_wNextAtom = 0xC000;
};

} // namespace QzPlatform
