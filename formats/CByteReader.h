#ifndef FORMATS_CBYTEREADER_H
#define FORMATS_CBYTEREADER_H

#include <formats/CFilePtr.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

/// A file read from front to back in blocks: as bytes or words. Memory: one block and the longest word that
/// is allowed.
class CByteReader
{
public:
    using TOnBlock = std::function<void(std::int64_t nPos, std::string_view sBlock)>;

    /// @param pFile  a binary stream that nothing has been read from; not null. It is at its start
    ///               afterwards, and unbuffered.
    ///
    /// Throws std::bad_alloc.
    explicit CByteReader(CFilePtr pFile);

    /// The stream, which the reader keeps; it stands somewhere behind the position.
    std::FILE* GetFile() const noexcept { return m_pFile.get(); }

    std::int64_t GetSize() const noexcept { return m_nSize; }
    std::int64_t GetPos() const noexcept { return m_nFilePos - static_cast<std::int64_t>(m_nEnd - m_nPos); }

    /// Moves the position; behind the end of the file means to the end. Reads nothing again that lies in the
    /// block at hand.
    void SetPos(std::int64_t nPos);

    /// Reads the block at the position, or offers it again where it is at hand. @return false at the end of
    /// the file.
    bool ReadBlockAt(std::int64_t nPos);

    /// @param onBlock  gets the block at hand and each that is read from now on, whole, and where it stands
    ///                 in the file.
    void SetOnBlock(TOnBlock onBlock);

    /// @return the next byte without taking it; -1 at the end of the file.
    int Peek()
    {
        if (m_nPos == m_nEnd && !Fill())
            return -1;
        return static_cast<unsigned char>(m_vecBlock[m_nPos]);
    }

    /// @return the next byte; -1 at the end of the file.
    int Get()
    {
        const int n = Peek();
        m_nPos += n < 0 ? 0U : 1U;
        return n;
    }

    /// @return how many bytes there were; fewer only at the end of the file.
    std::size_t ReadUpTo(void* pBytes, std::size_t nBytes);

    /// @return false when the file ends before.
    bool Read(void* pBytes, std::size_t nBytes) { return ReadUpTo(pBytes, nBytes) == nBytes; }
    bool Skip(std::int64_t nBytes);

    /// Takes blanks, tabs and line ends, then the word behind them.
    /// @param sWord  stays as it is until the next call.
    /// @return false at the end of the file, or at a word of more than 255 bytes.
    bool ReadWord(std::string_view& sWord);

private:
    bool Fill();
    void OfferBlock() const;

    CFilePtr m_pFile;
    std::int64_t m_nSize = 0;
    std::int64_t m_nFilePos = 0; // behind the block
    std::vector<char> m_vecBlock;
    std::size_t m_nPos = 0; // in the block
    std::size_t m_nEnd = 0;
    std::string m_sWord;
    TOnBlock m_onBlock;
};

#endif
