#include <formats/LasFindings.h>
#include <host/commands/Commands.h>

#include <host/commands/AddOutOption.h>
#include <host/files/AddInputOptions.h>
#include <host/files/CCloudSource.h>
#include <host/files/CFileColors.h>
#include <host/files/CShiftedSource.h>
#include <host/files/CTakenPnts.h>
#include <host/files/LoadCloud.h>
#include <host/files/NoteLeftOut.h>
#include <host/files/OpenInputFile.h>
#include <host/files/OpenLasPnts.h>
#include <host/files/SaveCloud.h>
#include <host/output/CConsole.h>
#include <host/output/CFailure.h>
#include <host/output/COutFile.h>
#include <host/output/CProgressBar.h>
#include <host/output/FormatCount.h>
#include <host/output/GetExtension.h>
#include <host/output/PntWriter.h>
#include <host/output/RefuseSameFile.h>
#include <zor4data/CPntCld.h>

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <optional>
#include <utility>

namespace zorcld
{

namespace
{

struct COptions
{
    CInputOptions input;
    CClassOptions classes;
    std::string sOutPath;
    bool bForce = false;
    bool bCellCentre = false;
};

unsigned char ToByte(std::uint16_t n)
{
    return static_cast<unsigned char>(n);
}

std::string FormatResult(std::int64_t nNumPnts, bool bColor, std::int64_t nRemoved)
{
    std::string sText = FormatCount(nNumPnts, "point") + (bColor ? " with colour" : "");
    if (nRemoved > 0)
        sText += fmt::format(", {} removed at the x and y of another point", GroupDigits(nRemoved));
    return sText;
}

/// PLY holds floats: the user is told where they are coarser than thousandths even when shifted.
void TellCoarseness(const CPntSummary& summary, const COptions& options, const CConsole& console)
{
    constexpr double c_dRound = 1000.0; // to which coordinates are shifted
    constexpr float c_fFine = 0.001F;
    const auto fLargest = static_cast<float>(summary.CalcExtent() + c_dRound);
    const float fStep = std::nextafter(fLargest, std::numeric_limits<float>::max()) - fLargest;
    if (fStep > c_fFine)
        console.Note(
            fmt::format("{}: so far from their origin floats lie up to {:.2g} units apart; .cld keeps "
                        "1/{:.0f}",
                        options.sOutPath, fStep, c_dCompactScale));
}

/// @return what to say of the result.
std::string WriteNative(const CTakenPnts& pnts, const COptions& options, const CConsole& console)
{
    CFileColors colors;
    CPntCld cloud(&colors);
    const CPntSummary& summary = pnts.GetSummary();
    CProgressBar progress(console, "converting to " + options.sOutPath);
    progress.Start();
    cloud.OnReadType(summary.bColor ? PntCldType_PntColor : PntCldType_Pnt);
    cloud.OnReadNumPnts(static_cast<int>(summary.nNumPnts)); // checked: it is an int32
    std::int64_t nDone = 0;
    pnts.ForEach(
        [&](const CSourcePnt& pnt)
        {
            progress.SetPos(static_cast<int>(nDone++ * 100 / summary.nNumPnts));
            if (summary.bColor)
                cloud.OnReadPnt(pnt.x, pnt.y, pnt.z, ToByte(pnt.r), ToByte(pnt.g), ToByte(pnt.b));
            else
                cloud.OnReadPnt(pnt.x, pnt.y, pnt.z);
        });
    cloud.OnReadEnd();
    progress.Stop();
    SaveCloud(cloud, options.sOutPath);
    return FormatResult(cloud.GetNumPnts(), summary.bColor, summary.nNumPnts - cloud.GetNumPnts());
}

std::string WritePly(const CTakenPnts& pnts, const COptions& options, const CConsole& console)
{
    const CPntSummary& summary = pnts.GetSummary();
    COutFile out(options.sOutPath);
    const std::unique_ptr<IPntWriter> pWriter = MakePlyWriter(WriteTo(out), summary);
    CProgressBar progress(console, "writing " + options.sOutPath);
    progress.Start();
    std::int64_t nDone = 0;
    CCldCadPnt record;
    pnts.ForEach(
        [&](const CSourcePnt& pnt)
        {
            progress.SetPos(static_cast<int>(nDone++ * 100 / summary.nNumPnts));
            record.m_pnt = {pnt.x, pnt.y, pnt.z};
            record.m_fR = static_cast<float>(pnt.r) / 255.0F;
            record.m_fG = static_cast<float>(pnt.g) / 255.0F;
            record.m_fB = static_cast<float>(pnt.b) / 255.0F;
            pWriter->Add(record);
        });
    pWriter->Finish();
    out.Commit();
    progress.Stop();
    if (!pWriter->GetNote().empty())
        console.Note(fmt::format("{}: {}", options.sOutPath, pWriter->GetNote()));
    TellCoarseness(summary, options, console);
    return FormatResult(summary.nNumPnts, summary.bColor, 0);
}

/// A file that only the library reads, saved as loaded: the points of a native file are not weighed anew,
/// but an octree that misses some of them is built again.
std::string SaveLoaded(CInputFile& file, const COptions& options, const CConsole& console)
{
    CFileColors colors;
    CPntCld cloud(&colors);
    const CLoadFacts facts = LoadCloud(cloud, file, console);
    RefuseMovedPnts(facts, file.GetPath());
    if (cloud.GetNumPnts() == 0)
        throw CFailure(file.GetPath(), "holds no points");
    file.Mend(cloud);
    SaveCloud(cloud, options.sOutPath);
    return FormatResult(cloud.GetNumPnts(), cloud.IsWithColor(), facts.nDuplicates);
}

/// The library would read the announced ones only.
void TellUntakenPnts(const IPntSource& source, CInputFile& file, const CConsole& console)
{
    const std::int64_t nAnnounced = file.GetFileFacts().nAnnounced;
    const std::int64_t nNumUntaken = source.GetNumUntaken();
    if (nNumUntaken > 0)
        console.Note(
            fmt::format("{}: {}", file.GetPath(), FindTakenPnts(nAnnounced, nAnnounced + nNumUntaken).sText));
}

std::string ConvertPnts(IPntSource& source, CInputFile& file, const COptions& options,
                        const CConsole& console)
{
    const CTakenPnts pnts(source, options.input.sPath, console);
    TellUntakenPnts(source, file, console);
    for (const CFinding& finding : source.GetFindings())
        if (!finding.bConvert || finding.bPart) // what converting mends goes wrong for other commands only
            console.Note(fmt::format("{}: {}", options.input.sPath, finding.sText));
    std::string sResult = GetExtension(options.sOutPath) == ".cld" ? WriteNative(pnts, options, console)
                                                                   : WritePly(pnts, options, console);
    NoteLeftOut(source.GetLeftOut(), options.sOutPath, console);
    for (const std::string& sNote : pnts.GetNotes())
        console.Note(fmt::format("{}: {}", options.sOutPath, sNote));
    return sResult;
}

/// @return the source with the points where they are wanted in their cells.
/// @throws CFailure when centres of cells are wanted of what has none.
std::unique_ptr<IPntSource> PlaceInCells(const CInputFile& file, std::unique_ptr<IPntSource> pSource,
                                         const COptions& options)
{
    const std::optional<zor::geom::PNT_2D> shift = file.FindCentreShift();
    if (options.bCellCentre && !shift)
        throw CFailure(file.GetPath(), "is no grid: --cell-centre has no cells to go by");
    return options.bCellCentre ? MakeShiftedSource(std::move(pSource), *shift) : std::move(pSource);
}

void TellPlace(const CInputFile& file, const COptions& options, const CConsole& console)
{
    const std::optional<zor::geom::PNT_2D> shift = file.FindCentreShift();
    if (!shift)
        return;
    console.Note(
        options.bCellCentre
            ? fmt::format("{}: points are put at the centres of their cells", options.sOutPath)
            : fmt::format(
                  "{}: points are the upper left corners of their cells, half a cell ({:.10g} by {:.10g}) "
                  "from the centres; --cell-centre puts them there",
                  options.sOutPath, shift->x, -shift->y));
}

void Convert(const COptions& options, const CConsole& console)
{
    const std::string sExtension = GetExtension(options.sOutPath);
    if (sExtension != ".ply" && sExtension != ".cld")
        throw CUsageError(fmt::format("OUT: '{}' ends neither in .ply nor in .cld", options.sOutPath));
    RefuseSameFile(options.input.sPath, options.sOutPath, "OUT", options.bForce);
    const CClassChoice choice(options.classes);
    const std::unique_ptr<CInputFile> pFile = OpenInputFile(options.input);
    std::unique_ptr<IPntSource> pSource =
        choice.IsAsked() ? OpenLasPnts(*pFile, choice) : pFile->MakeSource();
    pSource = PlaceInCells(*pFile, std::move(pSource), options);
    std::string sResult;
    if (pSource == nullptr && sExtension == ".cld")
    {
        sResult = SaveLoaded(*pFile, options, console);
    }
    else
    {
        if (pSource == nullptr)
            pSource = MakeCloudSource(*pFile, console);
        sResult = ConvertPnts(*pSource, *pFile, options, console);
    }
    TellPlace(*pFile, options, console);
    console.Note(fmt::format("{}: {}", options.sOutPath, sResult));
}

} // namespace

void AddConvertCommand(CLI::App& app, const CConsole& console)
{
    const auto pOptions = std::make_shared<COptions>();
    CLI::App* const pCommand = app.add_subcommand(
        "convert", "Writes a file as .ply or .cld that loads as it is meant; reads more than the others do");
    AddInputOptions(*pCommand, pOptions->input);
    AddClassOptions(*pCommand, pOptions->classes);
    pCommand->add_option("OUT", pOptions->sOutPath, "File to write, .ply or .cld")->required();
    AddForceFlag(*pCommand, pOptions->bForce);
    pCommand->add_flag(
        "--cell-centre", pOptions->bCellCentre,
        "Put the points of a grid at the centres of their cells, not at the upper left corners");
    pCommand->callback([pOptions, &console] { Convert(*pOptions, console); });
}

} // namespace zorcld
