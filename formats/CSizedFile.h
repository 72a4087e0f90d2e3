#ifndef FORMATS_CSIZEDFILE_H
#define FORMATS_CSIZEDFILE_H

#include <formats/CFilePtr.h>

#include <cstdint>
#include <type_traits>

/// A file of which bytes are read where a position in it points, if they are there.
///
/// Values are in this machine's byte order.
class CSizedFile
{
public:
    /// @param pPath  not null. A file that cannot be opened or has no size counts as an empty one.
    explicit CSizedFile(const char* pPath) : m_pFile(std::fopen(pPath, "rb"))
    {
        if (m_pFile != nullptr && fseeko(m_pFile.get(), 0, SEEK_END) == 0)
            m_nSize = static_cast<std::int64_t>(ftello(m_pFile.get()));
    }

    bool IsOpen() const noexcept { return m_pFile != nullptr; }

    std::int64_t GetSize() const noexcept { return m_nSize; }

    /// Reads the `nNum` values that stand at `nPos`.
    /// @return false when they do not lie in the file whole.
    template <class T>
    bool ReadAt(std::int64_t nPos, T* pValues, std::size_t nNum)
    {
        static_assert(std::is_trivially_copyable_v<T>);
        const auto nSize = static_cast<std::int64_t>(nNum * sizeof(T));
        if (nPos < 0 || nSize > m_nSize || nPos > m_nSize - nSize || !Seek(nPos))
            return false;
        const bool bRead = std::fread(pValues, sizeof(T), nNum, m_pFile.get()) == nNum;
        m_nPos = bRead ? nPos + nSize : c_nNowhere;
        return bRead;
    }

    /// Reads the value that stands at `nPos`.
    template <class T>
    bool ReadAt(std::int64_t nPos, T& value)
    {
        return ReadAt(nPos, &value, 1);
    }

    /// The file for another reader, which may move its position; null when it could not be opened. Not owned.
    std::FILE* GetStream() noexcept
    {
        m_nPos = c_nNowhere;
        return m_pFile.get();
    }

private:
    static constexpr std::int64_t c_nNowhere = -1;

    /// Values that follow each other are read without seeking, which would empty the stream's buffer.
    bool Seek(std::int64_t nPos)
    {
        return nPos == m_nPos || fseeko(m_pFile.get(), static_cast<off_t>(nPos), SEEK_SET) == 0;
    }

    CFilePtr m_pFile;
    std::int64_t m_nSize = 0;
    std::int64_t m_nPos = c_nNowhere; // of the stream, where it is known
};

#endif
