// What the demo draws each frame: a window of the sample bundle's skins, texts and icons, and
// the pointer. It takes the host window's messages to follow the mouse and the keyboard.
#pragma once

#include "platform/system/QzSystem.h"

#include <string>

class CDemoScene
{
public:
    CDemoScene();

    // A message of the host window; returns nonzero when the scene used it.
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam);
    void Draw();

private:
    void DrawSkinnedPanel(int x, int y, int width, int height);
    void DrawButtonRow(int x, int y);
    void DrawCheckRow(int x, int y);
    void DrawTexts(int x, int y);
    void DrawMaskTest(int x, int y);
    void DrawPointer();
    bool IsOnButton(int index) const;

    POINT m_ptMouse = {-100, -100};
    bool m_bButtonDown = false;
    int m_nClicks = 0;
    bool m_bChecked = false;
    std::wstring m_strTyped;
};
