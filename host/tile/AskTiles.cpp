#include <host/tile/AskTiles.h>

#include <formats/Compact.h>
#include <host/files/CFileColors.h>
#include <host/output/CConsole.h>
#include <host/output/CFailure.h>
#include <host/output/CPntSummary.h>
#include <host/output/CProgressBar.h>
#include <host/output/FormatCount.h>
#include <host/output/PntWriter.h>
#include <host/query/CutToCore.h>
#include <host/query/FindQueryBounds.h>
#include <host/query/PlanQuery.h>
#include <host/query/Query.h>
#include <host/tile/CManifest.h>
#include <host/tile/IsIntact.h>
#include <zor4data/CPntArrays.h>
#include <zor4data/CPntCld.h>
#include <zor4data/LoadNative.h>

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <filesystem>
#include <memory>
#include <vector>

namespace zorcld
{

using zor::geom::RECT_2D;
using zor::geom::RECT_3D;

namespace
{

constexpr std::int64_t c_nMaxMerged = 10000000; // of one cloud: many times the pixels of a picture

bool Touches(const RECT_3D& box, const RECT_2D& rect)
{
    return box.xmin <= rect.xmax && box.xmax >= rect.xmin && box.ymin <= rect.ymax && box.ymax >= rect.ymin;
}

bool IsInside(const RECT_3D& box, const RECT_2D& rect)
{
    return box.xmin >= rect.xmin && box.xmax <= rect.xmax && box.ymin >= rect.ymin && box.ymax <= rect.ymax;
}

void LoadTile(CPntCld& cloud, const CTileEntry& tile, const std::string& sManifest)
{
    const std::string sPath = FindTilePath(sManifest, tile);
    std::error_code error;
    if (!std::filesystem::exists(sPath, error))
        throw CFailure(sPath, "is missing, and belongs to the tiles");
    if (!IsIntact(sPath, tile))
        throw CFailure(sPath, "is damaged, or another file than its manifest tells of; the command that has "
                              "cut the tiles makes it again");
    if (!LoadNative(cloud, nullptr, zor::String(sPath)))
        throw CFailure(sPath, "cannot be read, and belongs to the tiles");
    if (cloud.GetNumPnts() != tile.nNumPnts + tile.nNumBuffer)
        throw CFailure(sPath, "is not the tile that its manifest tells of");
}

std::vector<const CTileEntry*> FindWanted(const CManifest& manifest, const std::optional<RECT_2D>& bounds)
{
    std::vector<const CTileEntry*> vecWanted;
    for (const CTileEntry& tile : manifest.vecTiles)
        if (tile.nNumPnts > 0 && (!bounds || Touches(tile.box, *bounds)))
            vecWanted.push_back(&tile);
    return vecWanted;
}

/// A point on its way from a tile to a cloud of several, which takes coordinates.
struct CMergedPnt
{
    std::array<std::int32_t, 3> anSteps{};
    std::array<unsigned char, 3> acColor{};
};

CMergedPnt TakePnt(const CPntCld& cloud, const CPntArrays& arrays, int nIndex)
{
    CMergedPnt pnt;
    std::memcpy(pnt.anSteps.data(), arrays.pPnts + std::ptrdiff_t{nIndex} * arrays.nStride,
                sizeof pnt.anSteps);
    static_cast<void>(cloud.GetPntColor(nIndex, pnt.acColor[0], pnt.acColor[1], pnt.acColor[2]));
    return pnt;
}

/// A coordinate that is stored as these steps, whatever doubles round: half a step behind (L6).
double PlaceInStep(std::int32_t n, float fOrigin)
{
    const double dHalf = n > 0 ? 0.5 : n < 0 ? -0.5 : 0.0;
    return (n + dHalf) / c_dCompactScale + static_cast<double>(fOrigin);
}

/// The first point gives the cloud its origin, and goes again.
void FillCloud(CPntCld& cloud, const std::vector<CMergedPnt>& vecPnts, const TOrigin& origin, bool bColor)
{
    cloud.OnReadType(bColor ? PntCldType_PntColor : PntCldType_Pnt);
    static_cast<void>(cloud.Init(static_cast<int>(vecPnts.size()) + 1));
    const auto add = [&](const CMergedPnt& pnt)
    {
        cloud.AddPnt(PlaceInStep(pnt.anSteps[0], origin[0]), PlaceInStep(pnt.anSteps[1], origin[1]),
                     PlaceInStep(pnt.anSteps[2], origin[2]), pnt.acColor[0], pnt.acColor[1], pnt.acColor[2]);
    };
    add({});
    std::for_each(vecPnts.begin(), vecPnts.end(), add);
    cloud.SelPnt(0, false);
    cloud.DelSelPnts();
}

} // namespace

std::int64_t CountInTiles(const std::string& sManifest, const RECT_2D& rect)
{
    const CManifest manifest = CManifest::Read(sManifest);
    std::int64_t nNum = 0;
    for (const CTileEntry* pTile : FindWanted(manifest, rect))
    {
        if (IsInside(pTile->box, rect))
        {
            nNum += pTile->nNumPnts;
            continue;
        }
        CFileColors colors;
        CPntCld cloud(&colors);
        LoadTile(cloud, *pTile, sManifest);
        const std::vector<bool> vecInCore = ChooseInCore(cloud, pTile->core);
        const std::vector<bool> vecInRect = ChooseInRect(cloud, rect);
        for (std::size_t i = 0; i < vecInCore.size(); ++i)
            nNum += vecInCore[i] && vecInRect[i] ? 1 : 0;
    }
    return nNum;
}

void ForEachCore(const CManifest& manifest, const std::string& sManifest,
                 const std::optional<RECT_2D>& bounds, const CConsole& console, const TOnCore& onCore)
{
    const std::vector<const CTileEntry*> vecWanted = FindWanted(manifest, bounds);
    CProgressBar progress(console, "reading tiles");
    progress.Start();
    for (std::size_t i = 0; i < vecWanted.size(); ++i)
    {
        progress.SetPos(static_cast<int>(i * 100 / vecWanted.size()));
        CFileColors colors;
        CPntCld cloud(&colors);
        LoadTile(cloud, *vecWanted[i], sManifest);
        CutToCore(cloud, vecWanted[i]->core);
        onCore(cloud);
    }
    progress.Stop();
}

std::int64_t WritePntsOfTiles(const std::string& sManifest, const CQueryOptions& options, COutFile& out,
                              const CConsole& console)
{
    const TMakePntWriter makeWriter = FindPntWriter(out.GetPath());
    const CQuery query = ParseQuery(options);
    const std::optional<RECT_2D> bounds = FindQueryBounds(options);
    const CManifest manifest = CManifest::Read(sManifest);
    const auto forEachPnt = [&](const auto& fn)
    {
        ForEachCore(manifest, sManifest, bounds, console,
                    [&](CPntCld& cloud)
                    {
                        CQuery ofTile = query;
                        ofTile.Choose(cloud);
                        ForEachPnt(cloud, ofTile, fn);
                    });
    };
    CPntSummary summary;
    summary.bColor = manifest.bColor;
    forEachPnt([&](const CCldCadPnt& pnt) { summary.Add(pnt.m_pnt); });
    if (summary.nNumPnts == 0)
        console.Note(fmt::format("{}: no point was chosen", out.GetPath()));
    const std::unique_ptr<IPntWriter> pWriter = makeWriter(WriteTo(out), summary);
    if (!pWriter->GetNote().empty())
        console.Note(fmt::format("{}: {}", out.GetPath(), pWriter->GetNote()));
    forEachPnt([&](const CCldCadPnt& pnt) { pWriter->Add(pnt); });
    pWriter->Finish();
    return summary.nNumPnts;
}

void MergeTiles(CPntCld& cloud, const std::string& sManifest, const std::optional<RECT_2D>& bounds,
                const CConsole& console)
{
    const CManifest manifest = CManifest::Read(sManifest);
    std::int64_t nNumAll = 0;
    for (const CTileEntry* pTile : FindWanted(manifest, bounds))
        nNumAll += pTile->nNumPnts;
    if (nNumAll == 0)
        throw CFailure(sManifest, "its tiles hold no point there");
    const double dShare = std::min(1.0, static_cast<double>(c_nMaxMerged) / static_cast<double>(nNumAll));
    std::vector<CMergedPnt> vecPnts;
    ForEachCore(manifest, sManifest, bounds, console,
                [&](CPntCld& core)
                {
                    CQuery query;
                    if (dShare < 1.0)
                        query.dLod = FindLod(
                            core, query,
                            std::max<std::int64_t>(1, static_cast<std::int64_t>(dShare * core.GetNumPnts())));
                    const CPntArrays arrays = GetPntArrays(core);
                    ForEachPnt(core, query,
                               [&](const CCldCadPnt& pnt)
                               { vecPnts.push_back(TakePnt(core, arrays, pnt.m_nIndex)); });
                });
    if (dShare < 1.0)
        console.Note(fmt::format("{}: {} of {} stand for all", sManifest,
                                 GroupDigits(static_cast<std::int64_t>(vecPnts.size())),
                                 FormatCount(nNumAll, "point")));
    FillCloud(cloud, vecPnts, manifest.origin, manifest.bColor);
}

} // namespace zorcld
