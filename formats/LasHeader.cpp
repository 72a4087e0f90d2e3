#include <formats/LasHeader.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>

namespace
{

/// Who defines the record that says how points are compressed.
constexpr const char* c_sCompressor = "laszip encoded";

/// What stands before the data of a record.
constexpr std::int64_t c_nRecordHeadSize = 54;

struct CCloser
{
    void operator()(std::FILE* pFile) const { static_cast<void>(std::fclose(pFile)); }
};

using CFile = std::unique_ptr<std::FILE, CCloser>;

/// Bytes of a file. What lies behind its end reads as zero.
class CBytes
{
public:
    explicit CBytes(std::string sBytes) : m_sBytes(std::move(sBytes)) {}

    std::size_t GetSize() const { return m_sBytes.size(); }

    /// The value at `nPos`, in this machine's byte order, which is the file's.
    template <class T>
    T Get(std::size_t nPos) const
    {
        T value{};
        if (sizeof value <= m_sBytes.size() && nPos <= m_sBytes.size() - sizeof value)
            std::memcpy(&value, m_sBytes.data() + nPos, sizeof value);
        return value;
    }

    /// The text of `nSize` bytes from `nPos` on: up to a zero, without blanks at its end; what cannot be
    /// printed as '?'.
    std::string GetText(std::size_t nPos, std::size_t nSize) const
    {
        std::string sText = nPos < m_sBytes.size() ? m_sBytes.substr(nPos, nSize) : std::string();
        sText.resize(std::min(sText.size(), sText.find('\0')));
        sText.resize(sText.find_last_not_of(' ') + 1);
        std::replace_if(
            sText.begin(), sText.end(), [](char c) { return c < ' ' || c > '~'; }, '?');
        return sText;
    }

private:
    std::string m_sBytes;
};

/// Up to `nSize` bytes of the file from `nPos` on.
CBytes ReadBytes(std::FILE* pFile, std::int64_t nPos, std::size_t nSize)
{
    std::string sBytes(nSize, '\0');
    const bool bFound = fseeko(pFile, static_cast<off_t>(nPos), SEEK_SET) == 0;
    sBytes.resize(bFound ? std::fread(sBytes.data(), 1, nSize, pFile) : 0);
    return CBytes(std::move(sBytes));
}

std::int64_t GetFileSize(std::FILE* pFile)
{
    return fseeko(pFile, 0, SEEK_END) == 0 ? static_cast<std::int64_t>(ftello(pFile)) : 0;
}

/// What every version has.
void TakeFacts(const CBytes& bytes, CLasHeader& header)
{
    header.nMajor = bytes.Get<std::uint8_t>(24);
    header.nMinor = bytes.Get<std::uint8_t>(25);
    header.sSystem = bytes.GetText(26, 32);
    header.sSoftware = bytes.GetText(58, 32);
    header.nDay = bytes.Get<std::uint16_t>(90);
    header.nYear = bytes.Get<std::uint16_t>(92);
    header.nHeaderSize = bytes.Get<std::uint16_t>(94);
    header.nPosPnts = bytes.Get<std::uint32_t>(96);
    header.nNumRecords = bytes.Get<std::uint32_t>(100);
    header.nFormat = bytes.Get<std::uint8_t>(104) & 0x3F;
    header.bCompressed = (bytes.Get<std::uint8_t>(104) & 0xC0) != 0;
    header.nPntSize = bytes.Get<std::uint16_t>(105);
    header.nNumLegacy = bytes.Get<std::uint32_t>(107);
    header.nNumPnts = header.nNumLegacy;
    header.vecNumByReturn.clear();
    for (std::size_t i = 0; i < 5; ++i)
        header.vecNumByReturn.push_back(bytes.Get<std::uint32_t>(111 + 4 * i));
    for (std::size_t i = 0; i < 3; ++i)
    {
        header.adScale[i] = bytes.Get<double>(131 + 8 * i);
        header.adOffset[i] = bytes.Get<double>(155 + 8 * i);
        header.adMax[i] = bytes.Get<double>(179 + 16 * i);
        header.adMin[i] = bytes.Get<double>(187 + 16 * i);
    }
}

/// Counts beyond 32 bits and for 15 returns, from LAS 1.4 on.
void TakeLaterFacts(const CBytes& bytes, CLasHeader& header)
{
    header.nNumExtendedRecords = bytes.Get<std::uint32_t>(243);
    if (header.nNumLegacy == 0)
        header.nNumPnts = bytes.Get<std::int64_t>(247);
    std::vector<std::int64_t> vecNumByReturn;
    for (std::size_t i = 0; i < 15; ++i)
        vecNumByReturn.push_back(bytes.Get<std::int64_t>(255 + 8 * i));
    // Some writers fill the earlier fields only.
    if (std::any_of(vecNumByReturn.begin(), vecNumByReturn.end(), [](std::int64_t n) { return n != 0; }))
        header.vecNumByReturn = std::move(vecNumByReturn);
}

/// The records follow each other between header and points, as far as they are there.
void TakeRecords(std::FILE* pFile, CLasHeader& header)
{
    const std::int64_t nEnd = std::min(header.nPosPnts, header.nFileSize);
    std::int64_t nPos = header.nHeaderSize;
    for (std::uint32_t i = 0; i < header.nNumRecords && header.vecRecords.size() < CLasHeader::c_nMaxRecords;
         ++i)
    {
        if (nPos + c_nRecordHeadSize > nEnd)
            return;
        const CBytes bytes = ReadBytes(pFile, nPos, static_cast<std::size_t>(c_nRecordHeadSize));
        CLasRecord record;
        record.sUser = bytes.GetText(2, 16);
        record.nId = bytes.Get<std::uint16_t>(18);
        record.nSize = bytes.Get<std::uint16_t>(20);
        record.sDescription = bytes.GetText(22, 32);
        nPos += c_nRecordHeadSize + record.nSize;
        if (nPos > nEnd)
            return;
        if (record.sUser == c_sCompressor)
            header.nCompressor = ReadBytes(pFile, nPos - record.nSize, 2).Get<std::uint16_t>(0);
        header.vecRecords.push_back(std::move(record));
    }
}

/// Where the table of chunks stands: the points begin with its position, or the file ends with it.
void TakePosTable(std::FILE* pFile, CLasHeader& header)
{
    if (header.nCompressor < 2)
        return;
    header.nPosTable = ReadBytes(pFile, header.nPosPnts, 8).Get<std::int64_t>(0);
    if (header.nPosTable == -1)
        header.nPosTable = ReadBytes(pFile, header.nFileSize - 8, 8).Get<std::int64_t>(0);
}

/// A compressed file too begins with a whole point, behind the position of its table if it has one.
void TakeFirstPnt(std::FILE* pFile, CLasHeader& header)
{
    const int nTablePos = header.nCompressor >= 2 ? 8 : 0;
    const CBytes bytes = ReadBytes(pFile, header.nPosPnts + nTablePos, 12);
    for (std::size_t i = 0; i < 3; ++i)
        header.adFirst[i] =
            static_cast<double>(bytes.Get<std::int32_t>(4 * i)) * header.adScale[i] + header.adOffset[i];
}

bool HasCompressorRecord(const CLasHeader& header)
{
    return std::any_of(header.vecRecords.begin(), header.vecRecords.end(),
                       [](const CLasRecord& record) { return record.sUser == c_sCompressor; });
}

std::string Text(std::int64_t n)
{
    return std::to_string(n);
}

/// Of sizes and positions in the header, the first that keeps the file from being read.
std::string FindWrongPlace(const CLasHeader& header)
{
    const int nMinHeader = header.nMinor >= 4 ? 375 : header.nMinor == 3 ? 235 : 227;
    if (header.nHeaderSize < nMinHeader)
        return "its header was never finished or is damaged: it says that it has " +
               Text(header.nHeaderSize) + " bytes, of version 1." + Text(header.nMinor) + " it has " +
               Text(nMinHeader) + " at least";
    if (header.nPosPnts > header.nFileSize)
        return "it is cut off or damaged: its points begin at byte " + Text(header.nPosPnts) +
               ", but it has " + Text(header.nFileSize) + " bytes";
    if (header.nPosPnts < header.nHeaderSize)
        return "its header is damaged: the points begin at byte " + Text(header.nPosPnts) +
               ", within the header";
    return {};
}

/// Of the point format and the records, the first thing that keeps the file from being read.
std::string FindWrongLayout(const CLasHeader& header)
{
    constexpr std::array<int, 11> c_anPntSize = {20, 28, 26, 34, 57, 63, 30, 36, 38, 59, 67};
    if (header.nFormat >= static_cast<int>(c_anPntSize.size()))
        return "its point format " + Text(header.nFormat) + " is unknown: 0 to 10 are known";
    const int nMinSize = c_anPntSize[static_cast<std::size_t>(header.nFormat)];
    if (header.nPntSize < nMinSize)
        return "its header is damaged: it gives a point " + Text(header.nPntSize) + " bytes, of format " +
               Text(header.nFormat) + " it has " + Text(nMinSize) + " at least";
    if (header.nNumRecords > (header.nPosPnts - header.nHeaderSize) / c_nRecordHeadSize)
        return "its header is damaged: it announces " + Text(header.nNumRecords) +
               " records, more than there is room for before the points";
    return {};
}

/// Of the compression, the first thing that keeps the file from being read.
std::string FindWrongCompression(const CLasHeader& header)
{
    if (header.vecRecords.size() < CLasHeader::c_nMaxRecords &&
        header.bCompressed != HasCompressorRecord(header))
        return header.bCompressed ? "it is marked as compressed, but does not say how"
                                  : "it says how its points are compressed, but is not marked as compressed";
    if (header.bCompressed && (header.nCompressor < 1 || header.nCompressor > 3))
        return "it is compressed in an unknown way (" + Text(header.nCompressor) + ")";
    if (header.nCompressor >= 2 &&
        (header.nPosTable < header.nPosPnts + 8 || header.nPosTable > header.nFileSize - 8))
        return "it is cut off or was never finished: the table of its compressed points is not in the file";
    return {};
}

std::string FindCause(const CLasHeader& header)
{
    std::string sCause = FindWrongPlace(header);
    if (sCause.empty())
        sCause = FindWrongLayout(header);
    if (sCause.empty())
        sCause = FindWrongCompression(header);
    return sCause;
}

} // namespace

std::int64_t CLasHeader::CalcNumHeld() const
{
    if (bCompressed || nPntSize <= 0)
        return -1;
    return std::max<std::int64_t>(nFileSize - nPosPnts, 0) / nPntSize;
}

std::string CLasHeader::GetDate() const
{
    const bool bLeapYear = (nYear % 4 == 0 && nYear % 100 != 0) || nYear % 400 == 0;
    const std::array<int, 12> anDays = {31, bLeapYear ? 29 : 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    if (nYear == 0)
        return {};
    int nLeft = nDay;
    for (std::size_t i = 0; i < anDays.size() && nLeft > 0; nLeft -= anDays[i++])
    {
        if (nLeft > anDays[i])
            continue;
        char acText[40];
        static_cast<void>(
            std::snprintf(acText, sizeof acText, "%04d-%02d-%02d", nYear, static_cast<int>(i) + 1, nLeft));
        return acText;
    }
    return std::to_string(nYear);
}

std::string ReadLasHeader(const std::string& sPath, CLasHeader& header)
{
    header = CLasHeader();
    const CFile pFile(std::fopen(sPath.c_str(), "rb"));
    if (pFile == nullptr)
        return std::string("cannot be opened: ") + std::strerror(errno);
    header.nFileSize = GetFileSize(pFile.get());
    const CBytes bytes = ReadBytes(pFile.get(), 0, 375);
    if (bytes.GetText(0, 4) != "LASF")
        return "it is no LAS file: it does not begin with LASF";
    TakeFacts(bytes, header);
    if (bytes.GetSize() < 227)
        return "it is cut off: it ends within the header, after " + Text(header.nFileSize) + " bytes";
    if (header.nMinor >= 4 && header.nHeaderSize >= 375)
        TakeLaterFacts(bytes, header);
    TakeRecords(pFile.get(), header);
    TakePosTable(pFile.get(), header);
    TakeFirstPnt(pFile.get(), header);
    return FindCause(header);
}
