#include "textinput/QzEditExText.h"

#include "platform/system/QzSystem.h"
#include "textinput/QzEmotionCode.h"

#include <algorithm>

namespace QzGui
{

namespace
{

// "#" and two digits: the short emotion code that "#0%d" and "#%d" write.
constexpr int kShortCodeLength = 3;

bool IsDigit(char ch)
{
    return ch >= '0' && ch <= '9';
}

bool IsCodePageLead(char ch)
{
    return ::IsDBCSLeadByte(static_cast<BYTE>(ch)) != 0;
}

} // namespace

CQzEditExText::CQzEditExText(const std::string& strText, int nColumns, bool bWrap)
    : m_strText(strText)
{
    ClassifyBytes();
    WalkLines(nColumns, bWrap);
}

// Characters are counted from the start, so that a second byte is never taken for a first.
void CQzEditExText::ClassifyBytes()
{
    const int n = GetLength();
    m_vecKind.assign(static_cast<size_t>(n), kSingle);
    for (int i = 0; i < n; ++i)
    {
        if (!IsCodePageLead(m_strText[i]))
            continue;
        if (i + 1 == n)
        {
            m_vecKind[i] = kLoneLead;
            break;
        }
        m_vecKind[i] = kLead;
        m_vecKind[++i] = kTrail;
    }
}

// For byte i the step u that follows it (at least 1) decides: when it still fits in the
// columns and the byte is no LF, the line goes on; otherwise the line ends after byte i.
void CQzEditExText::WalkLines(int nColumns, bool bWrap)
{
    m_vecLineStart.assign(1, 0);
    if (!bWrap)
        return;
    int c = 0;
    for (int i = 0; i < GetLength(); ++i)
    {
        const int u = std::max(1, StepForward(i));
        if (c + u < nColumns && m_strText[i] != '\n')
        {
            ++c;
            continue;
        }
        m_vecLineStart.push_back(i + 1);
        c = 0;
    }
}

bool CQzEditExText::IsLeadAt(int i) const
{
    return i >= 0 && i < GetLength() && m_vecKind[i] == kLead;
}

bool CQzEditExText::IsLeadByteOnBoundary(int i) const
{
    return i >= 0 && i < GetLength() && (m_vecKind[i] == kLead || m_vecKind[i] == kLoneLead);
}

bool CQzEditExText::IsCrLfAt(int i) const
{
    return i >= 0 && i + 1 < GetLength() && m_strText[i] == '\r' && m_strText[i + 1] == '\n';
}

bool CQzEditExText::IsShortCodeAt(int i) const
{
    return i >= 0 && i + kShortCodeLength <= GetLength() && m_strText[i] == '#' &&
           IsDigit(m_strText[i + 1]) && IsDigit(m_strText[i + 2]);
}

int CQzEditExText::GetStepLength(int nDirection, int p) const
{
    return nDirection == 0 ? StepBackward(p) : StepForward(p);
}

// A short code counts only when it starts at byte 0, 1 or 2; a long one anywhere.
int CQzEditExText::StepBackward(int p) const
{
    if (IsCrLfAt(p - 2))
        return 2;
    int n = IsLeadAt(p - 2) ? 2 : 1;
    const char* pText = m_strText.c_str();
    if (p >= QZ_EMOTION_CODE_LENGTH)
    {
        if (IsEmotionCodeAt(pText, p - QZ_EMOTION_CODE_LENGTH, GetLength()))
            n += QZ_EMOTION_CODE_LENGTH - 1;
    }
    else if (p >= kShortCodeLength && IsShortCodeAt(p - kShortCodeLength))
    {
        n += kShortCodeLength - 1;
    }
    return p - n < 0 ? 0 : n;
}

// A short code counts only where no long one would fit; a CR LF right after the unit joins
// the step.
int CQzEditExText::StepForward(int p) const
{
    if (IsCrLfAt(p + 1))
        return 2;
    int n = IsLeadAt(p + 1) ? 2 : 1;
    const int nLength = GetLength();
    if (p + QZ_EMOTION_CODE_LENGTH < nLength)
    {
        if (IsEmotionCodeAt(m_strText.c_str(), p + 1, nLength))
            n += QZ_EMOTION_CODE_LENGTH - 1;
    }
    else if (p + kShortCodeLength < nLength && IsShortCodeAt(p + 1))
    {
        n += kShortCodeLength - 1;
    }
    if (IsCrLfAt(p + n + 1))
        n += 2;
    return p + n >= nLength ? 0 : n;
}

int CQzEditExText::SnapToUnit(int nIndex) const
{
    if (nIndex >= GetLength() - 1)
        return nIndex;
    const int nAhead = nIndex + StepForward(nIndex);
    return nAhead - StepBackward(nAhead + 1);
}

int CQzEditExText::GetLineOfChar(int i) const
{
    if (i < 0 || i >= GetLength())
        return 1;
    // Lines that start at or before i + 1 (the first always does).
    const auto it = std::upper_bound(m_vecLineStart.begin(), m_vecLineStart.end(), i + 1);
    return static_cast<int>(it - m_vecLineStart.begin());
}

int CQzEditExText::GetLineStart(int nLine) const
{
    if (nLine <= 1)
        return 0;
    if (nLine > GetLineCount())
        return GetLength();
    return m_vecLineStart[nLine - 1];
}

int CQzEditExText::GetLineLength(int nLine) const
{
    const int nStart = GetLineStart(nLine);
    const int nEnd = GetLineStart(nLine + 1);
    if (nEnd - nStart >= 2 && IsCrLfAt(nEnd - 2))
        return nEnd - nStart - 2;
    return nEnd - nStart;
}

QzEditPlace CQzEditExText::PlaceAfter(int nCount) const
{
    nCount = std::clamp(nCount, 0, GetLength());
    const int nLine = nCount == 0 ? 1 : GetLineOfChar(nCount - 1);
    return {nCount - GetLineStart(nLine), nLine};
}

int CQzEditExText::UnitLengthAt(const char* pText, int i, int n)
{
    const char ch = pText[i];
    if (ch == '\r' && i + 1 < n && pText[i + 1] == '\n')
        return 2;
    if (IsEmotionCodeAt(pText, i, n))
        return QZ_EMOTION_CODE_LENGTH;
    if (ch == '#' && i + kShortCodeLength <= n && IsDigit(pText[i + 1]) && IsDigit(pText[i + 2]))
        return kShortCodeLength;
    if (!IsCodePageLead(ch))
        return 1;
    return i + 1 < n ? 2 : 0;
}

} // namespace QzGui
