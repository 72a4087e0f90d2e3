#ifndef IO_CPLYBUFFER_H
#define IO_CPLYBUFFER_H

#include <array>
#include <cstddef>
#include <cstdio>
#include <cstring>

/// A window of 10000 bytes that moves over the data of a PLY file.
///
/// The window is filled anew where a value does not lie in it whole, from the first byte of that value.
/// Bytes behind the end of the file keep what they held before, from the previous filling, or zero.
class CPlyBuffer
{
public:
    /// @param pFile  an unbuffered binary stream at the first byte to read; not null, not owned.
    explicit CPlyBuffer(std::FILE* pFile) : m_pFile(pFile) {}

    /// Makes `nSize` bytes available at the position.
    ///
    /// KEPT: one byte is enough. A value that the end of the file cuts off is no failure; the bytes that
    /// it lacks are those which the window held there before.
    ///
    /// @param nSize  at most 8.
    /// @return false when no byte is left.
    bool MakeAvailable(std::size_t nSize) { return m_nPos + nSize <= m_nValid || Fill(); }

    /// The bytes at the position.
    const unsigned char* GetPos() const noexcept { return m_acBytes.data() + m_nPos; }

    /// How many bytes of the file lie in the window from the position on.
    std::size_t GetNumAhead() const noexcept { return m_nPos < m_nValid ? m_nValid - m_nPos : 0; }

    /// Moves the position on; it may leave the window.
    void Skip(std::size_t nSize) noexcept { m_nPos += nSize; }

    /// @return bytes of the file from the position on, 0 where it lies behind the end. Seeks to and fro.
    long CalcNumLeft() const;

private:
    bool Fill();

    std::FILE* m_pFile;
    std::size_t m_nPos = 0;
    std::size_t m_nValid = 0; // the stream stands behind the last of these bytes
    std::array<unsigned char, 10000> m_acBytes{};
};

#endif
