#include "layout/QzLayoutKeyTable.h"

#include "layout/QzGuiWndInfo.h"
#include "platform/services/QzText.h"

#include <cstring>
#include <string_view>
#include <unordered_map>

namespace QzGui
{

namespace
{

enum class LayoutKey
{
    X,
    Y,
    W,
    H,
    OffsetX,
    OffsetY,
    Title,
    AniSection,
    BackShowMode,
    OpenSound,
    CloseSound,
    ClickSound,
    MouseInSound,
    MouseOutSound,
    FlyDir,
    Link,
    Cursor,
    TipId,
    TipText,
    TipOffsetX,
    TipOffsetY,
    TextOffsetX,
    TextOffsetY,
    TipAniSection,
    FgEffect,
    BgEffect,
    MouseOverEffect,
    FlyInEffect,
    FlyOutEffect,
    OpenBind,
    CloseBind,
    Group,
    Font,
    FontColor,
    FontSize,
    Style,
    TestRgn,
    CtrlType,
    Type,
    HelpId,
};

const std::unordered_map<std::string_view, LayoutKey>& KeyTable()
{
    static const std::unordered_map<std::string_view, LayoutKey> table = {
        {"x", LayoutKey::X},
        {"y", LayoutKey::Y},
        {"w", LayoutKey::W},
        {"h", LayoutKey::H},
        {"OffsetX", LayoutKey::OffsetX},
        {"OffsetY", LayoutKey::OffsetY},
        {"Title", LayoutKey::Title},
        {"AniSection", LayoutKey::AniSection},
        {"BackShowMode", LayoutKey::BackShowMode},
        {"OpenSound", LayoutKey::OpenSound},
        {"CloseSound", LayoutKey::CloseSound},
        {"ClickSound", LayoutKey::ClickSound},
        {"MouseInSound", LayoutKey::MouseInSound},
        {"MouseOutSound", LayoutKey::MouseOutSound},
        {"FlyDir", LayoutKey::FlyDir},
        {"Link", LayoutKey::Link},
        {"Cursor", LayoutKey::Cursor},
        {"TipID", LayoutKey::TipId},
        {"TipText", LayoutKey::TipText},
        {"TipOffsetX", LayoutKey::TipOffsetX},
        {"TipOffsetY", LayoutKey::TipOffsetY},
        {"TextOffsetX", LayoutKey::TextOffsetX},
        {"TextOffsetY", LayoutKey::TextOffsetY},
        {"TipAniSection", LayoutKey::TipAniSection},
        {"FgEffect", LayoutKey::FgEffect},
        {"BgEffect", LayoutKey::BgEffect},
        {"MouseOverEffect", LayoutKey::MouseOverEffect},
        {"FlyInEffect", LayoutKey::FlyInEffect},
        {"FlyOutEffect", LayoutKey::FlyOutEffect},
        {"OpenBind", LayoutKey::OpenBind},
        {"CloseBind", LayoutKey::CloseBind},
        {"Group", LayoutKey::Group},
        {"Font", LayoutKey::Font},
        {"FontColor", LayoutKey::FontColor},
        {"FontSize", LayoutKey::FontSize},
        {"Style", LayoutKey::Style},
        {"TestRgn", LayoutKey::TestRgn},
        {"CtrlType", LayoutKey::CtrlType},
        {"type", LayoutKey::Type},
        {"Helpid", LayoutKey::HelpId},
    };
    return table;
}

WORD ToWord(const char* pszValue)
{
    return static_cast<WORD>(QzPlatform::TextToInt(pszValue));
}

void ApplyNumber(CQzGuiWndInfo& record, LayoutKey key, const char* pszValue)
{
    const int value = QzPlatform::TextToInt(pszValue);
    switch (key)
    {
    case LayoutKey::X:
        record.SetX(ToWord(pszValue));
        break;
    case LayoutKey::Y:
        record.SetY(ToWord(pszValue));
        break;
    case LayoutKey::W:
        record.SetWidth(ToWord(pszValue));
        break;
    case LayoutKey::H:
        record.SetHeight(ToWord(pszValue));
        break;
    case LayoutKey::OffsetX:
        record.SetOffsetX(ToWord(pszValue));
        break;
    case LayoutKey::OffsetY:
        record.SetOffsetY(ToWord(pszValue));
        break;
    case LayoutKey::Group:
        record.SetGroup(ToWord(pszValue));
        break;
    case LayoutKey::CtrlType:
        record.SetCtrlType(ToWord(pszValue));
        break;
    case LayoutKey::BackShowMode:
        record.SetBackShowMode(value);
        break;
    case LayoutKey::FlyDir:
        record.SetFlyDir(value);
        break;
    case LayoutKey::TipId:
        record.SetTipId(value);
        break;
    case LayoutKey::TipOffsetX:
        record.SetTipOffsetX(value);
        break;
    case LayoutKey::TipOffsetY:
        record.SetTipOffsetY(value);
        break;
    case LayoutKey::TextOffsetX:
        record.SetTextOffsetX(value);
        break;
    case LayoutKey::TextOffsetY:
        record.SetTextOffsetY(value);
        break;
    case LayoutKey::Style:
        record.SetStyle(value);
        break;
    case LayoutKey::Type:
        record.SetType(value);
        break;
    case LayoutKey::HelpId:
        record.SetHelpId(value);
        break;
    case LayoutKey::FontSize:
        record.SetFontSize(value);
        record.AddFlags(WNDINFO_FLAG_FONTSIZE);
        break;
    case LayoutKey::TestRgn:
        // Only a nonzero value changes the record: 0 leaves what an earlier section gave.
        if (value != 0)
            record.SetTestRgn(1);
        break;
    default:
        break;
    }
}

// Returns false for the keys that are not plain texts.
bool ApplyText(CQzGuiWndInfo& record, LayoutKey key, const char* pszValue)
{
    switch (key)
    {
    case LayoutKey::Title:
        record.SetTitle(pszValue);
        return true;
    case LayoutKey::OpenSound:
        record.SetOpenSound(pszValue);
        return true;
    case LayoutKey::CloseSound:
        record.SetCloseSound(pszValue);
        return true;
    case LayoutKey::ClickSound:
        record.SetClickSound(pszValue);
        return true;
    case LayoutKey::MouseInSound:
        record.SetMouseInSound(pszValue);
        return true;
    case LayoutKey::MouseOutSound:
        record.SetMouseOutSound(pszValue);
        return true;
    case LayoutKey::TipText:
        record.SetTipText(pszValue);
        return true;
    case LayoutKey::TipAniSection:
        record.SetTipAniSection(pszValue);
        return true;
    case LayoutKey::FgEffect:
        record.SetFgEffect(pszValue);
        return true;
    case LayoutKey::BgEffect:
        record.SetBgEffect(pszValue);
        return true;
    case LayoutKey::MouseOverEffect:
        record.SetMouseOverEffect(pszValue);
        return true;
    case LayoutKey::FlyInEffect:
        record.SetFlyInEffect(pszValue);
        return true;
    case LayoutKey::FlyOutEffect:
        record.SetFlyOutEffect(pszValue);
        return true;
    case LayoutKey::Font:
        record.SetFont(pszValue);
        return true;
    default:
        return false;
    }
}

} // namespace

void CQzLayoutKeyTable::Apply(CQzGuiWndInfo& record, const char* pszKey, const char* pszValue,
                              std::deque<std::string>& links)
{
    const auto found = KeyTable().find(pszKey);
    if (found == KeyTable().end())
    {
        record.AddExtra(pszKey, pszValue);
        return;
    }
    const LayoutKey key = found->second;
    if (ApplyText(record, key, pszValue))
        return;
    switch (key)
    {
    case LayoutKey::AniSection:
        record.SetAniSection(pszValue);
        record.AddFlags(WNDINFO_FLAG_ANISECTION);
        return;
    case LayoutKey::Cursor:
        record.SetCursor(pszValue);
        record.AddFlags(WNDINFO_FLAG_CURSOR);
        return;
    case LayoutKey::Link:
        record.SetLinkIndex(static_cast<int>(links.size()));
        links.emplace_back(pszValue);
        record.AddFlags(WNDINFO_FLAG_LINK);
        return;
    case LayoutKey::FontColor:
        record.SetFontColor(static_cast<DWORD>(QzPlatform::TextToUnsigned(pszValue, 16)));
        record.AddFlags(WNDINFO_FLAG_FONTCOLOR);
        return;
    case LayoutKey::OpenBind:
        ApplyBindList(record.OpenBindList(), pszValue);
        return;
    case LayoutKey::CloseBind:
        ApplyBindList(record.CloseBindList(), pszValue);
        return;
    default:
        ApplyNumber(record, key, pszValue);
        return;
    }
}

// "4,0,9": every identifier other than 0, in order.
void CQzLayoutKeyTable::ApplyBindList(std::vector<int>& list, const char* pszValue)
{
    const char* pszItem = pszValue;
    while (pszItem)
    {
        const int id = QzPlatform::TextToInt(pszItem);
        if (id != 0)
            list.push_back(id);
        pszItem = std::strchr(pszItem, ',');
        if (pszItem)
            ++pszItem;
    }
}

} // namespace QzGui
