// Turns the cursor names of ini/Cursor.ini into what the user sees: a cursor file that the
// system shows (type 0), an animation section of "ani/Control.ani" drawn as a software cursor
// (type 1), or a part of the manager's own 3D effect object (type 2). The GUI manager owns one
// and hands it out; windows set cursors by name through it, and the host draws the software
// cursors every frame with DrawCursor.
#pragma once

#include "platform/system/QzSystem.h"

#include <map>
#include <string>

namespace QzPlatform
{
class IEffectObject;
}

namespace QzGui
{

class IQzGuiMgr;

class CQzCursorMgr
{
public:
    CQzCursorMgr();
    ~CQzCursorMgr();
    CQzCursorMgr(const CQzCursorMgr&) = delete;
    CQzCursorMgr& operator=(const CQzCursorMgr&) = delete;

    // The manager whose cursor table names the cursors (not owned). Returns 1.
    int SetGuiMgr(IQzGuiMgr* pMgr);
    // Shows the cursor of that name; the same name again changes nothing. A null name forgets
    // the last name, so that the next name is shown again.
    void SetCursorByName(const char* pszName);
    // The host's per-frame drawing of the software cursor (types 1 and 2) at the mouse position.
    void DrawCursor();

    int GetCursorType() const { return m_nType; }
    // The animation section or effect part shown; null for a system cursor (type 0).
    const char* GetCursorAniName() const;
    bool HasCursorName() const { return !m_strLastName.empty(); }
    // Destroys every system cursor loaded from a file and forgets them.
    void ClearCursorCache();

private:
    HCURSOR LoadFileCursor(const std::string& strFile);
    void ShowEffectCursor(const std::string& strPart);
    void DrawAniCursor();
    void DrawEffectCursor();

    QzPlatform::IEffectObject* m_pEffect = nullptr;
    int m_nType = 0;
    std::map<std::string, HCURSOR> m_mapCursorCache;
    std::string m_strCursor;
    std::string m_strLastName;
    IQzGuiMgr* m_pGuiMgr = nullptr;
};

} // namespace QzGui
