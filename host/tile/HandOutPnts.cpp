#include <host/tile/HandOutPnts.h>

#include <host/files/CInputOptions.h>
#include <host/output/CConsole.h>
#include <host/output/CFailure.h>
#include <host/output/CProgressBar.h>
#include <host/output/GetFileName.h>
#include <host/tile/CHashAhead.h>
#include <host/tile/CSpool.h>
#include <host/tile/OpenTileSource.h>
#include <host/tile/ReadAhead.h>

#include <algorithm>
#include <memory>

namespace zorcld
{

namespace
{

void HandOutFile(const CInputOptions& input, const CPlannedFile& planned, const TOrigin& origin,
                 CTileTable& table, CSpool& spool, const CConsole& console)
{
    CHashAhead hash(input.sPath);
    const std::unique_ptr<ITileSource> pSource = OpenTileSource(input);
    CProgressBar progress(console, "cutting " + GetFileName(input.sPath));
    progress.Start();
    std::int64_t nNum = 0;
    const std::int64_t nNumAll = std::max<std::int64_t>(planned.file.nNumPnts, 1);
    ReadAhead(*pSource, origin,
              [&](std::vector<CTilePnt>& vecPnts)
              {
                  nNum += static_cast<std::int64_t>(vecPnts.size());
                  progress.SetPos(static_cast<int>(std::min<std::int64_t>(nNum * 100 / nNumAll, 100)));
                  if (planned.bDeepColor)
                      KeepHighBytes(vecPnts);
                  table.ForEachRun(vecPnts,
                                   [&](const CTileTable::CZone& zone, std::size_t nFirst, std::size_t nCount)
                                   { spool.Add(zone, vecPnts.data() + nFirst, nCount); });
              });
    const bool bSame = hash.Get() == planned.file.sHash;
    progress.Stop();
    if (!bSame || nNum != planned.file.nNumPnts)
        throw CFailure(input.sPath, "it was changed while it was read");
}

} // namespace

std::map<CCell, std::uint64_t> HandOutPnts(const std::vector<CInputOptions>& vecInputs, const CTilePlan& plan,
                                           const std::vector<CTileCount>& vecTiles,
                                           const std::string& sFolder, const CConsole& console)
{
    const CTileGrid grid = plan.MakeGrid();
    CTileTable table(grid, vecTiles);
    CSpool spool(sFolder, {plan.origin, plan.bColor}, vecTiles, CSpool::Tiles_Counted);
    for (std::size_t i = 0; i < vecInputs.size(); ++i)
        HandOutFile(vecInputs[i], plan.vecFiles[i], plan.origin, table, spool, console);
    if (!spool.Finish())
        throw CFailure(vecInputs.front().sPath,
                       "it, or one of the files behind it, was changed while it was read");
    return spool.GetHashes();
}

} // namespace zorcld
