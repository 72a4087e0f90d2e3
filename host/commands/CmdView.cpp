#include <host/commands/Commands.h>

#include <host/commands/AddOutOption.h>
#include <host/files/AddInputOptions.h>
#include <host/files/CFileColors.h>
#include <host/files/LoadChosen.h>
#include <host/files/OpenInputFile.h>
#include <host/output/CConsole.h>
#include <host/output/CFailure.h>
#include <host/output/COutFile.h>
#include <host/output/FormatCount.h>
#include <host/output/GetExtension.h>
#include <host/output/GetFileName.h>
#include <host/output/NumberInRange.h>
#include <host/output/PrintMessage.h>
#include <host/output/RefuseSameFile.h>
#include <host/picture/CViewColors.h>
#include <host/picture/PictureOptions.h>
#include <host/picture/RenderView.h>
#include <host/query/FindQueryBounds.h>
#include <host/query/FormatPlan.h>
#include <host/query/ParseNumbers.h>
#include <host/query/Query.h>
#include <host/shapes/ReadShapes.h>
#include <host/tile/AskTiles.h>
#include <host/tile/CManifest.h>
#include <host/tile/RefuseInput.h>
#include <zor4data/CPntCld.h>

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <algorithm>
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
    CPictureOptions picture;
    std::string sOutPath;
    bool bForce = false;
    std::string sFrom = "plan";
    std::string sOverlayPath;
    std::string sBackground = "dark";
    double dPntSize = 0.0;
};

CCamera ParseFrom(const std::string& sFrom)
{
    if (sFrom == "plan")
        return CCamera::Plan();
    const std::vector<double> angles = ParseNumbers(sFrom, ',', 2, "--from");
    if (angles[1] < -90.0 || angles[1] > 90.0)
        throw CUsageError("--from: the elevation is not between -90 and 90");
    return {angles[0], angles[1]};
}

/// Does the rectangle around any of the shapes touch the one around the points?
bool IsNear(const CShapes& shapes, const CPntCld& cloud)
{
    zor::geom::RECT_3D box;
    if (!cloud.GetBdry(box))
        return true;
    const auto isNear = [&box](const TRing& ring)
    {
        if (ring.empty())
            return false;
        const auto [itLeft, itRight] = std::minmax_element(
            ring.begin(), ring.end(), [](const auto& a, const auto& b) { return a.x < b.x; });
        const auto [itLow, itHigh] = std::minmax_element(
            ring.begin(), ring.end(), [](const auto& a, const auto& b) { return a.y < b.y; });
        return itLeft->x <= box.xmax && itRight->x >= box.xmin && itLow->y <= box.ymax &&
               itHigh->y >= box.ymin;
    };
    return std::any_of(shapes.vecLines.begin(), shapes.vecLines.end(), isNear) ||
           std::any_of(shapes.vecPolygons.begin(), shapes.vecPolygons.end(),
                       [&](const auto& polygon) { return isNear(polygon.outer); });
}

/// @throws CUsageError; CFailure when the shapes cannot be read.
CView ParseView(const COptions& options)
{
    CView view;
    view.camera = ParseFrom(options.sFrom);
    view.query = ParseQuery(options.query);
    ParseSize(options.picture.sSize, view.nWidth, view.nHeight);
    view.bPlan = options.sFrom == "plan";
    view.background = ParseBackground(options.sBackground);
    view.dPntSize = options.dPntSize;
    if (!options.sOverlayPath.empty() && !view.bPlan)
        throw CUsageError("--overlay: shapes have no heights, they can be drawn from above only");
    if (!options.sOverlayPath.empty())
    {
        view.overlay = ReadShapes(options.sOverlayPath, "--overlay");
        if (view.overlay.vecPolygons.empty() && view.overlay.vecLines.empty())
            throw CFailure(options.sOverlayPath, "holds neither a polygon nor a line");
    }
    view.nMaxPnts = options.query.nMaxPnts;
    view.sTitle = GetFileName(options.input.sPath);
    return view;
}

/// @return what is known of the file, nothing of tiles.
CLoadFacts LoadView(CPntCld& cloud, const COptions& options, const CLasWish& wish, const CConsole& console)
{
    if (!CManifest::IsManifest(options.input.sPath))
        return LoadAsWished(cloud, *OpenInputFile(options.input), wish, console);
    if (wish.IsAsked())
        throw CUsageError("tiles have no classes, intensities and returns of points");
    MergeTiles(cloud, options.input.sPath, FindQueryBounds(options.query), console);
    return {};
}

void MakeView(const COptions& options, const CConsole& console)
{
    CheckExtension(options.sOutPath, "--output", ".png");
    RefuseInput(options.input.sPath, options.sOutPath, "--output", options.bForce);
    for (const std::string& sIn : {options.query.plan.sContour, options.sOverlayPath})
        RefuseSameFile(sIn, options.sOutPath, "--output", options.bForce);
    CView view = ParseView(options);
    CLasWish wish;
    wish.choice = CClassChoice(options.classes);
    wish.eAttribute = FindAttribute(options.picture);
    if (wish.choice.IsAsked())
        view.sNote = wish.choice.Format();

    CViewColors colors;
    CPntCld cloud(&colors);
    const CLoadFacts facts = LoadView(cloud, options, wish, console);
    view.units = ChooseUnits(options.picture, facts.coords);
    NoteOtherUnit(options.picture, facts.coords, options.input.sPath, console);
    ChooseColors(options.picture, options.input.sPath, cloud, colors);
    view.query.Choose(cloud);
    if (!options.sOverlayPath.empty() && !IsNear(view.overlay, cloud))
        console.Note(fmt::format("{}: lies wholly beside the points, none of it is seen: {}",
                                 options.sOverlayPath, FormatPlan(cloud)));

    COutFile out(options.sOutPath);
    const CViewResult result = RenderView(cloud, colors, view, out);
    out.Commit();
    if (!result.sProportions.empty())
        console.Note(fmt::format("{}: {}", options.input.sPath, result.sProportions));
    PrintMessage(stdout, fmt::format("{}: {} x {}, {} {}{}", options.sOutPath, view.nWidth, view.nHeight,
                                     result.nNumPnts, WithPlural("point", result.nNumPnts),
                                     result.dLod > 0.0 ? fmt::format(", level of detail {:.4g}", result.dLod)
                                                       : std::string()));
}

} // namespace

void AddViewCommand(CLI::App& app, const CConsole& console)
{
    const auto pOptions = std::make_shared<COptions>();
    CLI::App* const pCommand = app.add_subcommand("view", "Makes a picture of a cloud");
    AddInputOptions(*pCommand, pOptions->input);
    AddOutOption(*pCommand, pOptions->sOutPath, "PNG to write", "OUT.png");
    AddForceFlag(*pCommand, pOptions->bForce);
    AddPictureOptions(*pCommand, pOptions->picture, true);
    pCommand
        ->add_option(
            "--from", pOptions->sFrom,
            "Look from above with north up, or from where the viewer stands: degrees clockwise from north, "
            "degrees above the horizon")
        ->capture_default_str()
        ->type_name("plan|AZIMUTH,ELEVATION");
    pCommand
        ->add_option("--overlay", pOptions->sOverlayPath,
                     "Draw the polygons and lines of a file over the points: .geojson, .wkt or .csv")
        ->type_name("FILE");
    pCommand
        ->add_option("--point-size", pOptions->dPntSize,
                     "Diameter of all points, pixels; by default they are as large as the gaps between them")
        ->check(NumberInRange(0.5, 200.0))
        ->type_name("N");
    pCommand->add_option("--background", pOptions->sBackground, "What is shown where no points are")
        ->capture_default_str()
        ->type_name("dark|light|transparent|#rrggbb");
    AddQueryOptions(*pCommand, pOptions->query);
    AddClassOptions(*pCommand, pOptions->classes);
    pCommand->footer("Without --lod and --points the level of detail follows the picture's resolution.");
    pCommand->callback([pOptions, &console] { MakeView(*pOptions, console); });
}

} // namespace zorcld
