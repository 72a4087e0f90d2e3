#include <host/commands/Commands.h>

#include <host/commands/AddOutOption.h>
#include <host/files/AddInputOptions.h>
#include <host/files/CFileColors.h>
#include <host/files/LoadChosen.h>
#include <host/files/NoteLeftOut.h>
#include <host/files/OpenInputFile.h>
#include <host/output/CConsole.h>
#include <host/output/CFailure.h>
#include <host/output/COutFile.h>
#include <host/output/RefuseSameFile.h>
#include <host/query/Query.h>
#include <host/query/WritePnts.h>
#include <host/tile/AskTiles.h>
#include <host/tile/CManifest.h>
#include <host/tile/RefuseInput.h>
#include <zor4data/CPntCld.h>

#include <CLI/CLI.hpp>

#include <memory>

namespace zorcld
{

namespace
{

struct COptions
{
    CInputOptions input;
    CQueryOptions query;
    CClassOptions classes;
    std::string sOutPath;
    bool bForce = false;
};

void WritePointsOfTiles(const COptions& options, const CConsole& console)
{
    if (CClassChoice(options.classes).IsAsked())
        throw CUsageError("tiles have no classes of points");
    if (options.query.nMaxPnts > 0)
        throw CUsageError("--points: is not known of tiles; --lod thins each of them");
    COutFile out(options.sOutPath);
    WritePntsOfTiles(options.input.sPath, options.query, out, console);
    out.Commit();
}

void WritePoints(const COptions& options, const CConsole& console)
{
    const TMakePntWriter makeWriter = FindPntWriter(options.sOutPath);
    RefuseInput(options.input.sPath, options.sOutPath, "--output", options.bForce);
    RefuseSameFile(options.query.plan.sContour, options.sOutPath, "--output", options.bForce);
    if (CManifest::IsManifest(options.input.sPath))
    {
        WritePointsOfTiles(options, console);
        return;
    }
    CQuery query = ParseQuery(options.query);
    CLasWish wish;
    wish.choice = CClassChoice(options.classes);
    CFileColors colors;
    CPntCld cloud(&colors);
    const std::unique_ptr<CInputFile> pFile = OpenInputFile(options.input);
    LoadAsWished(cloud, *pFile, wish, console);
    query.Choose(cloud);
    if (options.query.nMaxPnts > 0)
        query.dLod = FindLod(cloud, query, options.query.nMaxPnts);

    COutFile out(options.sOutPath);
    const std::int64_t nWritten = WritePnts(cloud, query, makeWriter, out, console);
    out.Commit();
    NoteLeftOut(*pFile, wish.choice, cloud.GetNumPnts(), nWritten, options.sOutPath, console);
}

} // namespace

void AddPointsCommand(CLI::App& app, const CConsole& console)
{
    const auto pOptions = std::make_shared<COptions>();
    CLI::App* const pCommand = app.add_subcommand("points", "Writes what a query delivers as PLY or CSV");
    AddInputOptions(*pCommand, pOptions->input);
    AddQueryOptions(*pCommand, pOptions->query);
    AddClassOptions(*pCommand, pOptions->classes);
    AddOutOption(*pCommand, pOptions->sOutPath, "File to write, .ply or .csv");
    AddForceFlag(*pCommand, pOptions->bForce);
    pCommand->callback([pOptions, &console] { WritePoints(*pOptions, console); });
}

} // namespace zorcld
