#include "CollectionsDialog.h"

#include "framework/IQzGuiMgr.h"
#include "platform/system/text/QzCodePage.h"

#include <algorithm>
#include <cstdio>
#include <string>

namespace
{

using namespace QzGui;

enum : DWORD
{
    kBagCaptionId = 1,
    kQuestCaptionId = 2,
    kChatCaptionId = 3,
    kPickedId = 4,
    kBagId = 10,
    kQuestsId = 20,
    kQuestUpId = 21,
    kQuestDownId = 22,
    kQuestSliderId = 23,
    kChatId = 30,
    kChatUpId = 31,
    kChatDownId = 32,
    kChatSliderId = 33,
    kSayId = 40,
    kCloseId = 41,
    kChatInputId = 42,
    kSmileId = 43,
};

// Scroll-button kinds: line up and line down.
const BYTE kLineUp = 0;
const BYTE kLineDown = 1;
const BYTE kBagColumns = 5;
const BYTE kBagRows = 4;
// The locked slot of the bag, and the gem that glows.
const int kLockedSlot = 19;
const int kGemSlot = 3;
const WORD kSliderRange = 100;
const int kChatTextIndent = 16;
// The emotion the smile inserts, and the longest line the player may type.
const short kSmile = 1;
const int kChatInputLimit = 64;
// Older chat lines than the client names, so that the history scrolls.
const int kFillerLines = 30;

const DWORD kWhite = 0xFFFFFFFF;
const DWORD kWorld = 0xFFFFD36B;
const DWORD kGuild = 0xFF7CE07C;
const DWORD kSystem = 0xFF8CC8FF;

DWORD Clicked(DWORD nId)
{
    return (static_cast<DWORD>(QZ_BN_CLICKED) << 16) | nId;
}

std::string Ansi(const char* pszUtf8)
{
    return QzPlatform::Utf8ToAnsi(pszUtf8);
}

} // namespace

CCollectionsDialog::CCollectionsDialog() : CQzDialog(kId, nullptr)
{
    m_bag.PreSetParam(kBagColumns, kBagRows);
    // The tree and the list set their sliders up again when they are created; a slider needs
    // its range before its own creation all the same.
    m_questSlider.PreSetParam(kSliderRange, QZ_SLIDER_VERT);
    m_chatSlider.PreSetParam(kSliderRange, QZ_SLIDER_VERT);
    m_quests.PreSetParam(QZ_TREE_STYLE_CHECK, &m_questUp, &m_questDown, kLineUp, kLineDown,
                         &m_questSlider);
    m_chat.PreSetParam(QZ_LIST_STYLE_TOGGLE, &m_chatUp, &m_chatDown, kLineUp, kLineDown,
                       &m_chatSlider);
    m_chat.SetOwner(this);
    m_chat.SetItemColors(kWhite, kWhite);
    m_chat.SetHoverAni("ChatHover", FALSE);
    m_chat.SetItemTextOffset(kChatTextIndent, 0); // room for the mark's star
    m_chat.SetTipBelow(TRUE);
    m_bagCaption.SetWindowText("Bag");
    m_questCaption.SetWindowText("Quests");
    m_chatCaption.SetWindowText("Chat");
    m_picked.SetWindowText("Click an item");
    m_chatInput.PreSetParam(false, 0, kWhite);
    m_chatInput.SetMaxText(kChatInputLimit);
    m_say.SetWindowText("Say");
    m_close.SetWindowText("Close");
    AddCtrls(kBagCaptionId, &m_bagCaption, kQuestCaptionId, &m_questCaption, kChatCaptionId,
             &m_chatCaption, kPickedId, &m_picked, kBagId, &m_bag, kQuestUpId, &m_questUp,
             kQuestDownId, &m_questDown, kQuestSliderId, &m_questSlider, kQuestsId, &m_quests,
             kChatUpId, &m_chatUp, kChatDownId, &m_chatDown, kChatSliderId, &m_chatSlider, kChatId,
             &m_chat, kChatInputId, &m_chatInput, kSmileId, &m_smile, kSayId, &m_say, kCloseId,
             &m_close);
}

void CCollectionsDialog::OnInitDialog(uint64_t)
{
    AddMsgHandler(WM_COMMAND, Clicked(kSayId), &CCollectionsDialog::OnSay);
    AddMsgHandler(WM_COMMAND, Clicked(kCloseId), &CCollectionsDialog::OnClose);
    AddMsgHandler(WM_COMMAND, Clicked(kSmileId), &CCollectionsDialog::OnSmile);
    AddMsgHandler(WM_NOTIFY, (static_cast<DWORD>(QZ_EDITEX_ENTER) << 16) | kChatInputId,
                  &CCollectionsDialog::Send);
}

// The controls are made at the first showing, the lists and the tree empty: the client fills
// them then.
void CCollectionsDialog::CreateCtrls()
{
    CQzDialog::CreateCtrls();
    if (m_bStarted)
        return;
    m_bStarted = true;
    FillBag();
    FillQuests();
    FillChat();
}

void CCollectionsDialog::FillBag()
{
    m_bag.PutItem(0, CDemoBag::kSword, 1);
    m_bag.PutItem(1, CDemoBag::kPotion, 12);
    m_bag.PutItem(2, CDemoBag::kShield, 1);
    m_bag.PutItem(kGemSlot, CDemoBag::kGem, 3);
    m_bag.PutItem(7, CDemoBag::kScroll, 5);
    m_bag.PutItem(8, CDemoBag::kPotion, 2);
    m_bag.SetMaskAni("BagMask");
    m_bag.SetCellEnable(kLockedSlot, false);
    m_bag.LoadCellFrontEffect(kGemSlot, "BagGlow", true);
}

void CCollectionsDialog::FillQuests()
{
    const DWORD main = m_quests.InsertRootItem("Main quests", TRUE);
    const DWORD sword = m_quests.InsertCheckItem(main, "Find the lost sword", 1);
    m_quests.SetItemTip(sword, "Done: the sword was\nin the old well");
    const DWORD potion = m_quests.InsertCheckItem(main, "Brew a healing potion", 0);
    m_quests.SetItemTip(potion, "Bring 3 herbs\nto the alchemist");
    m_quests.InsertCheckItem(main, Ansi("护送商队 (escort)").c_str(), 0);
    const DWORD side = m_quests.InsertRootItem("Side quests", TRUE);
    for (const char* text :
         {"Feed the cat", "Count the sheep", "Polish the shield", "Read the scroll", "Find 3 gems",
          "Fish at the lake", "Help the smith", "Climb the hill", "Ring the bell"})
        m_quests.InsertCheckItem(side, text, 0);
    const DWORD guild = m_quests.InsertRootItem("Guild quests", TRUE);
    const DWORD raid = m_quests.InsertItem(guild, "Raid the tower");
    m_quests.SetItemTip(raid, "Needs 5 players");
    for (const char* text : {"Clear the first floor", "Open the gate", "Beat the warden"})
        m_quests.InsertCheckItem(raid, text, 0);
    m_quests.InsertRootItem("Finished", FALSE);
    m_quests.SetTopIndex(0);
}

void CCollectionsDialog::FillChat()
{
    struct Line
    {
        const char* text;
        DWORD color;
        const char* tip;
    };
    const Line lines[] = {
        {"[System] Welcome to the sample realm", kSystem, "Server messages are blue"},
        {"[World] Alice: anyone for the tower?", kWorld, "World chat reaches everyone"},
        {"[Guild] Bob: on my way", kGuild, "Guild chat: only your guild"},
        {"[World] Carol: selling potions", kWorld, nullptr},
        {"[Guild] Dan: need a healer", kGuild, nullptr},
        {"[World] 小明: 你好!", kWorld, "Chinese text keeps its characters whole"},
        {"[System] The gate opens at dusk", kSystem, nullptr},
        {"[World] Erin: lfg tower", kWorld, nullptr},
        {"[Guild] Finn: bring potions", kGuild, nullptr},
        {"[World] Gus: wts shield", kWorld, "Hover a row for its tip"},
        {"[System] Double XP this weekend", kSystem, nullptr},
        {"[Guild] Hana: raid at eight", kGuild, nullptr},
        {"[World] Ivan: anyone seen my cat?", kWorld, nullptr},
        {"[World] Jo: the cat is in the bag", kWorld, nullptr},
        {"[Guild] Kim: gate is open", kGuild, nullptr},
        {"[World] Lee: tower group full", kWorld, nullptr},
        {"[System] Maintenance in 2 hours", kSystem, "Scroll up for older lines"},
        {"[Guild] Mo: see you there", kGuild, nullptr},
        {"[World] Ned: gg", kWorld, nullptr},
        {"[World] Olga: where is the alchemist?", kWorld, nullptr},
    };
    for (int i = 0; i < kFillerLines; ++i)
    {
        char text[64];
        std::snprintf(text, sizeof(text), "[World] Traveller %d: hello", i + 1);
        AddChatRow(text, kWhite, nullptr, false);
    }
    for (const Line& line : lines)
        AddChatRow(Ansi(line.text).c_str(), line.color, line.tip, false);
    MarkOlderLines();
}

// The line between the older rows and the ones of this session.
void CCollectionsDialog::MarkOlderLines()
{
    m_chat.SetMarkBackAni("ChatMarkBack");
    m_chat.SetMarkFrontAni("ChatMarkFront", 2, 2);
    m_chat.SetMarkIndex(kFillerLines);
}

void CCollectionsDialog::AddChatRow(const char* pszText, DWORD dwColor, const char* pszTip,
                                    bool bBlink)
{
    const int nIndex = m_chat.AddString(pszText);
    m_chat.SetItemColor(nIndex, dwColor);
    if (pszTip)
        m_chat.SetItemTip(nIndex, pszTip);
    if (nIndex >= 0)
    {
        m_vecChatTips.resize(static_cast<size_t>(nIndex) + 1);
        m_vecChatTips[static_cast<size_t>(nIndex)] = pszTip ? pszTip : "";
    }
    if (bBlink)
    {
        m_chat.SetItemBlink(nIndex, TRUE);
        m_chat.SetItemTime(nIndex, timeGetTime());
    }
    // The newest row comes into view.
    m_chat.SetTopIndex(std::max(0, m_chat.GetCount() - static_cast<int>(m_chat.GetVisibleRows())));
    m_chat.SyncSlider();
}

void CCollectionsDialog::SaveState()
{
    m_saved = ChatState();
    for (int i = 0; i < m_chat.GetCount(); ++i)
    {
        ChatRow row;
        row.text.resize(static_cast<size_t>(std::max(0, m_chat.GetTextLen(i))) + 1);
        row.text.resize(static_cast<size_t>(std::max(0, m_chat.GetText(i, row.text.data()))));
        row.dwColor = m_chat.GetItemColor(i);
        row.dwTime = m_chat.GetItemTime(i);
        row.bBlink = m_chat.GetItemBlink(i) != 0;
        m_saved.rows.push_back(std::move(row));
    }
    m_saved.nSelected = m_chat.GetCurSel();
    m_saved.nTop = m_chat.GetTopIndex();
}

void CCollectionsDialog::RestoreState()
{
    m_chat.ResetContent();
    for (size_t i = 0; i < m_saved.rows.size(); ++i)
    {
        const ChatRow& row = m_saved.rows[i];
        const int nIndex = m_chat.AddString(row.text.c_str());
        m_chat.SetItemColor(nIndex, row.dwColor);
        m_chat.SetItemTime(nIndex, row.dwTime);
        m_chat.SetItemBlink(nIndex, row.bBlink ? TRUE : FALSE);
        if (i < m_vecChatTips.size() && !m_vecChatTips[i].empty())
            m_chat.SetItemTip(nIndex, m_vecChatTips[i].c_str());
    }
    MarkOlderLines();
    if (m_saved.nSelected >= 0)
        m_chat.SelectRow(m_saved.nSelected);
    m_chat.SetTopIndex(m_saved.nTop);
    m_chat.SyncSlider();
    m_saved = ChatState();
}

LRESULT CCollectionsDialog::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_NOTIFY && LOWORD(wParam) == kBagId && HIWORD(wParam) == QZ_GRID_LBUTTONUP)
    {
        OnBagClick();
        return 1;
    }

    return CQzDialog::WindowProc(message, wParam, lParam);
}

void CCollectionsDialog::OnBagClick()
{
    POINT mouse = {};
    GetGuiMgr()->GetMousePos(&mouse);
    const POINT pt = {mouse.x - m_bag.GetX(), mouse.y - m_bag.GetY()};
    int nCol = 0;
    int nRow = 0;
    if (!m_bag.HitTest(pt, &nCol, &nRow))
        return;
    const int nIndex = m_bag.GetCellIndex(nCol, nRow);
    m_bag.ClearCellMarks();
    char text[64];
    if (!m_bag.IsCellEnabled(nIndex))
        std::snprintf(text, sizeof(text), "That slot is locked");
    else if (!m_bag.IsCellUsed(nIndex))
        std::snprintf(text, sizeof(text), "An empty slot");
    else
    {
        m_bag.SetCellMark(nCol, nRow, true);
        std::snprintf(text, sizeof(text), "Picked: %s", m_bag.GetItemName(nIndex));
    }
    m_picked.SetWindowText(text);
}

void CCollectionsDialog::OnSay()
{
    Send();
}

void CCollectionsDialog::Send()
{
    const std::string typed = m_chatInput.GetWindowText();
    char text[128];
    if (typed.empty())
        std::snprintf(text, sizeof(text), "[Guild] You: hello #%d", ++m_nSaid);
    else
        std::snprintf(text, sizeof(text), "[Guild] You: %s", typed.c_str());
    AddChatRow(text, kGuild, "Just said: new rows blink", true);
    m_chatInput.SetWindowText("");
}

// The smile goes in at the caret, and the box keeps the keyboard for more typing.
void CCollectionsDialog::OnSmile()
{
    m_chatInput.InsertEmotion(kSmile);
    m_chatInput.SetFocus();
}

void CCollectionsDialog::OnClose()
{
    ShowWindow(SW_HIDE);
}
