// Shows the host's cursor as the window's SDL cursor: a standard cursor as SDL's system cursor of
// the same shape, a cursor file in colour when its picture can be read (CursorImage.h), and no
// SDL cursor while the host draws a software cursor (no system cursor set).
#pragma once

#include "platform/system/QzSystem.h"

#include <SDL_mouse.h>

#include <map>

// SDL's system cursor for a standard cursor id (IDC_ARROW's 32512 ...); the arrow for ids SDL
// has no shape for.
SDL_SystemCursor SdlSystemCursorFor(WORD standardId);

class CSdlCursor
{
public:
    CSdlCursor() = default;
    ~CSdlCursor();
    CSdlCursor(const CSdlCursor&) = delete;
    CSdlCursor& operator=(const CSdlCursor&) = delete;

    // cursor: the host's current system cursor (GetCursor), null while it draws its own.
    void Show(HCURSOR cursor);

private:
    SDL_Cursor* CursorFor(HCURSOR cursor);

    std::map<HCURSOR, SDL_Cursor*> m_mapCursors;
    HCURSOR m_hShown = nullptr;
    bool m_bVisible = true; // SDL shows its cursor until told otherwise
};
