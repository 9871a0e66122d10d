// What the monkey's windows share to catch a message reaching a window after its removal: each
// window registers itself while it lives, is marked when the host takes it out of its dialog or
// the manager, and writes down the first message entry called on it after that. The checks
// look windows up here, so that a pointer the manager keeps to a deleted window is caught
// without reading through it.
#pragma once

#include "platform/system/QzSystem.h"

#include <string>

namespace QzGui
{
class CQzBaseWindow;
}

namespace QzMonkey
{

class CRemovalProbe
{
public:
    CRemovalProbe(const QzGui::CQzBaseWindow* pWindow, std::string name);
    virtual ~CRemovalProbe();
    CRemovalProbe(const CRemovalProbe&) = delete;
    CRemovalProbe& operator=(const CRemovalProbe&) = delete;

    void MarkRemoved() { m_bRemoved = true; }
    bool IsRemoved() const { return m_bRemoved; }
    const std::string& Name() const { return m_name; }

    // A message entry of the window was called; on a removed window that is the violation.
    void Enter(const char* pszEntry, UINT message) const;

    // The probe of a living window; null for a deleted (or unknown) one.
    static const CRemovalProbe* Find(const QzGui::CQzBaseWindow* pWindow);
    // The first violation since the last call, or an empty text; the record is emptied.
    static std::string TakeViolation();

private:
    const QzGui::CQzBaseWindow* m_pWindow;
    std::string m_name;
    bool m_bRemoved = false;
};

} // namespace QzMonkey
