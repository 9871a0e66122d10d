#include "SdlCursor.h"

#include "CursorImage.h"

#include "platform/system/host/QzHost.h"

#include <SDL_events.h>
#include <SDL_surface.h>

SDL_SystemCursor SdlSystemCursorFor(WORD standardId)
{
    switch (standardId)
    {
    case 32513: // IDC_IBEAM
        return SDL_SYSTEM_CURSOR_IBEAM;
    case 32514: // IDC_WAIT
        return SDL_SYSTEM_CURSOR_WAIT;
    case 32515: // IDC_CROSS
        return SDL_SYSTEM_CURSOR_CROSSHAIR;
    case 32642: // IDC_SIZENWSE
        return SDL_SYSTEM_CURSOR_SIZENWSE;
    case 32643: // IDC_SIZENESW
        return SDL_SYSTEM_CURSOR_SIZENESW;
    case 32644: // IDC_SIZEWE
        return SDL_SYSTEM_CURSOR_SIZEWE;
    case 32645: // IDC_SIZENS
        return SDL_SYSTEM_CURSOR_SIZENS;
    case 32646: // IDC_SIZEALL
        return SDL_SYSTEM_CURSOR_SIZEALL;
    case 32648: // IDC_NO
        return SDL_SYSTEM_CURSOR_NO;
    case 32649: // IDC_HAND
        return SDL_SYSTEM_CURSOR_HAND;
    case 32650: // IDC_APPSTARTING
        return SDL_SYSTEM_CURSOR_WAITARROW;
    default: // IDC_ARROW, IDC_UPARROW, IDC_HELP
        return SDL_SYSTEM_CURSOR_ARROW;
    }
}

namespace
{

SDL_Cursor* ColorCursor(const std::string& file)
{
    CursorImage image;
    if (file.empty() || !LoadCursorImage(file, image))
        return nullptr;
    SDL_Surface* surface =
        SDL_CreateRGBSurfaceWithFormatFrom(image.argb.data(), image.width, image.height, 32,
                                           image.width * 4, SDL_PIXELFORMAT_ARGB8888);
    if (!surface)
        return nullptr;
    SDL_Cursor* cursor = SDL_CreateColorCursor(surface, image.hotX, image.hotY);
    SDL_FreeSurface(surface);
    return cursor;
}

} // namespace

CSdlCursor::~CSdlCursor()
{
    for (auto& entry : m_mapCursors)
    {
        if (entry.second)
            SDL_FreeCursor(entry.second);
    }
}

SDL_Cursor* CSdlCursor::CursorFor(HCURSOR cursor)
{
    auto found = m_mapCursors.find(cursor);
    if (found != m_mapCursors.end())
        return found->second;
    const QzPlatform::Host::CursorInfo info = QzPlatform::Host::DescribeCursor(cursor);
    SDL_Cursor* made = info.valid ? ColorCursor(info.file) : nullptr;
    if (!made && info.valid)
        made = SDL_CreateSystemCursor(SdlSystemCursorFor(info.standardId));
    m_mapCursors[cursor] = made;
    return made;
}

void CSdlCursor::Show(HCURSOR cursor)
{
    SDL_Cursor* shape = cursor ? CursorFor(cursor) : nullptr;
    const bool visible = shape != nullptr;
    if (visible && cursor != m_hShown)
        SDL_SetCursor(shape);
    m_hShown = visible ? cursor : nullptr;
    if (visible != m_bVisible)
        SDL_ShowCursor(visible ? SDL_ENABLE : SDL_DISABLE);
    m_bVisible = visible;
}
