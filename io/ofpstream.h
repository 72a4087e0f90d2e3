#ifndef IO_OFPSTREAM_H
#define IO_OFPSTREAM_H

#include <io/CFilePtr.h>
#include <io/LittleEndian.h>
#include <zor0lang/String.h>

#include <array>
#include <cstddef>

/// A binary file being written, behind a prologue of five bytes. Not buffered: hand it large blocks.
class ofpstream
{
public:
    /// Opens the file, emptying one that exists, and writes the prologue.
    ///
    /// @param pTag      kept, not written.
    /// @param nVersion  kept, not written.
    ofpstream(const zor::String& sPath, const char* pTag, short nVersion);

    /// @return whether the file could not be opened. It does not turn true later.
    bool IsFailed() const noexcept { return m_pFile == nullptr; }

    /// KEPT: whether the bytes arrive is not told. After the first that did not, nothing more is written.
    void Write(const void* pBytes, std::size_t nNumBytes) noexcept;

    /// Writes one number, little-endian.
    template <class Number>
    void WriteNumber(Number number) noexcept
    {
        std::array<unsigned char, sizeof number> acBytes;
        LittleEndian::Put(acBytes.data(), number);
        Write(acBytes.data(), acBytes.size());
    }

    const zor::String& GetTag() const noexcept { return m_sTag; }
    short GetVersion() const noexcept { return m_nVersion; }

private:
    CFilePtr m_pFile;
    zor::String m_sTag;
    short m_nVersion;
};

#endif
