#include "SdlClipboard.h"

#include "HostClipboard.h"

#include <SDL_clipboard.h>
#include <SDL_stdinc.h>

bool CSdlClipboard::TakeNewText(std::string& text)
{
    if (!SDL_HasClipboardText())
        return false;
    char* desktop = SDL_GetClipboardText();
    if (!desktop)
        return false;
    text = desktop;
    SDL_free(desktop);
    if (text == m_strShared)
        return false;
    m_strShared = text;
    return true;
}

void CSdlClipboard::Export()
{
    std::string text;
    if (!ReadHostClipboardText(text) || text == m_strShared)
        return;
    if (SDL_SetClipboardText(text.c_str()) == 0)
        m_strShared = text;
}
