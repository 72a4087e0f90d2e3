#include <formats/CLasSource.h>

#include <formats/CLasGuard.h>
#include <formats/CLasLeftOut.h>
#include <formats/CLaszipReader.h>
#include <formats/LasFindings.h>

#include <laszip/laszip_api.h>

#include <algorithm>

namespace
{

/// LASzip splits what shares a byte, and keeps formats from 6 on apart.
CLasAttributes AttributesFromLasPnt(const laszip_point_struct& las, bool bLater)
{
    CLasAttributes attributes;
    attributes.nIntensity = las.intensity;
    if (bLater)
    {
        attributes.nClass = las.extended_classification;
        attributes.nReturn = las.extended_return_number;
        attributes.nFlags = las.extended_classification_flags;
        return attributes;
    }
    const unsigned nFlags = las.synthetic_flag * CLasAttributes::Flag_Synthetic +
                            las.keypoint_flag * CLasAttributes::Flag_KeyPoint +
                            las.withheld_flag * CLasAttributes::Flag_Withheld;
    attributes.nClass = las.classification;
    attributes.nReturn = las.return_number;
    attributes.nFlags = static_cast<std::uint8_t>(nFlags);
    return attributes;
}

/// The points of a LAS or LAZ file as LASzip reads them, with the colours of every format that has them.
class CLasSource final : public IPntSource
{
public:
    explicit CLasSource(CLasGuard& guard)
        : m_guard(guard), m_header(guard.GetHeader()),
          m_nPosColor(LasLayout::c_aFormats.at(static_cast<std::size_t>(m_header.nFormat)).nPosColor)
    {
    }

    bool HasColor() const override { return m_header.HasColor(); }

    std::int64_t GetNumAnnounced() const override
    {
        return std::max(m_header.GetNumAnnounced(), m_guard.GetLeastNumPnts());
    }

    std::string ForEach(const TOnPnt& onPnt) override
    {
        CLaszipReader reader(m_guard, CLaszipReader::Parts_AllButTimes);
        if (!reader.IsOpen())
            return "its LAS data are damaged or cut off";
        const laszip_point_struct* pPnt = nullptr;
        m_leftOut = CLasLeftOut();
        m_nNumRead = 0;
        while (IsMoreToRead(reader) && (pPnt = reader.Read()) != nullptr)
        {
            ++m_nNumRead;
            const CSourcePnt pnt = SourceFromLasPnt(*pPnt);
            if (!m_isCounted || m_isCounted(pnt))
                m_leftOut.Add(*pPnt);
            onPnt(pnt);
        }
        m_nNumBytesLeft = std::max<std::int64_t>(m_header.FindPosEnd() - reader.GetPos(), 0);
        return {};
    }

    std::string ForEachPlace(const TOnPlaces& onPlaces) override
    {
        return m_header.bCompressed ? ForEachLazPlace(onPlaces) : ForEachLasPlace(onPlaces);
    }

    std::optional<CPlainPnts> FindPlainPnts() const override
    {
        return m_header.bCompressed ? std::nullopt : std::optional<CPlainPnts>(GetPlainPnts());
    }

    std::string ForEachRecord(const TOnRecords& onRecords) override
    {
        constexpr std::size_t c_nBlock = std::size_t{1} << 17U;
        return ReadRecords(std::max<std::size_t>(c_nBlock / GetPlainPnts().nSize, 1), onRecords);
    }

    std::int64_t GetNumUntaken() const override
    {
        return std::max<std::int64_t>(m_nNumRead - m_header.GetNumAnnounced(), 0);
    }

    /// Of a compressed file, only reading it tells how many points it holds.
    std::vector<CFinding> GetFindings() const override
    {
        if (m_header.bCompressed && m_nNumRead < m_header.GetNumAnnounced())
            return {FindUnreadPnts(m_header.GetNumAnnounced(), m_nNumRead, true)};
        if (m_nNumRead >
            std::max(m_header.GetNumAnnounced(), m_guard.GetLeastNumPnts())) // else the head tells
            return {FindUntakenPnts(m_header.GetNumAnnounced(), m_nNumRead, true, true)};
        if (m_guard.IsOneStream() && m_nNumBytesLeft > 0)
            return {FindBytesBehind(m_header.GetNumAnnounced(), m_nNumBytesLeft)};
        return {};
    }

    void CountLeftOutOf(const TIsCounted& isCounted) override { m_isCounted = isCounted; }

    std::vector<CLeftOut> GetLeftOut() const override
    {
        const auto nFormat = static_cast<unsigned>(m_header.nFormat);
        std::vector<CLeftOut> vecLeftOut =
            m_leftOut.List(LasLayout::HasInfrared(nFormat), LasLayout::HasWaveforms(nFormat));
        if (m_guard.GetCause().empty() && m_guard.HasCoordSystem())
            vecLeftOut.push_back({"coordinate system"});
        return vecLeftOut;
    }

private:
    /// Are there points left, announced or not?
    bool IsMoreToRead(const CLaszipReader& reader) const
    {
        if (m_nNumRead >= m_guard.GetMaxNumPnts())
            return false;
        return m_nNumRead < GetNumAnnounced() || reader.GetPos() < m_guard.GetPosEnd();
    }

    CPlainPnts GetPlainPnts() const
    {
        return {m_header.adScale, m_header.adOffset, static_cast<std::size_t>(m_header.CalcPntSize()),
                m_nPosColor};
    }

    /// Points that are not compressed stand one behind the other: no need of LASzip, which takes eight times
    /// as long.
    std::string ReadRecords(std::size_t nAtOnce, const TOnRecords& onRecords)
    {
        const std::size_t nSize = GetPlainPnts().nSize;
        std::FILE* const pFile = m_guard.GetStream();
        m_nNumRead = 0;
        if (fseeko(pFile, static_cast<off_t>(m_header.nPosPnts), SEEK_SET) != 0)
            return "its LAS data are damaged or cut off";
        std::vector<unsigned char> vecBytes(nAtOnce * nSize);
        const std::int64_t nNumAll = std::min(GetNumAnnounced(), m_guard.GetMaxNumPnts());
        while (m_nNumRead < nNumAll)
        {
            const std::size_t nWanted = std::min(static_cast<std::size_t>(nNumAll - m_nNumRead), nAtOnce);
            const std::size_t nNum = std::fread(vecBytes.data(), nSize, nWanted, pFile);
            m_nNumRead += static_cast<std::int64_t>(nNum);
            if (nNum > 0)
                onRecords(vecBytes.data(), nNum);
            if (nNum < nWanted)
                break;
        }
        m_nNumBytesLeft = 0;
        return {};
    }

    std::string ForEachLasPlace(const TOnPlaces& onPlaces)
    {
        const CPlainPnts plain = GetPlainPnts();
        std::vector<CSourcePnt> vecPnts(CalcNumAtOnce(plain.nSize));
        return ReadRecords(vecPnts.size(),
                           [&](const unsigned char* pRecords, std::size_t nNum)
                           {
                               for (std::size_t i = 0; i < nNum; ++i)
                                   vecPnts[i] = plain.Read(pRecords + i * plain.nSize);
                               onPlaces(vecPnts.data(), nNum);
                           });
    }

    std::string ForEachLazPlace(const TOnPlaces& onPlaces)
    {
        CLaszipReader reader(m_guard, CLaszipReader::Parts_AllButTimes);
        if (!reader.IsOpen())
            return "its LAS data are damaged or cut off";
        const laszip_point_struct* pPnt = nullptr;
        std::vector<CSourcePnt> vecPnts;
        const std::size_t nAtOnce = CalcNumAtOnce(sizeof(CSourcePnt));
        vecPnts.reserve(nAtOnce);
        m_nNumRead = 0;
        while (IsMoreToRead(reader) && (pPnt = reader.Read()) != nullptr)
        {
            ++m_nNumRead;
            vecPnts.push_back(PlaceFromLasPnt(*pPnt));
            if (vecPnts.size() < nAtOnce)
                continue;
            onPlaces(vecPnts.data(), vecPnts.size());
            vecPnts.clear();
        }
        if (!vecPnts.empty())
            onPlaces(vecPnts.data(), vecPnts.size());
        m_nNumBytesLeft = std::max<std::int64_t>(m_header.FindPosEnd() - reader.GetPos(), 0);
        return {};
    }

    CSourcePnt Place(std::int32_t x, std::int32_t y, std::int32_t z) const
    {
        CSourcePnt pnt;
        pnt.x = x * m_header.adScale[0] + m_header.adOffset[0];
        pnt.y = y * m_header.adScale[1] + m_header.adOffset[1];
        pnt.z = z * m_header.adScale[2] + m_header.adOffset[2];
        return pnt;
    }

    CSourcePnt PlaceFromLasPnt(const laszip_point_struct& las) const
    {
        CSourcePnt pnt = Place(las.X, las.Y, las.Z);
        if (!HasColor())
            return pnt;
        pnt.r = las.rgb[0];
        pnt.g = las.rgb[1];
        pnt.b = las.rgb[2];
        return pnt;
    }

    CSourcePnt SourceFromLasPnt(const laszip_point_struct& las) const
    {
        CSourcePnt pnt = PlaceFromLasPnt(las);
        pnt.attributes = AttributesFromLasPnt(las, m_header.nFormat >= LasLayout::c_nFirstLaterFormat);
        return pnt;
    }

    CLasGuard& m_guard;
    const CLasHeader& m_header;
    std::size_t m_nPosColor; // in a point; 0: none
    std::int64_t m_nNumRead = 0;
    std::int64_t m_nNumBytesLeft = 0; // behind the last point
    CLasLeftOut m_leftOut;
    TIsCounted m_isCounted; // empty: every point is
};

} // namespace

CMadeSource MakeLasSource(CLasGuard& guard)
{
    if (!guard.GetCause().empty())
        return {nullptr, guard.GetCause()};
    return {std::make_unique<CLasSource>(guard), {}};
}

bool HasLasColors(CLasGuard& guard)
{
    const CLasHeader& header = guard.GetHeader();
    if (!header.HasColor())
        return false;
    CLaszipReader reader(guard, CLaszipReader::Parts_AllButTimes);
    if (!reader.IsOpen())
        return false;
    const std::int64_t nNumPnts = std::min(header.nNumPnts, guard.GetMaxNumPnts());
    const laszip_point_struct* pPnt = nullptr;
    for (std::int64_t i = 0; i < nNumPnts && (pPnt = reader.Read()) != nullptr; ++i)
        if ((pPnt->rgb[0] | pPnt->rgb[1] | pPnt->rgb[2]) != 0)
            return true;
    return false;
}
