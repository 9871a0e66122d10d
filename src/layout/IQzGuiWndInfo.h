// What the configuration says about one window: position, size, look, sounds, effects, tip and
// per-class switches. Windows read records through this interface; the layout manager owns
// them (records are destroyed through CQzGuiWndInfo, never through this interface).
#pragma once

#include "platform/system/QzSystem.h"

#include <vector>

namespace QzGui
{

// Flag bits telling which optional keys a record was given.
enum : DWORD
{
    WNDINFO_FLAG_LINK = 0x02,
    WNDINFO_FLAG_CURSOR = 0x04,
    WNDINFO_FLAG_REGION = 0x08,
    WNDINFO_FLAG_FONTSIZE = 0x10,
    WNDINFO_FLAG_FONTCOLOR = 0x20,
    WNDINFO_FLAG_ANISECTION = 0x40,
};

// 65535 in a width, height, group, link index, font size, font colour or tip offset: not given.
constexpr DWORD WNDINFO_NOT_GIVEN = 65535;

class IQzGuiWndInfo
{
public:
    virtual DWORD GetX() const = 0;
    virtual DWORD GetY() const = 0;
    virtual DWORD GetWidth() const = 0;
    virtual DWORD GetHeight() const = 0;
    virtual DWORD GetOffsetX() const = 0;
    virtual DWORD GetOffsetY() const = 0;
    virtual const char* GetTitle() const = 0;
    virtual const char* GetOpenSound() const = 0;
    virtual const char* GetCloseSound() const = 0;
    virtual const char* GetClickSound() const = 0;
    virtual const char* GetMouseInSound() const = 0;
    virtual const char* GetMouseOutSound() const = 0;
    virtual int GetFlyDir() const = 0;
    virtual int GetHelpId() const = 0;
    virtual int GetReserved1() const = 0;
    virtual int GetLinkIndex() const = 0;
    virtual int GetReserved2() const = 0;
    virtual const char* GetCursor() const = 0;
    virtual const char* GetAniSection() const = 0;
    virtual int GetBackShowMode() const = 0;
    virtual int GetTipId() const = 0;
    virtual const char* GetTipText() const = 0;
    virtual const char* GetTipAniSection() const = 0;
    virtual const POINT* GetTipOffset() const = 0;
    virtual const POINT* GetTextOffset() const = 0;
    virtual const char* GetBgEffect() const = 0;
    virtual const char* GetFgEffect() const = 0;
    virtual const char* GetFlyInEffect() const = 0;
    virtual const char* GetFlyOutEffect() const = 0;
    virtual const char* GetMouseOverEffect() const = 0;
    virtual const std::vector<int>* GetOpenBindList() const = 0;
    virtual const std::vector<int>* GetCloseBindList() const = 0;
    virtual DWORD GetGroup() const = 0;
    virtual const char* GetFont() const = 0;
    virtual DWORD GetFontColor() const = 0;
    virtual int GetFontSize() const = 0;
    virtual int GetStyle() const = 0;
    virtual HRGN GetRegion() const = 0;
    virtual DWORD TestFlag(DWORD mask) const = 0;
    virtual int IsTestRgn() const = 0;
    virtual int GetParentId() const = 0;
    virtual int GetCtrlId() const = 0;
    virtual int GetVariant() const = 0;
    virtual const char* GetExtraValue(const char* key) const = 0;
    virtual DWORD GetCtrlType() const = 0;

protected:
    ~IQzGuiWndInfo() = default;
};

} // namespace QzGui
