#include "diagnostics/QzByteCursor.h"

namespace QzGui
{

CQzByteCursor::CQzByteCursor(const BYTE* pData, size_t nSize, size_t nAlignBase)
    : m_pData(pData), m_nSize(pData ? nSize : 0), m_nAlignBase(nAlignBase), m_bOk(pData != nullptr)
{
}

bool CQzByteCursor::Has(size_t nCount) const
{
    return m_bOk && m_nPos <= m_nSize && nCount <= m_nSize - m_nPos;
}

void CQzByteCursor::Seek(size_t nPos)
{
    if (nPos > m_nSize)
        m_bOk = false;
    else
        m_nPos = nPos;
}

void CQzByteCursor::Skip(size_t nCount)
{
    if (!Has(nCount))
        m_bOk = false;
    else
        m_nPos += nCount;
}

void CQzByteCursor::Align(size_t nBoundary)
{
    const size_t nMisalign = (m_nAlignBase + m_nPos) % nBoundary;
    if (nMisalign != 0)
        Skip(nBoundary - nMisalign);
}

const BYTE* CQzByteCursor::Take(size_t nCount)
{
    if (!Has(nCount))
    {
        m_bOk = false;
        return nullptr;
    }
    const BYTE* pBytes = m_pData + m_nPos;
    m_nPos += nCount;
    return pBytes;
}

WORD CQzByteCursor::Word()
{
    const BYTE* pBytes = Take(2);
    return pBytes ? static_cast<WORD>(pBytes[0] | (pBytes[1] << 8)) : 0;
}

DWORD CQzByteCursor::Dword()
{
    const BYTE* pBytes = Take(4);
    if (!pBytes)
        return 0;
    return static_cast<DWORD>(pBytes[0]) | (static_cast<DWORD>(pBytes[1]) << 8) |
           (static_cast<DWORD>(pBytes[2]) << 16) | (static_cast<DWORD>(pBytes[3]) << 24);
}

WORD CQzByteCursor::PeekWord()
{
    const size_t nPos = m_nPos;
    const WORD nValue = Word();
    m_nPos = nPos;
    return nValue;
}

CQzByteCursor CQzByteCursor::Sub(size_t nOffset, size_t nSize) const
{
    if (!m_bOk || nOffset > m_nSize || nSize > m_nSize - nOffset)
        return CQzByteCursor();
    return CQzByteCursor(m_pData + nOffset, nSize, m_nAlignBase + nOffset);
}

} // namespace QzGui
