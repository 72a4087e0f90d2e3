#ifndef HOST_FILES_CBYTEREADER_H
#define HOST_FILES_CBYTEREADER_H

#include <cstdint>
#include <cstdio>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace zorcld
{

/// A file read from front to back in blocks: as bytes, lines or words. Memory: one block and the longest
/// word or line that is allowed.
class CByteReader
{
public:
    using TOnBlock = std::function<void(std::int64_t nPos, std::string_view sBlock)>;

    /// @throws CFailure when the file cannot be opened.
    explicit CByteReader(const std::string& sPath);

    std::int64_t GetSize() const { return m_nSize; }
    std::int64_t GetPos() const { return m_nFilePos - static_cast<std::int64_t>(m_nEnd - m_nPos); }

    /// Reads nothing again that lies in the block at hand.
    void SetPos(std::int64_t nPos);

    /// Reads the block at the position, or offers it again where it is at hand. @return false at the end of
    /// the file.
    bool ReadBlockAt(std::int64_t nPos);

    /// @param onBlock  gets each block that is read from now on, whole, and where it stands in the file.
    void SetOnBlock(TOnBlock onBlock) { m_onBlock = std::move(onBlock); }

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

    /// @return false when the file ends before.
    bool Read(void* pBytes, std::size_t nBytes);
    bool Skip(std::int64_t nBytes);

    /// Takes blanks, tabs and line ends, then the word behind them.
    /// @param sWord  stays as it is until the next call.
    /// @return false at the end of the file, or at a word of more than 255 bytes.
    bool ReadWord(std::string_view& sWord);

private:
    bool Fill();
    void OfferBlock() const;

    struct CCloser
    {
        void operator()(std::FILE* pFile) const { static_cast<void>(std::fclose(pFile)); }
    };

    std::unique_ptr<std::FILE, CCloser> m_pFile;
    std::int64_t m_nSize = 0;
    std::int64_t m_nFilePos = 0; // behind the block
    std::vector<char> m_vecBlock;
    std::size_t m_nPos = 0; // in the block
    std::size_t m_nEnd = 0;
    std::string m_sWord;
    TOnBlock m_onBlock;
};

} // namespace zorcld

#endif
