#ifndef IO_NATIVE_OFPSTREAM_H
#define IO_NATIVE_OFPSTREAM_H

#include <formats/CFilePtr.h>
#include <formats/LittleEndian.h>
#include <zor0lang/String.h>

#include <cstddef>
#include <cstdint>
#include <memory>

/// A binary file being written, behind a prologue of five bytes.
///
/// Bytes go to the file in blocks that begin at whole multiples of a block in file and memory: the system
/// takes those at half the cost of what lies across its pages.
class ofpstream
{
public:
    /// Bytes that may be put at the position.
    static constexpr std::size_t c_nMaxRoom = 128;

    /// Opens the file, emptying one that exists, and writes the prologue.
    ///
    /// @param pTag      kept, not written.
    /// @param nVersion  kept, not written.
    ofpstream(const zor::String& sPath, const char* pTag, short nVersion);

    /// Writes what is still in memory.
    ~ofpstream();

    ofpstream(const ofpstream&) = delete;
    ofpstream& operator=(const ofpstream&) = delete;

    /// Writes what is still in memory. Nothing is to be written afterwards.
    void Flush() noexcept;

    /// @return errno of the first write that failed; 0: the file has taken every byte given to it so far.
    int GetError() const noexcept { return m_nError; }

    /// @return length of the file with all that has been given to it.
    std::uint64_t GetNumBytes() const noexcept { return m_nNumBytes; }

    /// @return whether the file could not be opened.
    /// KEPT: it does not tell whether the bytes arrive. After the first that did not, nothing more is written
    /// (FullDisk_Kept, WriteToFile_FullDisk_Kept).
    bool IsFailed() const noexcept { return m_pFile == nullptr; }

    void Write(const void* pBytes, std::size_t nNumBytes) noexcept;

    /// Gives the position, with room for c_nMaxRoom bytes, to put bytes together in place. They belong to the
    /// file once the position is moved behind them, with MakeRoom or SetPos.
    unsigned char* GetPos() noexcept { return MakeRoom(m_pPos); }

    /// Moves the position to `pPos`, inside the room that was given last.
    /// @return the position, with room for c_nMaxRoom bytes again.
    unsigned char* MakeRoom(unsigned char* pPos) noexcept
    {
        return pPos < m_pBlockEnd ? pPos : WriteBlock(pPos);
    }

    /// Moves the position to `pPos`, inside the room that was given last.
    void SetPos(unsigned char* pPos) noexcept { m_pPos = pPos; }

    /// Writes one number, little-endian.
    template <class Number>
    void WriteNumber(Number number) noexcept
    {
        SetPos(LittleEndian::Put(GetPos(), number));
    }

    const zor::String& GetTag() const noexcept { return m_sTag; }
    short GetVersion() const noexcept { return m_nVersion; }

private:
    static constexpr std::size_t c_nBlock = std::size_t{1} << 18;
    unsigned char* WriteBlock(unsigned char* pPos) noexcept;
    void WriteOut(std::size_t nNumBytes) noexcept;

    std::unique_ptr<unsigned char[]> m_pMemory; // holds the block, and some room behind it
    unsigned char* m_pBlock;
    unsigned char* m_pPos;
    unsigned char* m_pBlockEnd; // the position may lie behind it, in the room
    CFilePtr m_pFile;
    zor::String m_sTag;
    short m_nVersion;
    std::uint64_t m_nNumBytes = 0; // written, or tried to
    int m_nError = 0;
};

#endif
