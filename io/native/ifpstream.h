#ifndef IO_NATIVE_IFPSTREAM_H
#define IO_NATIVE_IFPSTREAM_H

#include <formats/CFilePtr.h>
#include <formats/LittleEndian.h>
#include <zor0lang/String.h>

#include <array>
#include <cstddef>
#include <cstdint>

class IDlgProgress;

/// A binary file being read, behind its prologue of five bytes. It is not buffered: take large blocks.
class ifpstream
{
public:
    /// Opens the file, which is never created, and reads the prologue.
    explicit ifpstream(const zor::String& sPath);

    /// @return whether there is nothing to read from: the file could not be opened, is not a regular file, or
    ///         is shorter than the prologue. The answer does not change later.
    bool IsFailed() const noexcept { return m_bFailed; }

    /// @return whether the prologue's mark is another than `ofpstream` writes.
    bool IsForeign() const noexcept { return m_bForeign; }

    /// @return whether the rest of the prologue is exactly what `ofpstream` writes.
    bool IsNativeOrder() const noexcept { return m_bNativeOrder; }

    /// @return bytes from the position to the end of the file.
    std::uint64_t GetNumLeft() const noexcept { return m_nNumLeft; }

    /// Has `Read` tell what share of the file has been read, in percent: at its first call, and then at least
    /// every two pieces. @param pProgress  null: no calls. What it throws passes through.
    void SetProgress(IDlgProgress* pProgress) noexcept { m_pProgress = pProgress; }

    /// Reads up to `nNumBytes` bytes. @return how many there were; fewer only at the end of the file.
    std::size_t Read(void* pBytes, std::size_t nNumBytes);

    /// Reads one number, little-endian. Bytes behind the end of the file count as zero.
    template <class Number>
    Number ReadNumber()
    {
        std::array<unsigned char, sizeof(Number)> acBytes{};
        Read(acBytes.data(), acBytes.size());
        return LittleEndian::Get<Number>(acBytes.data());
    }

private:
    static constexpr std::size_t c_nPiece = std::size_t{1} << 22;
    std::size_t ReadPiece(void* pBytes, std::size_t nNumBytes) noexcept;
    void Report();

    CFilePtr m_pFile;
    std::uint64_t m_nSize = 0;
    std::uint64_t m_nNumLeft = 0;
    IDlgProgress* m_pProgress = nullptr;
    std::uint64_t m_nNextReport = 0; // bytes read before the next call
    bool m_bFailed = true;
    bool m_bForeign = false;
    bool m_bNativeOrder = false;
};

#endif
