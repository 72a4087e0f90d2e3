#ifndef IO_CSIZEDFILE_H
#define IO_CSIZEDFILE_H

#include <io/CFilePtr.h>

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

    std::int64_t GetSize() const noexcept { return m_nSize; }

    /// Reads the value that stands at `nPos`.
    /// @return false when it does not lie in the file whole.
    template <class T>
    bool ReadAt(std::int64_t nPos, T& value)
    {
        static_assert(std::is_trivially_copyable_v<T>);
        const auto nSize = static_cast<std::int64_t>(sizeof value);
        return nPos >= 0 && nSize <= m_nSize && nPos <= m_nSize - nSize &&
               fseeko(m_pFile.get(), static_cast<off_t>(nPos), SEEK_SET) == 0 &&
               std::fread(&value, sizeof value, 1, m_pFile.get()) == 1;
    }

private:
    CFilePtr m_pFile;
    std::int64_t m_nSize = 0;
};

#endif
