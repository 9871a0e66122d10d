// The collections window of the sample client: a bag, a quest log and a chat history, the three
// places where a game keeps many things. The bag is a grid of items with numbers, a locked
// (disabled) slot with its mask and a glowing gem; a click marks the item under the mouse and
// names it. The quest log is a check-box tree with tips; the chat history a list with scroll
// buttons, a slider, blinking new rows and tips, and under it an extended edit box where the
// player types a line (emotion codes such as "#01" drawn as icons; the smile inserts one) that
// Enter or "Say" sends into the history. The controls window's "Bag" button shows and hides the
// window.
#pragma once

#include "DemoBag.h"

#include "controls/QzButton.h"
#include "controls/QzList.h"
#include "controls/QzScrollButton.h"
#include "controls/QzSlider.h"
#include "controls/QzStatic.h"
#include "controls/QzTree.h"
#include "framework/QzDialog.h"
#include "textinput/QzEditEx.h"

#include <string>
#include <vector>

class CCollectionsDialog : public QzGui::CQzDialog
{
public:
    static constexpr DWORD kId = 700;

    CCollectionsDialog();
    // The back is the library's: a device that keeps what it drew repeats it.
    bool HasStockBack() const override { return true; }

    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    void CreateCtrls() override;
    void OnInitDialog(uint64_t nParam) override;
    // A reload of the layout empties the chat history: SaveState keeps its rows, selection and
    // scroll position, RestoreState puts them back into the reloaded list.
    void SaveState();
    void RestoreState();

private:
    struct ChatRow
    {
        std::string text;
        DWORD dwColor = 0;
        DWORD dwTime = 0;
        bool bBlink = false;
    };
    struct ChatState
    {
        std::vector<ChatRow> rows;
        int nSelected = -1;
        int nTop = 0;
    };

    void FillBag();
    void FillQuests();
    void FillChat();
    void MarkOlderLines();
    // A click on the bag: the item under the mouse is marked and named.
    void OnBagClick();
    void OnSay();
    void OnSmile();
    // Sends the typed line into the history, or a greeting when nothing is typed.
    void Send();
    void OnClose();
    void AddChatRow(const char* pszText, DWORD dwColor, const char* pszTip, bool bBlink);

    QzGui::CQzStatic m_bagCaption;
    QzGui::CQzStatic m_questCaption;
    QzGui::CQzStatic m_chatCaption;
    QzGui::CQzStatic m_picked;
    CDemoBag m_bag;
    QzGui::CQzTree m_quests;
    QzGui::CQzScrollButton m_questUp;
    QzGui::CQzScrollButton m_questDown;
    QzGui::CQzSlider m_questSlider;
    QzGui::CQzList m_chat;
    QzGui::CQzScrollButton m_chatUp;
    QzGui::CQzScrollButton m_chatDown;
    QzGui::CQzSlider m_chatSlider;
    QzGui::CQzEditEx m_chatInput;
    QzGui::CQzButton m_smile;
    QzGui::CQzButton m_say;
    QzGui::CQzButton m_close;
    // The tip of each chat row ("" for none), which the list keeps but does not give back.
    std::vector<std::string> m_vecChatTips;
    ChatState m_saved;
    int m_nSaid = 0;
    bool m_bStarted = false;
};
