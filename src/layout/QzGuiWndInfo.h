// The record behind IQzGuiWndInfo. Only the layout manager creates, fills, resets and destroys
// records; every field starts at the default a section leaves unsaid.
#pragma once

#include "layout/IQzGuiWndInfo.h"

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace QzGui
{

class CQzGuiWndInfo : public IQzGuiWndInfo
{
public:
    CQzGuiWndInfo();
    virtual ~CQzGuiWndInfo();
    CQzGuiWndInfo(const CQzGuiWndInfo&) = delete;
    CQzGuiWndInfo& operator=(const CQzGuiWndInfo&) = delete;

    DWORD GetX() const override { return m_wX; }
    DWORD GetY() const override { return m_wY; }
    DWORD GetWidth() const override { return m_wWidth; }
    DWORD GetHeight() const override { return m_wHeight; }
    DWORD GetOffsetX() const override { return m_wOffsetX; }
    DWORD GetOffsetY() const override { return m_wOffsetY; }
    const char* GetTitle() const override { return GetText(kTitle); }
    const char* GetOpenSound() const override { return GetText(kOpenSound); }
    const char* GetCloseSound() const override { return GetText(kCloseSound); }
    const char* GetClickSound() const override { return GetText(kClickSound); }
    const char* GetMouseInSound() const override { return GetText(kMouseInSound); }
    const char* GetMouseOutSound() const override { return GetText(kMouseOutSound); }
    int GetFlyDir() const override { return m_nFlyDir; }
    int GetHelpId() const override { return m_nHelpId; }
    int GetReserved1() const override { return 0; }
    int GetLinkIndex() const override { return m_nLinkIndex; }
    int GetReserved2() const override { return m_nReserved2; }
    const char* GetCursor() const override { return GetText(kCursor); }
    const char* GetAniSection() const override { return GetText(kAniSection); }
    int GetBackShowMode() const override { return m_nBackShowMode; }
    int GetTipId() const override { return m_nTipId; }
    const char* GetTipText() const override { return GetText(kTipText); }
    const char* GetTipAniSection() const override { return GetText(kTipAniSection); }
    const POINT* GetTipOffset() const override { return &m_ptTipOffset; }
    const POINT* GetTextOffset() const override { return &m_ptTextOffset; }
    const char* GetBgEffect() const override { return GetText(kBgEffect); }
    const char* GetFgEffect() const override { return GetText(kFgEffect); }
    const char* GetFlyInEffect() const override { return GetText(kFlyInEffect); }
    const char* GetFlyOutEffect() const override { return GetText(kFlyOutEffect); }
    const char* GetMouseOverEffect() const override { return GetText(kMouseOverEffect); }
    const std::vector<int>* GetOpenBindList() const override { return &m_vecOpenBind; }
    const std::vector<int>* GetCloseBindList() const override { return &m_vecCloseBind; }
    DWORD GetGroup() const override { return m_wGroup; }
    const char* GetFont() const override { return GetText(kFont); }
    DWORD GetFontColor() const override { return m_dwFontColor; }
    int GetFontSize() const override { return m_nFontSize; }
    int GetStyle() const override { return m_nStyle; }
    // Records keep no region: the window asks the layout manager for one (WNDINFO_FLAG_REGION).
    HRGN GetRegion() const override { return nullptr; }
    DWORD TestFlag(DWORD mask) const override { return m_dwFlags & mask; }
    int IsTestRgn() const override { return m_nTestRgn; }
    int GetParentId() const override { return m_nParentId; }
    int GetCtrlId() const override { return m_nCtrlId; }
    int GetVariant() const override { return m_nVariant; }
    const char* GetExtraValue(const char* key) const override;
    DWORD GetCtrlType() const override { return m_wCtrlType; }

    // Puts back the defaults of the fields a later section of the same name fills again;
    // Variant, TestRgn, TextOffset, Title, Font, the sounds, Cursor, TipAniSection,
    // MouseOverEffect and the bind lists keep what the earlier section gave.
    void ResetToDefaults();
    void AddExtra(const char* key, const char* value);

    // Write access for the layout manager.
    void SetX(WORD x) { m_wX = x; }
    void SetY(WORD y) { m_wY = y; }
    void SetWidth(WORD w) { m_wWidth = w; }
    void SetHeight(WORD h) { m_wHeight = h; }
    void SetOffsetX(WORD x) { m_wOffsetX = x; }
    void SetOffsetY(WORD y) { m_wOffsetY = y; }
    void SetCtrlType(WORD type) { m_wCtrlType = type; }
    void SetGroup(WORD group) { m_wGroup = group; }
    void SetVariant(int variant) { m_nVariant = variant; }
    void SetHelpId(int id) { m_nHelpId = id; }
    void SetType(int type) { m_nType = type; }
    int GetType() const { return m_nType; }
    void SetFlyDir(int dir) { m_nFlyDir = dir; }
    void SetStyle(int style) { m_nStyle = style; }
    void SetTestRgn(int test) { m_nTestRgn = test; }
    void SetParentId(int id) { m_nParentId = id; }
    void SetCtrlId(int id) { m_nCtrlId = id; }
    void SetLinkIndex(int index) { m_nLinkIndex = index; }
    void SetTipId(int id) { m_nTipId = id; }
    void SetFontSize(int size) { m_nFontSize = size; }
    void SetFontColor(DWORD colour) { m_dwFontColor = colour; }
    void SetFont(const char* text) { SetText(kFont, text); }
    void SetOpenSound(const char* text) { SetText(kOpenSound, text); }
    void SetCloseSound(const char* text) { SetText(kCloseSound, text); }
    void SetClickSound(const char* text) { SetText(kClickSound, text); }
    void SetMouseInSound(const char* text) { SetText(kMouseInSound, text); }
    void SetMouseOutSound(const char* text) { SetText(kMouseOutSound, text); }
    void SetCursor(const char* text) { SetText(kCursor, text); }
    void SetAniSection(const char* text) { SetText(kAniSection, text); }
    void SetTipAniSection(const char* text) { SetText(kTipAniSection, text); }
    void SetBackShowMode(int mode) { m_nBackShowMode = mode; }
    void SetTipOffsetX(LONG x) { m_ptTipOffset.x = x; }
    void SetTipOffsetY(LONG y) { m_ptTipOffset.y = y; }
    void SetTextOffsetX(LONG x) { m_ptTextOffset.x = x; }
    void SetTextOffsetY(LONG y) { m_ptTextOffset.y = y; }
    void SetBgEffect(const char* text) { SetText(kBgEffect, text); }
    void SetFgEffect(const char* text) { SetText(kFgEffect, text); }
    void SetFlyInEffect(const char* text) { SetText(kFlyInEffect, text); }
    void SetFlyOutEffect(const char* text) { SetText(kFlyOutEffect, text); }
    void SetMouseOverEffect(const char* text) { SetText(kMouseOverEffect, text); }
    void SetFlags(DWORD flags) { m_dwFlags = flags; }
    void AddFlags(DWORD flags) { m_dwFlags |= flags; }
    DWORD GetFlags() const { return m_dwFlags; }
    void SetTitle(const char* text) { SetText(kTitle, text); }
    void SetTipText(const char* text) { SetText(kTipText, text); }
    std::vector<int>& OpenBindList() { return m_vecOpenBind; }
    std::vector<int>& CloseBindList() { return m_vecCloseBind; }
    const std::vector<std::pair<std::string, std::string>>& GetExtras() const { return m_vecExtra; }

    // Windows hold the record they show. The layout manager retires a record it takes out of
    // its tables: it is freed at once when no window holds it, otherwise by the last Drop.
    void Hold() const { ++m_nHolds; }
    void Drop() const;
    static void Retire(std::unique_ptr<CQzGuiWndInfo> pRecord);
    // Records alive in the process, in the tables or retired and still held.
    static size_t GetLiveCount();

private:
    // The text fields. A record stores only those that were ever given, one entry each (most
    // records have one or two, and a screen has thousands of records). Entries live on the heap
    // and are never removed, so that a text handed out stays valid until its own field is set.
    enum TextField : uint8_t
    {
        kFont,
        kOpenSound,
        kCloseSound,
        kClickSound,
        kMouseInSound,
        kMouseOutSound,
        kCursor,
        kAniSection,
        kTipAniSection,
        kBgEffect,
        kFgEffect,
        kFlyInEffect,
        kFlyOutEffect,
        kMouseOverEffect,
        kTitle,
        kTipText,
    };
    struct TextEntry
    {
        TextField field;
        std::string text;
    };
    // "" when the field is empty.
    const char* GetText(TextField field) const;
    void SetText(TextField field, const char* text);

    WORD m_wX = 0;
    WORD m_wY = 0;
    WORD m_wWidth = 65535;
    WORD m_wHeight = 65535;
    WORD m_wOffsetX = 0;
    WORD m_wOffsetY = 0;
    WORD m_wCtrlType = 1;
    WORD m_wGroup = 65535;
    int m_nVariant = 0;
    int m_nHelpId = 0;
    int m_nType = 0;
    int m_nFlyDir = 0;
    int m_nReserved2 = 0;
    int m_nStyle = 0;
    int m_nTestRgn = 0;
    int m_nParentId = 0;
    int m_nCtrlId = 0;
    int m_nLinkIndex = 65535;
    int m_nTipId = 0;
    int m_nFontSize = 65535;
    DWORD m_dwFontColor = 65535;
    int m_nBackShowMode = 0;
    POINT m_ptTipOffset = {65535, 65535};
    POINT m_ptTextOffset = {0, 0};
    DWORD m_dwFlags = 0;
    std::vector<std::unique_ptr<TextEntry>> m_vecText;
    std::vector<int> m_vecOpenBind;
    std::vector<int> m_vecCloseBind;
    std::vector<std::pair<std::string, std::string>> m_vecExtra;
    mutable int m_nHolds = 0;
    bool m_bRetired = false;
};

} // namespace QzGui
