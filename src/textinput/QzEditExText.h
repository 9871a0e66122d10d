// The text of an extended edit box seen as the box edits and lays it out: the units one caret
// step or one deletion covers (CR LF pairs, two-byte characters of the code page, emotion
// codes) and the lines of the layout walk on a grid of columns. A view over bytes the box
// owns: it is built for one operation and must not outlive a change of the text.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace QzGui
{

// Where the caret stands after a number of bytes: column (bytes since the line start) and
// line, counted from 1.
struct QzEditPlace
{
    int nColumn = 0;
    int nLine = 1;
};

class CQzEditExText
{
public:
    // Without wrapping the whole text is one line, whatever it holds.
    CQzEditExText(const std::string& strText, int nColumns, bool bWrap);

    int GetLength() const { return static_cast<int>(m_strText.size()); }

    // Bytes that one step covers: direction 0 looks backward from p (callers pass caret + 1),
    // 1 forward from p (callers pass the caret); 0 when no whole step fits.
    int GetStepLength(int nDirection, int p) const;
    // The caret index moved onto a unit boundary (one step forward, then one back); the last
    // byte and indexes past it stay.
    int SnapToUnit(int nIndex) const;

    // True when byte i opens a two-byte character whose second byte follows.
    bool IsLeadAt(int i) const;
    // True when byte i is a first byte of the code page on a character boundary, whether or
    // not its second byte is there yet (a lone first byte at the end of the text).
    bool IsLeadByteOnBoundary(int i) const;
    bool EndsInLoneLead() const { return !m_vecKind.empty() && m_vecKind.back() == kLoneLead; }

    int GetLineCount() const { return static_cast<int>(m_vecLineStart.size()); }
    // The line of the caret after byte i: 1 for an index outside the text.
    int GetLineOfChar(int i) const;
    // First byte of the line; the length for a line past the last.
    int GetLineStart(int nLine) const;
    // Bytes of the line without the CR LF that ends it.
    int GetLineLength(int nLine) const;
    // The walk over the first nCount bytes.
    QzEditPlace PlaceAfter(int nCount) const;

    // Length of the unit of outside text (pasted, set) starting at i, which holds n bytes:
    // CR LF 2, an emotion code 6 or 3, a two-byte character 2, else 1; 0 for a lone first
    // byte at the end.
    static int UnitLengthAt(const char* pText, int i, int n);

private:
    enum ByteKind : uint8_t
    {
        kSingle,
        kLead,
        kTrail,
        kLoneLead,
    };

    void ClassifyBytes();
    void WalkLines(int nColumns, bool bWrap);
    int StepBackward(int p) const;
    int StepForward(int p) const;
    bool IsCrLfAt(int i) const;
    bool IsShortCodeAt(int i) const;

    const std::string& m_strText;
    std::vector<ByteKind> m_vecKind;
    // Line l starts at m_vecLineStart[l - 1]; the first entry is 0.
    std::vector<int> m_vecLineStart;
};

} // namespace QzGui
