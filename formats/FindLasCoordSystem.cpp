#include <formats/FindLasCoordSystem.h>

#include <formats/CGeoKeys.h>
#include <formats/CLasHeader.h>
#include <formats/CLasRecords.h>
#include <formats/CSizedFile.h>
#include <formats/CoordSystemFromWkt.h>

#include <algorithm>
#include <utility>

namespace
{

constexpr int c_nMaxRecords = 1000;           // that are looked at, before and behind the points
constexpr std::int64_t c_nMaxBytes = 1 << 20; // of a record: no system takes as many

/// The first record of each kind that matters here.
struct CProjectionRecords
{
    std::string sWkt;
    CGeoKeys keys;
};

template <class T>
void ReadArray(CSizedFile& file, std::int64_t nPos, std::int64_t nSize, std::vector<T>& vecValues)
{
    if (!vecValues.empty())
        return;
    vecValues.resize(static_cast<std::size_t>(nSize) / sizeof(T));
    if (!file.ReadAt(nPos, vecValues.data(), vecValues.size()))
        vecValues.clear();
}

void ReadText(CSizedFile& file, std::int64_t nPos, std::int64_t nSize, std::string& sText)
{
    if (!sText.empty())
        return;
    sText.resize(static_cast<std::size_t>(nSize));
    if (!file.ReadAt(nPos, sText.data(), sText.size()))
        sText.clear();
}

void TakeRecord(CSizedFile& file, int nId, std::int64_t nPos, std::int64_t nSize, CProjectionRecords& records)
{
    if (nSize <= 0 || nSize > c_nMaxBytes || nPos > file.GetSize() - nSize)
        return;
    if (nId == LasLayout::c_nWktId)
        ReadText(file, nPos, nSize, records.sWkt);
    else if (nId == LasLayout::c_nGeoKeysId)
        ReadArray(file, nPos, nSize, records.keys.vecDirectory);
    else if (nId == LasLayout::c_nGeoDoublesId)
        ReadArray(file, nPos, nSize, records.keys.vecDoubles);
    else if (nId == LasLayout::c_nGeoTextsId)
        ReadText(file, nPos, nSize, records.keys.sTexts);
}

void TakeLaterRecords(CSizedFile& file, const CLasHeader& header, CProjectionRecords& records)
{
    using namespace LasLayout;
    std::int64_t nPos = header.nPosLater;
    for (std::uint32_t n = 0; n < std::min<std::uint32_t>(header.nNumLater, c_nMaxRecords); ++n)
    {
        std::array<unsigned char, c_nLaterHeadSize> acHead{};
        if (nPos < header.nPosPnts || !file.ReadAt(nPos, acHead))
            return;
        const std::int64_t nSize = Get(acHead.data(), c_nLaterSize);
        nPos += c_nLaterHeadSize;
        if (nSize < 0 || nSize > file.GetSize() - nPos)
            return;
        if (GetText(acHead.data(), c_sRecordUser) == c_acProjection)
            TakeRecord(file, Get(acHead.data(), c_nRecordId), nPos, nSize, records);
        nPos += nSize;
    }
}

CProjectionRecords TakeRecords(CSizedFile& file, const CLasHeader& header)
{
    CProjectionRecords projection;
    CLasRecords records(file, header);
    CLasRecord record;
    for (int n = 0; n < c_nMaxRecords && records.Next(record); ++n)
        if (record.GetUser() == LasLayout::c_acProjection)
            TakeRecord(file, record.GetId(), record.GetPos(), record.GetSize(), projection);
    TakeLaterRecords(file, header, projection);
    std::string& sWkt = projection.sWkt;
    sWkt.resize(std::min(sWkt.find('\0'), sWkt.size()));
    return projection;
}

} // namespace

CCoordSystem FindLasCoordSystem(CSizedFile& file, const CLasHeader& header)
{
    const CProjectionRecords records = TakeRecords(file, header);
    CCoordSystem wkt = CoordSystemFromWkt(records.sWkt);
    CCoordSystem keys = records.keys.GetCoordSystem();
    const bool bWkt = wkt.IsStated() && (header.bWkt || !keys.IsStated());
    return bWkt ? std::move(wkt) : std::move(keys);
}

bool HasLasCoordSystem(CSizedFile& file, const CLasHeader& header)
{
    const CProjectionRecords records = TakeRecords(file, header);
    return !records.sWkt.empty() || !records.keys.vecDirectory.empty();
}
