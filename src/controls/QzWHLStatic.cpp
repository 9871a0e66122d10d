#include "controls/QzWHLStatic.h"

#include "layout/IQzGuiWndInfo.h"
#include "layout/QzExtraValue.h"
#include "platform/services/QzClock.h"
#include "platform/services/QzNumeric.h"
#include "platform/services/QzText.h"

#include <algorithm>
#include <climits>
#include <cstdint>

namespace QzGui
{

namespace
{

// Pixels a copy moves per step.
constexpr int kStepPixels = 2;
// The rate taken for a configured rate below 1.
constexpr DWORD kDefaultMoveRate = 100;
// Cell widths are cut to this (the largest font size a record or SetFontSize can give), so that
// pixel sums stay inside the int range.
constexpr int kMaxCellWidth = 65535;

// The byte count of the caption part from nStart, one fewer when its last byte would be the
// first half of a two-byte character.
int64_t KeepWhole(const std::string& text, int64_t nStart, int64_t nCount)
{
    if (nCount > 0 &&
        QzPlatform::IsLeadByteAt(text.c_str(), QzPlatform::ClampToInt(nStart + nCount - 1)))
        return nCount - 1;
    return nCount;
}

} // namespace

CQzWHLStatic::~CQzWHLStatic() = default;

// "WHLMoveRate" is the milliseconds per step; "WHLMoveLength" the pixels the text travels
// during the pause before a new copy.
BOOL CQzWHLStatic::LoadWndInfo()
{
    if (!CQzStatic::LoadWndInfo())
        return 0;
    if (!m_pWndInfo)
        return 1;
    int nValue = 0;
    if (ReadExtraInt(m_pWndInfo, "WHLMoveRate", &nValue))
        m_nMoveRate = nValue < 1 ? kDefaultMoveRate : static_cast<DWORD>(nValue);
    if (ReadExtraInt(m_pWndInfo, "WHLMoveLength", &nValue) && nValue >= 1)
    {
        const uint64_t nTime = static_cast<uint64_t>(nValue / kStepPixels) * m_nMoveRate;
        m_nMoveTime = static_cast<DWORD>(std::min<uint64_t>(nTime, UINT32_MAX));
    }
    return 1;
}

void CQzWHLStatic::SetWindowText(const char* pszText)
{
    CQzStatic::SetWindowText(pszText);
    Restart();
}

void CQzWHLStatic::SetMoveParam(DWORD nRate, DWORD nMoveTime)
{
    m_nMoveTime = nMoveTime;
    if (nRate > 0)
        m_nMoveRate = nRate;
}

// Both times are set one period back, so that the first step and the first copy come at once.
void CQzWHLStatic::Restart()
{
    m_vecRun.clear();
    const DWORD dwNow = QzPlatform::NowMs();
    m_dwLastStep = dwNow > m_nMoveRate ? dwNow - m_nMoveRate : dwNow;
    m_dwLastSpawn = dwNow > m_nMoveTime ? dwNow - m_nMoveTime : dwNow;
}

// ---------------------------------------------------------------------------------------------
// Drawing

// Steps when a step period has passed since the last one (elapsed time, so that a clock
// wrapping round does not stop the marquee), then draws each copy at the window's top.
void CQzWHLStatic::ShowText()
{
    if (m_strText.empty())
        return;
    if (m_dwLastStep == 0)
        Restart();
    const DWORD dwNow = QzPlatform::NowMs();
    if (dwNow - m_dwLastStep >= m_nMoveRate)
    {
        Step(dwNow);
        m_dwLastStep = dwNow;
    }
    for (const QzMarqueeRun& run : m_vecRun)
    {
        if (run.strText.empty())
            continue;
        const int x = QzPlatform::ClampToInt(static_cast<int64_t>(run.nX) + run.nOffset);
        DrawCaption(x, m_rcWindow.top, run.strText.c_str(), nullptr);
    }
}

// ---------------------------------------------------------------------------------------------
// Runs

int CQzWHLStatic::CellWidth() const
{
    return std::max(0, std::min(kMaxCellWidth, m_sizeFont.iWidth));
}

int CQzWHLStatic::GetRunWidth(int i) const
{
    if (i < 0 || static_cast<size_t>(i) >= m_vecRun.size())
        return -1;
    const size_t nBytes = m_vecRun[static_cast<size_t>(i)].strText.size();
    const uint64_t nWidth = static_cast<uint64_t>(nBytes) * static_cast<uint64_t>(CellWidth());
    return static_cast<int>(std::min<uint64_t>(nWidth, INT_MAX));
}

int CQzWHLStatic::GetRunSpace(int i) const
{
    if (i < 0 || static_cast<size_t>(i) >= m_vecRun.size())
        return -1;
    const size_t nAt = static_cast<size_t>(i);
    const int64_t nX = m_vecRun[nAt].nX;
    if (nAt + 1 == m_vecRun.size())
        return QzPlatform::ClampToInt(m_rcWindow.right - nX);
    return QzPlatform::ClampToInt(m_vecRun[nAt + 1].nX - 2 * static_cast<int64_t>(CellWidth()) -
                                  nX);
}

// A control narrower than one cell shows nothing and starts again at every step.
void CQzWHLStatic::Step(DWORD dwNow)
{
    const int w = CellWidth();
    if (w == 0 || GetWidth() / w <= 0)
    {
        Restart();
        return;
    }
    if (IsSpawnDue(dwNow))
    {
        m_vecRun.push_back({m_rcWindow.right, 0, 0, std::string()});
        m_dwLastSpawn = 0;
    }
    if (!m_vecRun.empty() && m_vecRun.front().nX == m_rcWindow.left &&
        m_vecRun.front().strText.empty())
    {
        m_vecRun.erase(m_vecRun.begin());
        m_dwLastSpawn = dwNow;
    }
    for (size_t i = 0; i < m_vecRun.size(); ++i)
        Advance(static_cast<int>(i));
}

// After the pause a copy enters: the first one at once, a further one only once the last copy
// has shown text and has left room for itself and two cells behind it.
bool CQzWHLStatic::IsSpawnDue(DWORD dwNow) const
{
    if (m_dwLastSpawn == 0 || dwNow - m_dwLastSpawn < m_nMoveTime)
        return false;
    if (m_vecRun.empty())
        return true;
    const int nLast = static_cast<int>(m_vecRun.size()) - 1;
    const int64_t nWidth = GetRunWidth(nLast);
    const int64_t nSpace = GetRunSpace(nLast);
    return nWidth > 0 && nSpace >= 1 && nSpace > nWidth + 2 * static_cast<int64_t>(CellWidth());
}

// Moves the run 2 pixels left (not past the left edge) and works out what of the caption it
// shows in the cells it has room for; with fewer than two cells it shows nothing.
void CQzWHLStatic::Advance(int i)
{
    QzMarqueeRun& run = m_vecRun[static_cast<size_t>(i)];
    const int64_t nLength = static_cast<int64_t>(m_strText.size());
    if (run.nIndex < 0 || run.nIndex + static_cast<int64_t>(1) > nLength)
    {
        run.strText.clear();
        return;
    }
    const int nLeft = m_rcWindow.left;
    run.nX = QzPlatform::ClampToInt(
        std::max<int64_t>(static_cast<int64_t>(run.nX) - kStepPixels, nLeft));
    const int n = GetRunSpace(i) / CellWidth();
    if (n < 2)
    {
        run.strText.clear();
        run.nIndex = 0;
        return;
    }
    if (run.nX == nLeft)
        EatFirst(run, n);
    else
        ComeIn(run, n);
}

// At the left edge the text slides on by its offset; once that is used up, the first character
// leaves and the offset becomes its width less one step.
void CQzWHLStatic::EatFirst(QzMarqueeRun& run, int n) const
{
    const int w = CellWidth();
    if (run.nOffset != 0)
    {
        run.nOffset = std::max(run.nOffset - kStepPixels, 0);
    }
    else if (QzPlatform::IsLeadByteAt(m_strText.c_str(), run.nIndex))
    {
        run.nOffset = 2 * w - kStepPixels;
        run.nIndex += 2;
    }
    else
    {
        run.nOffset = w - kStepPixels;
        run.nIndex += 1;
    }
    const int64_t nLength = static_cast<int64_t>(m_strText.size());
    if (run.nIndex > nLength - 1)
    {
        run.strText.clear();
        return;
    }
    const int64_t nRoom = std::min<int64_t>(nLength - run.nIndex, n - run.nOffset / w);
    const int64_t nCount = KeepWhole(m_strText, run.nIndex, nRoom);
    run.strText = m_strText.substr(static_cast<size_t>(run.nIndex),
                                   static_cast<size_t>(std::max<int64_t>(nCount, 0)));
}

// Coming in from the right, the run shows n - 1 bytes of the caption (one fewer when that would
// split a character), or all of it once it fits.
void CQzWHLStatic::ComeIn(QzMarqueeRun& run, int n) const
{
    const int64_t k = n - 1;
    if (k >= static_cast<int64_t>(m_strText.size()) - 1)
    {
        run.strText = m_strText;
        return;
    }
    const int64_t nCount = KeepWhole(m_strText, run.nIndex, k);
    if (run.nIndex >= nCount)
        run.strText.clear();
    else
        run.strText =
            m_strText.substr(static_cast<size_t>(run.nIndex), static_cast<size_t>(nCount));
}

} // namespace QzGui
