#ifndef IO_PLY_CPLYBUFFER_H
#define IO_PLY_CPLYBUFFER_H

#include <cstddef>
#include <cstdio>
#include <memory>

/// A window of 10000 bytes that moves over the data of a PLY file.
///
/// The window is filled anew where a value does not lie in it whole, from the first byte of that value.
/// Bytes behind the end of the file keep what they held before, from the previous filling, or zero.
///
/// The file is read in larger blocks, in which the window moves; bytes of the file are not copied to fill it.
class CPlyBuffer
{
public:
    /// @param pFile  an unbuffered binary stream at the first byte to read; not null, not owned.
    ///
    /// Throws std::bad_alloc.
    explicit CPlyBuffer(std::FILE* pFile);

    /// Makes `nSize` bytes available at the position.
    ///
    /// KEPT: one byte left in the file is enough. A value that the end of the file cuts off is no failure; in
    /// place of the bytes that it lacks it has those that the window held there before
    /// (Read_CutOffValueKeepsOldBytes_Kept).
    ///
    /// @param nSize  at most 8.
    /// @return false when no byte is left.
    bool MakeAvailable(std::size_t nSize) { return m_nPos + nSize <= m_nValid || Fill(); }

    /// The bytes at the position.
    const unsigned char* GetPos() const noexcept { return m_pBlock.get() + m_nWindow + m_nPos; }

    /// How many bytes of the file lie in the window from the position on.
    std::size_t GetNumAhead() const noexcept { return m_nPos < m_nValid ? m_nValid - m_nPos : 0; }

    /// Moves the position on; it may leave the window.
    void Skip(std::size_t nSize) noexcept { m_nPos += nSize; }

    /// @return bytes of the file from the position on, 0 where it lies behind the end. Seeks to and fro.
    long CalcNumLeft() const;

private:
    static constexpr std::size_t c_nWindow = 10000;
    static constexpr std::size_t c_nBlock = std::size_t{1} << 17;

    bool Fill();
    void ReadBlock(std::size_t nNext);

    std::FILE* m_pFile;
    std::unique_ptr<unsigned char[]> m_pBlock;
    std::size_t m_nWindow = 0; // where the window begins in the block
    std::size_t m_nValid = 0;  // bytes of the file in the window
    std::size_t m_nPos = 0;    // in the window
    std::size_t m_nRead = 0;   // the stream stands behind the byte before this one of the block
    bool m_bEnd = false;       // the stream has come to its end
};

#endif
