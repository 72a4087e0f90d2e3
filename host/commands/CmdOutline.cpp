#include <host/commands/Commands.h>

#include <host/commands/AddOutOption.h>
#include <host/files/AddInputOptions.h>
#include <host/files/LoadCloud.h>
#include <host/output/CConsole.h>
#include <host/output/CFailure.h>
#include <host/output/COutFile.h>
#include <host/output/FormatCount.h>
#include <host/output/GetExtension.h>
#include <host/output/GetFileName.h>
#include <host/output/PntWriter.h>
#include <host/output/PrintMessage.h>
#include <host/output/UnitSymbol.h>
#include <host/picture/CPen.h>
#include <host/picture/CViewColors.h>
#include <host/picture/PictureOptions.h>
#include <host/picture/RenderView.h>
#include <host/query/FindOutline.h>
#include <host/query/ParseNumbers.h>
#include <host/shapes/WriteShapes.h>
#include <host/tile/AskTiles.h>
#include <host/tile/CManifest.h>
#include <host/tile/RefuseInput.h>
#include <zor4data/CPntCld.h>

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <cmath>
#include <memory>

namespace zorcld
{

namespace
{

struct COptions
{
    CInputOptions input;
    std::string sDistance;
    std::string sOutPath;
    bool bForce = false;
    CPictureOptions picture;
};

/// @return what --distance gives; 0 for auto.
double ParseDistance(const std::string& sDistance)
{
    if (sDistance == "auto")
        return 0.0;
    const double dDistance = ParseNumbers(sDistance, ',', 1, "--distance").front();
    if (!(dDistance > 0.0))
        throw CUsageError("--distance: the distance is not above 0");
    return dDistance;
}

/// Sizes are shown to hundredths; small ones, of degrees for example, to five digits.
std::string FormatSize(double d, const std::string& sUnit, const char* pSquare = "")
{
    const std::string sNumber = d < 100.0 ? fmt::format("{:.5g}", d) : fmt::format("{:.2f}", d);
    return sUnit.empty() ? sNumber : fmt::format("{} {}{}", sNumber, pSquare, sUnit);
}

/// What a distance comes to where coordinates are degrees.
std::string FormatMetres(const COutline& outline, const CCoordSystem& coords)
{
    if (!IsDegree(coords.plan))
        return {};
    return fmt::format(", about {:.3g} m to the north", outline.dDistance * c_dMetresPerDegree);
}

void Report(const COptions& options, const CPntCld& cloud, const COutline& outline,
            const CCoordSystem& coords, const CConsole& console)
{
    const TRing ring = outline.GetRing();
    const std::string sUnit = ChooseUnits(options.picture, coords).sPlan;
    PrintMessage(stdout,
                 fmt::format("{}: {} {}, length {}, area {}, distance {:.10g}{}{}{}", options.sOutPath,
                             ring.size(), WithPlural("corner", static_cast<std::int64_t>(ring.size())),
                             FormatSize(CalcLength(ring), sUnit),
                             FormatSize(std::fabs(CalcSignedArea(ring)), sUnit, "square "), outline.dDistance,
                             sUnit.empty() ? "" : " " + sUnit, FormatMetres(outline, coords), outline.sHow));
    if (!IsWhole(outline, cloud))
        console.Note(fmt::format(
            "{}: the outline holds {} of {} ({:.1f} %), those of one part; another --distance may hold more",
            options.input.sPath, GroupDigits(outline.nNumInside), FormatCount(cloud.GetNumPnts(), "point"),
            100.0 * static_cast<double>(outline.nNumInside) / cloud.GetNumPnts()));
}

void WriteCsv(const COutline& outline, COutFile& out)
{
    const std::unique_ptr<IPntWriter> pWriter = MakeCsvWriter(WriteTo(out), CPntSummary());
    for (const CCldCadPnt& corner : outline.vecCorners)
        pWriter->Add(corner);
    pWriter->Finish();
}

void DrawOutline(const COptions& options, const CPntCld& cloud, CViewColors& colors, const COutline& outline,
                 const CCoordSystem& coords, COutFile& out)
{
    CView view;
    ParseSize(options.picture.sSize, view.nWidth, view.nHeight);
    view.bPlan = true;
    view.sTitle = GetFileName(options.input.sPath);
    view.units = ChooseUnits(options.picture, coords);
    view.sNote =
        "outline at distance " + WithUnit(fmt::format("{:.10g}", outline.dDistance), view.units.sPlan);
    view.overlay.vecPolygons.push_back({outline.GetRing(), {}});
    RenderView(cloud, colors, view, out);
}

void MakeOutline(const COptions& options, const CConsole& console)
{
    const std::string sExtension = GetExtension(options.sOutPath);
    if (!IsShapeExtension(sExtension) && sExtension != ".csv" && sExtension != ".png")
        throw CUsageError(
            fmt::format("--output: '{}' ends in none of .geojson, .wkt, .csv and .png", options.sOutPath));
    RefuseInput(options.input.sPath, options.sOutPath, "--output", options.bForce);
    const double dGiven = ParseDistance(options.sDistance);
    int nWidth = 0;
    int nHeight = 0;
    ParseSize(options.picture.sSize, nWidth, nHeight);

    CViewColors colors;
    CPntCld cloud(&colors);
    CLoadFacts facts;
    if (CManifest::IsManifest(options.input.sPath))
        MergeTiles(cloud, options.input.sPath, {}, console);
    else
        facts = LoadOrAdvise(cloud, options.input, console);
    ChooseColors(options.picture, options.input.sPath, cloud, colors);
    const COutline outline = FindOutline(cloud, dGiven, options.input.sPath, console);
    const TRing ring = outline.GetRing();

    COutFile out(options.sOutPath);
    if (sExtension == ".csv")
        WriteCsv(outline, out);
    else if (sExtension == ".png")
        DrawOutline(options, cloud, colors, outline, facts.coords, out);
    else
        WriteShape(out, ring,
                   {{"distance", outline.dDistance},
                    {"corners", static_cast<double>(ring.size())},
                    {"length", CalcLength(ring)},
                    {"area", std::fabs(CalcSignedArea(ring))}});
    out.Commit();
    Report(options, cloud, outline, facts.coords, console);
}

} // namespace

void AddOutlineCommand(CLI::App& app, const CConsole& console)
{
    const auto pOptions = std::make_shared<COptions>();
    CLI::App* const pCommand =
        app.add_subcommand("outline", "Finds the outline of a cloud's largest part, seen from above");
    AddInputOptions(*pCommand, pOptions->input);
    pCommand
        ->add_option("--distance", pOptions->sDistance,
                     "How far apart points may lie and still belong together; auto: from their mean spacing")
        ->required()
        ->type_name("D|auto");
    AddOutOption(*pCommand, pOptions->sOutPath,
                 "File to write: .geojson, .wkt or .csv, or .png for a picture of it over the points");
    AddForceFlag(*pCommand, pOptions->bForce);
    AddPictureOptions(*pCommand, pOptions->picture);
    pCommand->callback([pOptions, &console] { MakeOutline(*pOptions, console); });
}

} // namespace zorcld
