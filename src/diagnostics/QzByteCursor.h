// A read position over a block of bytes (a file image), for parsers of outside data. Every
// read is checked against the block's end; one that does not fit fails the cursor for good and
// gives 0, so a parser reads a whole structure and tests Ok() once. Values are little-endian,
// as Windows files store them, whatever the host.
#pragma once

#include "platform/system/QzSystem.h"

#include <cstddef>

namespace QzGui
{

class CQzByteCursor
{
public:
    CQzByteCursor() = default;
    // nAlignBase is the block's own offset in the file, so that alignment follows the file.
    CQzByteCursor(const BYTE* pData, size_t nSize, size_t nAlignBase = 0);

    bool Ok() const { return m_bOk; }
    size_t Pos() const { return m_nPos; }
    size_t Size() const { return m_nSize; }
    // True when nCount bytes can be read at the position.
    bool Has(size_t nCount) const;

    void Seek(size_t nPos);
    void Skip(size_t nCount);
    // Moves to the next multiple of nBoundary counted from the start of the file.
    void Align(size_t nBoundary);

    WORD Word();
    DWORD Dword();
    short Short() { return static_cast<short>(Word()); }
    WORD PeekWord();

    // The cursor over nSize bytes at nOffset of this block, failed when they are not all here.
    CQzByteCursor Sub(size_t nOffset, size_t nSize) const;

private:
    const BYTE* Take(size_t nCount);

    const BYTE* m_pData = nullptr;
    size_t m_nSize = 0;
    size_t m_nPos = 0;
    size_t m_nAlignBase = 0;
    bool m_bOk = false;
};

} // namespace QzGui
