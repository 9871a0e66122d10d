#include "platform/system/window/WindowClassTable.h"

#include <algorithm>

namespace QzPlatform
{

namespace
{

constexpr unsigned kFirstAtom = 0xC000;
constexpr unsigned kAtomCount = 0x3FFF;

wchar_t FoldAscii(wchar_t c)
{
    return (c >= L'A' && c <= L'Z') ? static_cast<wchar_t>(c - L'A' + L'a') : c;
}

bool SameName(const std::wstring& a, const std::wstring& b)
{
    return a.size() == b.size() &&
           std::equal(a.begin(), a.end(), b.begin(),
                      [](wchar_t x, wchar_t y) { return FoldAscii(x) == FoldAscii(y); });
}

} // namespace

ATOM CWindowClassTable::Register(HostedWindowClass windowClass)
{
    const ATOM atom = FreeAtom();
    if (Find(windowClass.name) || atom == 0)
        return 0;
    windowClass.atom = atom;
    m_wNextAtom = static_cast<ATOM>(atom + 1);
    m_vecClasses.push_back(std::move(windowClass));
    return m_vecClasses.back().atom;
}

ATOM CWindowClassTable::RegisterSystemClass(const wchar_t* name, WNDPROC ansiProc, WNDPROC wideProc,
                                            int windowExtraBytes)
{
    if (!name || (!ansiProc && !wideProc))
        return 0;
    HostedWindowClass windowClass;
    windowClass.name = name;
    windowClass.proc.pfnAnsi = ansiProc;
    windowClass.proc.pfnWide = wideProc;
    windowClass.windowExtraBytes = std::max(windowExtraBytes, 0);
    windowClass.system = true;
    return Register(std::move(windowClass));
}

const HostedWindowClass* CWindowClassTable::Find(const std::wstring& name) const
{
    for (const HostedWindowClass& windowClass : m_vecClasses)
    {
        if (SameName(windowClass.name, name))
            return &windowClass;
    }
    return nullptr;
}

// Atoms go round: the next one after the last given that no class holds.
ATOM CWindowClassTable::FreeAtom() const
{
    for (unsigned step = 0; step < kAtomCount; ++step)
    {
        const auto atom =
            static_cast<ATOM>(kFirstAtom + (m_wNextAtom - kFirstAtom + step) % kAtomCount);
        if (!FindAtom(atom))
            return atom;
    }
    return 0;
}

const HostedWindowClass* CWindowClassTable::FindAtom(ATOM atom) const
{
    for (const HostedWindowClass& windowClass : m_vecClasses)
    {
        if (windowClass.atom == atom)
            return &windowClass;
    }
    return nullptr;
}

bool CWindowClassTable::Unregister(const std::wstring& name)
{
    const auto found = std::find_if(m_vecClasses.begin(), m_vecClasses.end(),
                                    [&name](const HostedWindowClass& c)
                                    { return !c.system && SameName(c.name, name); });
    if (found == m_vecClasses.end())
        return false;
    m_vecClasses.erase(found);
    return true;
}

void CWindowClassTable::ClearApplicationClasses()
{
    m_vecClasses.erase(std::remove_if(m_vecClasses.begin(), m_vecClasses.end(),
                                      [](const HostedWindowClass& c) { return !c.system; }),
                       m_vecClasses.end());
}

} // namespace QzPlatform
