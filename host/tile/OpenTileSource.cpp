#include <host/tile/OpenTileSource.h>

#include <formats/CloudLimits.h>
#include <formats/Compact.h>
#include <host/files/CFileKind.h>
#include <host/files/CInputFile.h>
#include <host/files/OpenInputFile.h>
#include <host/output/CFailure.h>
#include <host/output/FormatCount.h>
#include <host/tile/CNativePnts.h>
#include <host/tile/CPlainPlaces.h>
#include <host/tile/FailForReach.h>

#include <fmt/format.h>

#include <algorithm>
#include <optional>

namespace zorcld
{

namespace
{

/// Ends a pass over a source, which goes on to the end otherwise.
struct CFoundFirst
{
    TOrigin origin;
};

/// The points of a file as the file means them.
class CMeantPnts final : public ITileSource
{
public:
    explicit CMeantPnts(std::unique_ptr<CInputFile> pFile)
        : m_pFile(std::move(pFile)), m_pSource(m_pFile->MakeSource())
    {
        if (m_pSource == nullptr)
            throw CFailure(m_pFile->GetPath(),
                           "this program is built without LASzip, which tiles are cut with");
    }

    bool HasColor() const override { return m_pSource->HasColor(); }

    std::int64_t GetNumAnnounced() const override { return m_pSource->GetNumAnnounced(); }

    CTileUnits GetUnits() const override
    {
        const CCoordSystem& coords = m_pFile->GetFacts().coords;
        if (coords.plan.bAngle)
            return {0.0, 0.0, true};
        return {coords.GetPlanMetres(), coords.GetHeightMetres(), false};
    }

    std::optional<TOrigin> FindOrigin() override
    {
        m_nNumNotFinite = 0;
        try
        {
            static_cast<void>(m_pSource->ForEach(
                [this](const CSourcePnt& pnt)
                {
                    if (pnt.IsFinite())
                        throw CFoundFirst{
                            {SaturateToFloat(pnt.x), SaturateToFloat(pnt.y), SaturateToFloat(pnt.z)}};
                    ++m_nNumNotFinite;
                }));
        }
        catch (const CFoundFirst& found)
        {
            return found.origin;
        }
        return {};
    }

    std::int64_t GetNumNotFinite() const override { return m_nNumNotFinite; }

    void ForEach(const TOrigin& origin, const TOnPnts& onPnts) override
    {
        m_nNumNotFinite = 0;
        CPlaced placed;
        const auto handOn = [&](std::size_t nLeast)
        {
            if (placed.nNum < nLeast)
                return;
            placed.vecPnts.resize(placed.nNum);
            onPnts(placed.vecPnts);
            placed.nNum = 0;
        };
        const std::optional<CPlainPnts> plain = m_pSource->FindPlainPnts();
        const std::string sCause = plain ? m_pSource->ForEachRecord(
                                               [&](const unsigned char* pRecords, std::size_t nNum)
                                               {
                                                   AddPlain(*plain, pRecords, nNum, origin, placed);
                                                   handOn(c_nNumAtOnce);
                                               })
                                         : m_pSource->ForEachPlace(
                                               [&](const CSourcePnt* pPnts, std::size_t nNum)
                                               {
                                                   AddPlaced(pPnts, nNum, origin, placed);
                                                   handOn(c_nNumAtOnce);
                                               });
        if (!sCause.empty())
            throw CFailure(m_pFile->GetPath(), sCause);
        handOn(1);
    }

    std::vector<std::string> GetNotes() const override
    {
        std::vector<std::string> vecNotes;
        for (const CFinding& finding : m_pSource->GetFindings())
            if (!finding.bConvert || finding.bPart) // these readers mend the others
                vecNotes.push_back(finding.sText);
        if (m_nNumNotFinite > 0)
            vecNotes.push_back(fmt::format("{} whose coordinates are not numbers {} left out",
                                           FormatCount(m_nNumNotFinite, "point"),
                                           OneOrMany(m_nNumNotFinite, "is", "are")));
        return vecNotes;
    }

private:
    /// Points on their way to who asked for them.
    struct CPlaced
    {
        std::vector<CTilePnt> vecPnts; // longer than what is in it: to make room anew fills it with zeros
        std::size_t nNum = 0;

        CTilePnt* MakeRoom(std::size_t nMore)
        {
            if (vecPnts.size() < nNum + nMore)
                vecPnts.resize(std::max(nNum + nMore, c_nNumAtOnce));
            return vecPnts.data() + nNum;
        }
    };

    void AddPlain(const CPlainPnts& plain, const unsigned char* pRecords, std::size_t nNum,
                  const TOrigin& origin, CPlaced& placed)
    {
        if (CPlainPlaces(plain, origin).Place(pRecords, nNum, placed.MakeRoom(nNum)))
        {
            placed.nNum += nNum;
            return;
        }
        for (std::size_t i = 0; i < nNum; ++i) // one of them is to be told, or left out
        {
            const CSourcePnt pnt = plain.Read(pRecords + i * plain.nSize);
            AddPlaced(&pnt, 1, origin, placed);
        }
    }

    void AddPlaced(const CSourcePnt* pPnts, std::size_t nNum, const TOrigin& origin, CPlaced& placed)
    {
        CTilePnt* pPlaced = placed.MakeRoom(nNum);
        for (std::size_t i = 0; i < nNum; ++i)
            if (Place(pPnts[i], origin, *pPlaced))
                ++pPlaced;
        placed.nNum = static_cast<std::size_t>(pPlaced - placed.vecPnts.data());
    }

    /// @return false for coordinates that are no numbers.
    bool Place(const CSourcePnt& pnt, const TOrigin& origin, CTilePnt& placed)
    {
        const double dX = CompactUnits(pnt.x, origin[0]);
        const double dY = CompactUnits(pnt.y, origin[1]);
        const double dZ = CompactUnits(pnt.z, origin[2]);
        if (!(FitsInt32(dX) && FitsInt32(dY) && FitsInt32(dZ)))
        {
            RefuseFarPnt(pnt, origin);
            ++m_nNumNotFinite;
            return false;
        }
        placed.anSteps = {static_cast<std::int32_t>(dX), static_cast<std::int32_t>(dY),
                          static_cast<std::int32_t>(dZ)}; // L6
        placed.anColor = {pnt.r, pnt.g, pnt.b};
        return true;
    }

    void RefuseFarPnt(const CSourcePnt& pnt, const TOrigin& origin) const
    {
        const std::array<double, 3> adPlace = {pnt.x, pnt.y, pnt.z};
        if (pnt.IsFinite())
            for (std::size_t k = 0; k < 3; ++k)
                if (!FitsInt32(CompactUnits(adPlace[k], origin[k])))
                    FailForReach(m_pFile->GetPath(), adPlace[k], k, origin[k]);
    }

    std::unique_ptr<CInputFile> m_pFile;
    std::unique_ptr<IPntSource> m_pSource; // uses the file
    std::int64_t m_nNumNotFinite = 0;
};

} // namespace

std::unique_ptr<ITileSource> OpenTileSource(const CInputOptions& input)
{
    std::unique_ptr<CInputFile> pFile = OpenInputFile(input);
    if (pFile->GetKind().eFile == PntCldFile_Native)
        return std::make_unique<CNativePnts>(input.sPath);
    return std::make_unique<CMeantPnts>(std::move(pFile));
}

} // namespace zorcld
