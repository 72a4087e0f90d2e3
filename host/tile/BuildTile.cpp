#include <host/tile/BuildTile.h>

#include <formats/Compact.h>
#include <host/files/CFileColors.h>
#include <host/files/SaveCloud.h>
#include <host/output/FormatCount.h>
#include <host/tile/CPntsHash.h>
#include <host/tile/CTilePlan.h>
#include <host/tile/CTileTable.h>
#include <host/tile/HashFile.h>
#include <zor4data/CPntArrays.h>
#include <zor4data/CPntCld.h>
#include <zor4data/LoadNative.h>

#include <fmt/format.h>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <new>
#include <numeric>

namespace zorcld
{

namespace
{

using TSteps = std::array<std::int32_t, 3>;

TSteps GetSteps(const CPntArrays& arrays, int i)
{
    TSteps anSteps{};
    std::memcpy(anSteps.data(), arrays.pPnts + std::ptrdiff_t{i} * arrays.nStride, sizeof anSteps);
    return anSteps;
}

/// Marks all points that are equal to an earlier one. REQUIRES: the order of the files.
bool SelectEqual(CPntCld& cloud)
{
    const CPntArrays arrays = GetPntArrays(cloud);
    std::vector<int> vecOrder(static_cast<std::size_t>(arrays.nNumPnts));
    std::iota(vecOrder.begin(), vecOrder.end(), 0);
    std::sort(vecOrder.begin(), vecOrder.end(),
              [&](int a, int b)
              {
                  const TSteps anA = GetSteps(arrays, a);
                  const TSteps anB = GetSteps(arrays, b);
                  return anA != anB ? anA < anB : a < b;
              });
    bool bAny = false;
    for (std::size_t i = 1; i < vecOrder.size(); ++i)
        if (GetSteps(arrays, vecOrder[i - 1]) == GetSteps(arrays, vecOrder[i]))
        {
            cloud.SelPnt(vecOrder[i], false);
            bAny = true;
        }
    return bAny;
}

/// Counts the points of the core, and finds their box.
void LookAtCore(const CPntCld& cloud, const CTilePlan& plan, CTileEntry& entry)
{
    const CTileGrid grid = plan.MakeGrid();
    const CPntArrays arrays = GetPntArrays(cloud);
    const std::int64_t nXMin = grid.GetFirstStep(0, entry.cell.nColumn);
    const std::int64_t nXMax = grid.GetFirstStep(0, entry.cell.nColumn + std::int64_t{1});
    const std::int64_t nYMin = grid.GetFirstStep(1, entry.cell.nRow);
    const std::int64_t nYMax = grid.GetFirstStep(1, entry.cell.nRow + std::int64_t{1});
    TSteps anMin = {CTilePlan::c_nHighest, CTilePlan::c_nHighest, CTilePlan::c_nHighest};
    TSteps anMax = {CTilePlan::c_nLowest, CTilePlan::c_nLowest, CTilePlan::c_nLowest};
    for (int i = 0; i < arrays.nNumPnts; ++i)
    {
        const TSteps anSteps = GetSteps(arrays, i);
        if (anSteps[0] < nXMin || anSteps[0] >= nXMax || anSteps[1] < nYMin || anSteps[1] >= nYMax)
            continue;
        ++entry.nNumPnts;
        for (std::size_t k = 0; k < 3; ++k)
        {
            anMin[k] = std::min(anMin[k], anSteps[k]);
            anMax[k] = std::max(anMax[k], anSteps[k]);
        }
    }
    entry.nNumBuffer = arrays.nNumPnts - entry.nNumPnts;
    const auto place = [&](const TSteps& anSteps, std::size_t k)
    { return CoordFromCompact(anSteps[k], plan.origin[k]); };
    entry.box = {place(anMin, 0), place(anMin, 1), place(anMin, 2),
                 place(anMax, 0), place(anMax, 1), place(anMax, 2)};
}

std::uint64_t HashPnts(const CPntCld& cloud, const CPntArrays& arrays)
{
    CPntsHash hash;
    std::array<unsigned char, 3> acColor{};
    for (int i = 0; i < arrays.nNumPnts; ++i)
    {
        if (arrays.bColor)
            static_cast<void>(cloud.GetPntColor(i, acColor[0], acColor[1], acColor[2]));
        hash.Add(GetSteps(arrays, i), acColor);
    }
    return hash.Get();
}

bool AreThose(const CPntCld& cloud, const CTilePlan& plan, const CTileCount& tile, const CTilePnts& pnts)
{
    const CPntArrays arrays = GetPntArrays(cloud); // not kept: the cloud would be copied when it changes
    return arrays.nNumPnts == tile.nNumAll && arrays.bColor == plan.bColor &&
           TOrigin{arrays.fOrgX, arrays.fOrgY, arrays.fOrgZ} == plan.origin &&
           HashPnts(cloud, arrays) == pnts.nHash;
}

void MakeCloud(CPntCld& cloud, const CTilePlan& plan, const CTileCount& tile, const CTilePnts& pnts)
{
    if (!LoadNative(cloud, nullptr, zor::String(pnts.sPath)) || !AreThose(cloud, plan, tile, pnts))
        throw CDamagedPnts(pnts.sPath, "is damaged");
    if (plan.options.bDedupe && SelectEqual(cloud))
        cloud.DelSelPnts(); // builds the octree, too
    else
        cloud.ComputeTree();
    cloud.SetVersion(0);
    cloud.SetModified(false);
}

} // namespace

bool FitsPlan(const CTilePlan& plan, const CTileCount& tile, const CTileEntry& entry)
{
    if (plan.options.bDedupe)
        return entry.nNumPnts <= tile.nNumCore && entry.nNumPnts + entry.nNumBuffer <= tile.nNumAll;
    return entry.nNumPnts == tile.nNumCore && entry.nNumPnts + entry.nNumBuffer == tile.nNumAll;
}

CTileEntry BuildTile(const CTilePlan& plan, const CTileCount& tile, const CTilePnts& pnts,
                     const std::string& sFolder)
{
    CTileEntry entry;
    entry.sFile = NameTile(tile.cell);
    entry.cell = tile.cell;
    entry.core = plan.MakeGrid().GetCore(tile.cell);
    const std::string sPath = (std::filesystem::path(sFolder) / entry.sFile).string();
    try
    {
        CFileColors colors;
        CPntCld cloud(&colors);
        MakeCloud(cloud, plan, tile, pnts);
        LookAtCore(cloud, plan, entry);
        if (!FitsPlan(plan, tile, entry))
            throw CDamagedPnts(pnts.sPath, "is damaged");
        SaveCloudOnly(cloud, sPath);
    }
    catch (const std::bad_alloc&)
    {
        throw CFailure(sPath, fmt::format("not enough memory for its {}; a smaller --size takes less",
                                          FormatCount(tile.nNumAll, "point")));
    }
    entry.nNumBytes = static_cast<std::int64_t>(std::filesystem::file_size(sPath));
    entry.sHash = HashFile(sPath);
    return entry;
}

} // namespace zorcld
