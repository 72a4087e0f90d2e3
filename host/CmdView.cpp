#include <host/CConsole.h>
#include <host/CFailure.h>
#include <host/CFileColors.h>
#include <host/COutFile.h>
#include <host/Commands.h>
#include <host/LoadCloud.h>
#include <host/ParseNumbers.h>
#include <host/Query.h>
#include <host/RenderView.h>

#include <zor4data/CPntCld.h>

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <filesystem>
#include <memory>

namespace
{

struct COptions
{
    CInputOptions input;
    CQueryOptions query;
    std::string sOutPath;
    std::string sSize = "1600x1200";
    std::string sFrom = "plan";
    std::string sColor = "auto";
    std::string sUnit;
};

void ParseSize(const std::string& sSize, CView& view)
{
    const std::vector<double> size = ParseNumbers(sSize, 'x', 2, "--size");
    constexpr double c_dMin = 200.0; // title, scale bar and legend need their room
    constexpr double c_dMax = 16384.0;
    for (const double d : size)
        if (d < c_dMin || d > c_dMax || d != static_cast<double>(static_cast<int>(d)))
            throw CUsageError(
                fmt::format("--size: '{}' is not two whole numbers from {} to {}", sSize, c_dMin, c_dMax));
    view.nWidth = static_cast<int>(size[0]);
    view.nHeight = static_cast<int>(size[1]);
}

CCamera ParseFrom(const std::string& sFrom)
{
    if (sFrom == "plan")
        return CCamera::Plan();
    const std::vector<double> angles = ParseNumbers(sFrom, ',', 2, "--from");
    if (angles[1] < -90.0 || angles[1] > 90.0)
        throw CUsageError("--from: the elevation is not between -90 and 90");
    return {angles[0], angles[1]};
}

void MakeView(const COptions& options, const CConsole& console)
{
    CView view;
    view.camera = ParseFrom(options.sFrom);
    view.query = ParseQuery(options.query);
    ParseSize(options.sSize, view);
    view.bPlan = options.sFrom == "plan";
    view.nMaxPnts = options.query.nMaxPnts;
    view.sTitle = std::filesystem::path(options.input.sPath).filename().string();
    view.sUnit = options.sUnit;

    CViewColors colors;
    CPntCld cloud(&colors);
    LoadCloud(cloud, options.input, console);
    if (options.sColor == "file" && !cloud.IsWithColor())
        throw CFailure(options.input.sPath, "holds no colours (--color file asks for them)");
    colors.SetByHeight(options.sColor == "height" || !cloud.IsWithColor());

    COutFile out(options.sOutPath);
    const CViewResult result = RenderView(cloud, colors, view, out);
    out.Commit();
    fmt::print("{}: {} x {}, {} points{}\n", options.sOutPath, view.nWidth, view.nHeight, result.nNumPnts,
               result.dLod > 0.0 ? fmt::format(", level of detail {:.4g}", result.dLod) : std::string());
}

} // namespace

void AddViewCommand(CLI::App& app, const CConsole& console)
{
    const auto pOptions = std::make_shared<COptions>();
    CLI::App* const pCommand = app.add_subcommand("view", "Makes a picture of a cloud");
    AddInputOptions(*pCommand, pOptions->input);
    pCommand->add_option("-o,--output", pOptions->sOutPath, "PNG to write")->required()->type_name("OUT.png");
    pCommand->add_option("--size", pOptions->sSize, "Size of the picture, pixels")
        ->capture_default_str()
        ->type_name("WxH");
    pCommand
        ->add_option(
            "--from", pOptions->sFrom,
            "From above with north up, or from where the viewer stands: degrees clockwise from north, "
            "degrees above the horizon")
        ->capture_default_str()
        ->type_name("plan|AZIMUTH,ELEVATION");
    pCommand
        ->add_option("--color", pOptions->sColor, "By the colours of the file, by height, or what there is")
        ->check(CLI::IsMember({"auto", "file", "height"}))
        ->capture_default_str();
    pCommand->add_option("--unit", pOptions->sUnit,
                         "Name of the coordinate unit for scale bar and legend, as m");
    AddQueryOptions(*pCommand, pOptions->query);
    pCommand->footer("Without --lod and --points the level of detail follows the picture's resolution.");
    pCommand->callback([pOptions, &console] { MakeView(*pOptions, console); });
}
