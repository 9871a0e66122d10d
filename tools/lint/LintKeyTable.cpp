#include "LintKeyTable.h"

#include "framework/QzMsg.h"

#include <algorithm>
#include <set>

namespace QzLint
{

const std::vector<std::string>& CLintKeyTable::RecordKeys()
{
    static const std::vector<std::string> keys = {
        "x",
        "y",
        "w",
        "h",
        "OffsetX",
        "OffsetY",
        "Title",
        "AniSection",
        "BackShowMode",
        "OpenSound",
        "CloseSound",
        "ClickSound",
        "MouseInSound",
        "MouseOutSound",
        "FlyDir",
        "Link",
        "Cursor",
        "TipID",
        "TipText",
        "TipOffsetX",
        "TipOffsetY",
        "TextOffsetX",
        "TextOffsetY",
        "TipAniSection",
        "FgEffect",
        "BgEffect",
        "MouseOverEffect",
        "FlyInEffect",
        "FlyOutEffect",
        "OpenBind",
        "CloseBind",
        "Group",
        "Font",
        "FontColor",
        "FontSize",
        "Style",
        "TestRgn",
        "CtrlType",
        "type",
        "Helpid",
    };
    return keys;
}

// By the class that reads them: every window, dialogs, controls, then single control kinds.
const std::vector<std::string>& CLintKeyTable::ExtraKeys()
{
    static const std::vector<std::string> keys = {
        "BackFile",
        "AniOffset",
        "IsDisable",
        "NoPush",
        "ClickToTop",
        "Topmost",
        "ExtraShow",
        "FlyInStep",
        "FlyOutStep",
        "IgnoreScrChgClose",
        "IgnoreEnterBattleClose",
        "IgnoreSwitchSrvClose",
        "IgnoreChgMapClose",
        "RClose",
        "IgnoreEscClose",
        "TipAlign",
        "TextFormat",
        "MutiLine",
        "TextLineHeight",
        "GridSpaceX",
        "GridSpaceY",
        "ItemHeight",
        "SelBackColor",
        "ProgressStyle",
        "SliderBtnLen",
        "SelBackAni",
        "SelBackOffsetX",
        "SelBackOffsetY",
        "WHLMoveRate",
        "WHLMoveLength",
    };
    return keys;
}

const std::vector<std::string>& CLintKeyTable::AllKeys()
{
    static const std::vector<std::string> keys = []
    {
        std::vector<std::string> all = RecordKeys();
        all.insert(all.end(), ExtraKeys().begin(), ExtraKeys().end());
        return all;
    }();
    return keys;
}

bool CLintKeyTable::IsKnown(const std::string& key)
{
    static const std::set<std::string> known(AllKeys().begin(), AllKeys().end());
    return known.count(key) != 0;
}

const std::vector<int>& CLintKeyTable::Types()
{
    using namespace QzGui;
    static const std::vector<int> types = {
        QZ_WND_DIALOG,        QZ_WND_BUTTON,        QZ_WND_EDIT,         QZ_WND_IMAGE,
        QZ_WND_STATIC,        QZ_WND_CHECK,         QZ_WND_LIST,         QZ_WND_PROGRESS,
        QZ_WND_SLIDER,        QZ_WND_GRID,          QZ_WND_SCROLLBUTTON, QZ_WND_TREE,
        QZ_WND_RECORD_STATIC, QZ_WND_GRID_SHORTCUT, QZ_WND_GRID_EX,
    };
    return types;
}

bool CLintKeyTable::IsKnownType(int nType)
{
    return std::find(Types().begin(), Types().end(), nType) != Types().end();
}

std::string CLintKeyTable::DescribeTypes()
{
    std::vector<int> types = Types();
    std::sort(types.begin(), types.end());
    std::string text;
    for (size_t i = 0; i < types.size();)
    {
        size_t end = i;
        while (end + 1 < types.size() && types[end + 1] == types[end] + 1)
            ++end;
        text += (text.empty() ? "" : ", ") + std::to_string(types[i]);
        if (end > i)
            text += " to " + std::to_string(types[end]);
        i = end + 1;
    }
    return text;
}

} // namespace QzLint
