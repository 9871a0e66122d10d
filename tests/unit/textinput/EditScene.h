// The host of the edit tests: a manager on the harness's main window, dialog 300 at (100, 100)
// and dialog 400 at (100, 500), each 400 x 300, recording what the edit shell and the boxes
// send them, and ini/font.ini naming "Courier". Boxes are added with a record (position
// relative to their dialog) and PreSetParam; input goes to the focused window as a host sends
// it.
#pragma once

#include "support/GuiScene.h"

#include "framework/QzDialog.h"
#include "layout/QzGuiWndInfo.h"
#include "platform/system/host/QzHost.h"
#include "textinput/QzEdit.h"
#include "textinput/QzEditSingle.h"

#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace EditTest
{

using namespace QzGui;

constexpr DWORD kDialogId = 300;
constexpr DWORD kOtherDialogId = 400;

// A message as a dialog got it.
struct Got
{
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
};

class RecordingDialog : public CQzDialog
{
public:
    RecordingDialog(DWORD nId, std::vector<Got>* pAll) : CQzDialog(nId, nullptr), m_pAll(pAll) {}
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        if (message == WM_COMMAND || message == QZ_WM_EDITBUTTONUP || message == WM_KEYUP ||
            message == WM_CHAR || message == WM_VSCROLL)
        {
            got.push_back({message, wParam, lParam});
            m_pAll->push_back({message, wParam, lParam});
        }
        return CQzDialog::WindowProc(message, wParam, lParam);
    }
    // The WM_COMMAND codes for control nId, in order.
    std::vector<WORD> Codes(DWORD nId) const
    {
        std::vector<WORD> codes;
        for (const Got& g : got)
        {
            if (g.message == WM_COMMAND && LOWORD(g.wParam) == nId)
                codes.push_back(HIWORD(g.wParam));
        }
        return codes;
    }

    std::vector<Got> got;

private:
    std::vector<Got>* m_pAll;
};

// A box that records the characters it is given and its text hooks.
class SpyEdit : public CQzEdit
{
public:
    void OnChar(UINT nChar, UINT nRepCnt, UINT nFlags) override
    {
        chars.push_back(nChar);
        CQzEdit::OnChar(nChar, nRepCnt, nFlags);
    }
    void OnTextUpdate() override { hooks.push_back("update"); }
    void OnTextChange() override { hooks.push_back("change"); }

    std::vector<UINT> chars;
    std::vector<std::string> hooks;
};

class EditScene : public QzTest::GuiScene
{
protected:
    EditScene()
        : GuiScene({{"ini/Test.ini", "[0-300]\nx=100\ny=100\nw=400\nh=300\n"
                                     "[0-400]\nx=100\ny=500\nw=400\nh=300\n"},
                    {"ini/font.ini", "Courier 12\n"}})
    {
        CQzEditSingle::ForgetFontFace();
        CQzEdit::ForgetFontName();
        m_pMgr->AddDialog(&m_dialog, nullptr, false);
        m_dialog.ShowWindow(SW_SHOW);
        m_pMgr->AddDialog(&m_other, nullptr, false);
        m_other.ShowWindow(SW_SHOW);
    }
    ~EditScene() override
    {
        m_pMgr->RemoveDialog(&m_dialog);
        m_pMgr->RemoveDialog(&m_other);
        m_edits.clear();
        CQzEditSingle::ForgetFontFace();
        CQzEdit::ForgetFontName();
    }

    // A box of dialog 300 (or another) at rc relative to it, set up and created.
    template <typename T = CQzEdit>
    T* AddEdit(DWORD nId, RECT rc, bool bMultiLine = false, RecordingDialog* pDialog = nullptr)
    {
        RecordingDialog& dialog = pDialog ? *pDialog : m_dialog;
        AddRecord(dialog.GetId(), nId, rc);
        m_edits.push_back(std::make_unique<T>());
        T* pEdit = static_cast<T*>(m_edits.back().get());
        pEdit->PreSetParam(bMultiLine, 0, 0xFFFFFFFF, true);
        dialog.AddCtrl(nId, pEdit);
        dialog.CreateCtrl(pEdit, TRUE);
        return pEdit;
    }

    CQzEditSingle* Shell() { return g_pQzEditSingle; }
    HWND Single() { return g_pQzEditSingle->GetSingleLineWnd(); }
    HWND Multi() { return g_pQzEditSingle->GetMultiLineWnd(); }
    // The text of a system window, as the user sees it typed.
    static std::wstring WindowText(HWND hWnd)
    {
        wchar_t szText[4096] = {};
        GetWindowTextW(hWnd, szText, 4096);
        return szText;
    }
    // What a box holds after a frame has read it back.
    std::string TextAfterFrame(CQzEdit* pEdit)
    {
        Frame();
        return pEdit->GetWindowText();
    }

    void Type(const std::wstring& text) { m_harness.Type(text); }
    void Key(int vk) { m_harness.Key(vk); }
    // A key with a modifier held, and the control character it types (0: none).
    void Chord(int modifier, int vk, wchar_t ch = 0)
    {
        m_harness.KeyDown(modifier);
        m_harness.KeyDown(vk);
        if (ch)
            m_harness.Char(ch);
        m_harness.KeyUp(vk);
        m_harness.KeyUp(modifier);
    }
    static void SetClipboard(const std::wstring& text)
    {
        const size_t nBytes = (text.size() + 1) * sizeof(wchar_t);
        HGLOBAL hMem = GlobalAlloc(GMEM_MOVEABLE, nBytes);
        std::memcpy(GlobalLock(hMem), text.c_str(), nBytes);
        GlobalUnlock(hMem);
        OpenClipboard(nullptr);
        EmptyClipboard();
        SetClipboardData(CF_UNICODETEXT, hMem);
        CloseClipboard();
    }
    static bool ClipboardHasText()
    {
        OpenClipboard(nullptr);
        const bool bHas = GetClipboardData(CF_UNICODETEXT) != nullptr;
        CloseClipboard();
        return bHas;
    }
    // Fills of one colour drawn in the last frame.
    std::vector<QzTest::DrawCall> Fills(DWORD dwColour)
    {
        std::vector<QzTest::DrawCall> fills;
        for (const QzTest::DrawCall& call : Calls(QzTest::DrawKind::Fill))
        {
            if (call.colour == dwColour)
                fills.push_back(call);
        }
        return fills;
    }
    std::vector<QzTest::DrawCall> DrawnFrame()
    {
        m_harness.Device().Clear();
        Frame();
        return m_harness.Device().Calls();
    }

    // The focus notices of both dialogs in the order they were sent, as (control id, code).
    std::vector<std::pair<WORD, WORD>> Notices() const
    {
        std::vector<std::pair<WORD, WORD>> notices;
        for (const Got& g : m_all)
        {
            if (g.message == WM_COMMAND &&
                (HIWORD(g.wParam) == QZ_EN_SETFOCUS || HIWORD(g.wParam) == QZ_EN_KILLFOCUS))
                notices.emplace_back(LOWORD(g.wParam), HIWORD(g.wParam));
        }
        return notices;
    }

    std::vector<Got> m_all;
    RecordingDialog m_dialog{kDialogId, &m_all};
    RecordingDialog m_other{kOtherDialogId, &m_all};
    std::vector<std::unique_ptr<CQzEdit>> m_edits;
};

} // namespace EditTest
