// A static whose caption runs as a marquee: a copy of the text enters at the right edge, moves
// left 2 pixels a step, is eaten character by character at the left edge, and after a pause a
// new copy enters. Characters sit on the fixed cell width of the control's font; a two-byte
// character is never split. Creation, tips and messages are the static's.
#pragma once

#include "controls/QzStatic.h"

#include <string>
#include <vector>

namespace QzGui
{

// One copy of the caption on its way.
struct QzMarqueeRun
{
    int nX = 0;          // pixels
    int nIndex = 0;      // first byte of the caption still shown
    int nOffset = 0;     // pixels the text is drawn right of nX while its first character leaves
    std::string strText; // the part of the caption shown
};

class CQzWHLStatic : public CQzStatic
{
public:
    CQzWHLStatic() = default;
    CQzWHLStatic(const CQzWHLStatic&) = default;
    CQzWHLStatic& operator=(const CQzWHLStatic&) = default;

    ~CQzWHLStatic() override;
    BOOL LoadWndInfo() override;
    // Sets the caption as every control does, then starts the marquee again.
    void SetWindowText(const char* pszText) override;
    void ShowText() override;

    // Milliseconds per 2-pixel step (0 keeps the current rate) and the pause before a new copy.
    void SetMoveParam(DWORD nRate, DWORD nMoveTime);
    // No copy on the way; the next frame takes the first step and sends the first copy.
    void Restart();
    // One step at the time given: a new copy when it is due, the finished one leaves, every
    // copy moves.
    void Step(DWORD dwNow);
    // Pixels of run i's text, and the room it has to the next run (2 cells apart) or to the
    // right edge; -1 for a bad index.
    int GetRunWidth(int i) const;
    int GetRunSpace(int i) const;

private:
    int CellWidth() const;
    bool IsSpawnDue(DWORD dwNow) const;
    void Advance(int i);
    // The visible text of a run at the left edge, and of one still coming in; n cells of room.
    void EatFirst(QzMarqueeRun& run, int n) const;
    void ComeIn(QzMarqueeRun& run, int n) const;

    DWORD m_nMoveTime = 1000;
    DWORD m_nMoveRate = 100;
    DWORD m_dwLastStep = 0;
    DWORD m_dwLastSpawn = 0;
    std::vector<QzMarqueeRun> m_vecRun;
};

} // namespace QzGui
