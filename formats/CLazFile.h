#ifndef FORMATS_CLAZFILE_H
#define FORMATS_CLAZFILE_H

#include <formats/CFilePatch.h>
#include <formats/CFilePtr.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <istream>
#include <streambuf>
#include <vector>

/// The bytes of a LAZ file for LASzip. They end where its calls have gone too deep, and where a code begins
/// with which it would leave its memory (CLazCode::BeginsAt): LASzip takes a code byte by byte, and
/// everything else in one piece.
///
/// Where the time of a point belongs to another sequence of times than that of the point before, LASzip calls
/// itself for what follows. Damaged data say so any number of times in a row, up to 36,000 times in a byte: a
/// stretch of 1.8 MB of the stack. So bytes are given out one by one, and each time the stack is looked at.
class CLazBuf final : public std::streambuf
{
public:
    /// @param pFile  null: no bytes. Not owned; nobody else moves its position while this object is used.
    /// @param vecPatches  what LASzip gets in place of bytes of the file.
    explicit CLazBuf(std::FILE* pFile, std::vector<CFilePatch> vecPatches = {});

    /// Depth counts from the caller on. Before the first call it counts from the constructor.
    void StartHere() noexcept { m_nStart = GetStackPos(); }

    /// How far the bytes have been taken.
    std::int64_t GetPos() const noexcept { return m_nPosBlock + (gptr() - m_vecBlock.data()); }

protected:
    int_type underflow() override;
    int_type uflow() override;
    std::streamsize xsgetn(char* pBytes, std::streamsize nNum) override;
    pos_type seekoff(off_type nOffset, std::ios_base::seekdir eFrom, std::ios_base::openmode eWhich) override;
    pos_type seekpos(pos_type nPos, std::ios_base::openmode eWhich) override;

private:
    static std::uintptr_t GetStackPos() noexcept
    {
        return reinterpret_cast<std::uintptr_t>(__builtin_frame_address(0));
    }

    bool IsTooDeep() const noexcept;
    bool ReadBlock();
    void PatchBlock();
    bool TakeBlockAt(std::int64_t nPos);
    bool IsAtBadCode();
    bool HasNext();

    std::FILE* m_pFile;
    std::vector<CFilePatch> m_vecPatches;
    std::int64_t m_nSize = 0;
    std::uintptr_t m_nStart;
    // The block holds the bytes of the file from m_nPosBlock to m_pEnd; the get area is always empty, and
    // lies before the next of them.
    std::vector<char> m_vecBlock;
    std::int64_t m_nPosBlock = 0;
    char* m_pEnd;
    bool m_bByByte = false; // the last bytes were given out one by one
};

/// A LAZ file as the stream that LASzip takes.
class CLazFile final : public std::istream
{
public:
    /// @param pPath  not null. A file that cannot be opened has no bytes.
    explicit CLazFile(const char* pPath)
        : std::istream(nullptr), m_pOwned(std::fopen(pPath, "rb")), m_buf(m_pOwned.get())
    {
        rdbuf(&m_buf);
    }

    /// @param pFile       as of CLazBuf.
    /// @param vecPatches  likewise.
    explicit CLazFile(std::FILE* pFile, std::vector<CFilePatch> vecPatches = {})
        : std::istream(nullptr), m_buf(pFile, std::move(vecPatches))
    {
        rdbuf(&m_buf);
    }

    void StartHere() noexcept { m_buf.StartHere(); }

    std::int64_t GetPos() const noexcept { return m_buf.GetPos(); }

private:
    CFilePtr m_pOwned; // of a file that it has opened itself
    CLazBuf m_buf;
};

#endif
