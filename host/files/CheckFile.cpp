#include <host/files/CheckFile.h>

#include <formats/IPntSource.h>
#include <host/files/CFileColors.h>
#include <host/files/CStackedPnts.h>
#include <host/files/CTakenPnts.h>
#include <host/files/ColorFindings.h>
#include <host/files/ConvertCommand.h>
#include <host/files/LoadCloud.h>
#include <host/files/OpenInputFile.h>
#include <host/files/PntFindings.h>
#include <host/output/CConsole.h>
#include <host/output/CFailure.h>
#include <host/output/FormatCount.h>
#include <zor4data/CPntCld.h>

#include <fmt/format.h>

#include <algorithm>

namespace zorcld
{

namespace
{

void FindFarPnts(const CSourceFacts& facts, std::vector<CFinding>& vecFindings)
{
    if (facts.nNumNotFinite > 0)
        vecFindings.push_back(FindNotFinitePnts(facts.nNumNotFinite));
    if (facts.nNumFar == 0 && facts.bInfinite)
        vecFindings.push_back(FindMovedPnts());
    if (facts.nNumFar == 0)
        return;
    vecFindings.push_back(
        {"span",
         fmt::format(
             "{} of {} {} more than {} units from the first one ({:.10g} {:.10g} {:.10g}) and {} moved "
             "to that distance; the points span {:.6g} units",
             GroupDigits(facts.nNumFar), FormatCount(facts.summary.nNumPnts, "point"),
             OneOrMany(facts.nNumFar, "lies", "lie"), c_nReach, facts.first.x, facts.first.y, facts.first.z,
             OneOrMany(facts.nNumFar, "is", "are"), facts.summary.CalcExtent()),
         true, ""});
}

/// Where no point of the file has enough others within reach, `zorcld convert` fails too.
void HintAtTiles(std::vector<CFinding>& vecFindings)
{
    if (vecFindings.back().pCode == std::string_view("span"))
        vecFindings.back().sHint = "a smaller part of it, or larger units";
}

void FindMergedPnts(const CSourceFacts& facts, std::vector<CFinding>& vecFindings)
{
    constexpr double c_dWorthTelling = 0.005;
    const zor::geom::RECT_3D& box = facts.summary.box;
    if (facts.CalcShareMerged() < c_dWorthTelling)
        return;
    // A wall along an axis is as thin: where all points have the same x, no unit parts them.
    const bool bThin = !(box.xmax > box.xmin) || !(box.ymax > box.ymin);
    vecFindings.push_back(
        {"small-units",
         fmt::format("its points lie within {:.4g} x {:.4g} units, of which a cloud keeps 1/{:.0f}: they get "
                     "{:.0f} x {:.0f} places only",
                     box.xmax - box.xmin, box.ymax - box.ymin, c_dCompactScale,
                     (box.xmax - box.xmin) * c_dCompactScale + 1.0,
                     (box.ymax - box.ymin) * c_dCompactScale + 1.0),
         false, bThin ? "" : "smaller units: metres instead of degrees or kilometres"});
}

/// Walls and the undersides of things.
void FindStackedPnts(CStackedPnts& stacked, const CSourceFacts& facts, std::vector<CFinding>& vecFindings)
{
    constexpr double c_dWorthTelling = 0.01;
    const std::int64_t nNumLost = stacked.CalcNumLost();
    if (static_cast<double>(nNumLost) < c_dWorthTelling * static_cast<double>(facts.summary.nNumPnts) ||
        nNumLost == 0)
        return;
    vecFindings.push_back(
        {"stacked-points",
         fmt::format("{} of {} {} above or below another, at its x and y, and {} removed: a cloud "
                     "keeps only the first of such points near each other",
                     GroupDigits(nNumLost), FormatCount(facts.summary.nNumPnts, "point"),
                     OneOrMany(nNumLost, "lies", "lie"), OneOrMany(nNumLost, "is", "are")),
         false, ""});
}

/// @return why it cannot be loaded; empty: it can.
std::string TryLoad(CInputFile& file, std::vector<CFinding>& vecFindings)
{
    CConsole quiet;
    quiet.SetQuiet();
    CFileColors colors;
    CPntCld cloud(&colors);
    try
    {
        vecFindings = LoadCloud(cloud, file, quiet).vecFindings;
    }
    catch (const CFailure& failure)
    {
        return failure.GetCause();
    }
    return {};
}

bool IsSmall(CInputFile& file)
{
    constexpr std::int64_t c_nMaxBytes = 64 << 20;
    constexpr std::int64_t c_nMaxPnts = 4000000;
    return file.GetSize() <= c_nMaxBytes && file.CalcNumPnts() <= c_nMaxPnts && !file.GetFacts().bNoProgress;
}

/// The last word is the loader's: damaged files may look well, and the other way round.
void AskLoader(CCheckResult& result, CInputFile& file)
{
    std::vector<CFinding> vecFindings;
    const std::string sCause = TryLoad(file, vecFindings);
    if (!result.cause.empty() && sCause.empty())
    {
        result.vecFindings = std::move(vecFindings);
        result.vecFindings.push_back(
            {"misread", "it loads, but is damaged: " + result.cause.sText, false, ""});
        result.bConvert = false;
    }
    else if (sCause.empty() && result.bUnseen)
    {
        result.vecFindings = std::move(vecFindings);
    }
    else if (result.cause.empty() && !sCause.empty())
    {
        result.bConvert = std::any_of(result.vecFindings.begin(), result.vecFindings.end(),
                                      [](const CFinding& finding) { return finding.bConvert; });
        result.vecFindings.clear();
    }
    if (sCause.empty())
        result.cause = {};
    else
        result.cause.sText = sCause;
}

void FindInPnts(CInputFile& file, const CSourceFacts& facts, CStackedPnts& stacked, CCheckResult& result)
{
    FindMergedPnts(facts, result.vecFindings);
    FindStackedPnts(stacked, facts, result.vecFindings);
    if (facts.summary.bColor && result.nNumPnts > 0 && facts.nMaxColor == 0)
        result.vecFindings.push_back(FindZeroColors(result.facts.bColor));
    else if (result.facts.bColor && facts.nMaxColor > 0 && facts.nMaxColorTaken == 0)
        result.vecFindings.push_back(FindZeroColorsRead());
    file.FindInPnts(facts, result.vecFindings);
    FindFarPnts(facts, result.vecFindings);
    if (facts.nNumFar > 0 && !CTakenPnts::CanTake(facts))
        HintAtTiles(result.vecFindings);
}

/// Reading tells for sure what the head tells in part, as how many points there are.
void TakeFinding(CFinding&& finding, std::vector<CFinding>& vecFindings)
{
    const std::string_view sCode = finding.pCode;
    const auto isSame = [&](const CFinding& other) { return other.pCode == sCode; };
    vecFindings.erase(std::remove_if(vecFindings.begin(), vecFindings.end(), isSame), vecFindings.end());
    vecFindings.push_back(std::move(finding));
}

/// Reads the points where the host can read them one by one: that pass tells the cause, too, of a file that
/// the library refuses.
/// @return whether `zorcld convert` takes the points.
bool LookAtPnts(CCheckResult& result, CInputFile& file, const CConsole& console)
{
    try
    {
        const std::unique_ptr<IPntSource> pSource = file.MakeSource();
        result.bLoaded = pSource == nullptr && file.IsCheckedByLoading();
        result.bUnseen = pSource == nullptr;
        if (pSource == nullptr)
        {
            result.cause = file.FindCause();
            if (result.bLoaded)
                result.cause.sText = TryLoad(file, result.vecFindings);
            return result.cause.empty();
        }
        CStackedPnts stacked;
        const CSourceFacts facts = CollectSourceFacts(*pSource, result.sPath, console, "checking ",
                                                      [&](const CSourcePnt& pnt) { stacked.Add(pnt); });
        const std::int64_t nNumPnts = facts.summary.nNumPnts + facts.nNumNotFinite;
        result.cause = file.FindCause();
        const bool bTaken = CTakenPnts::CanTake(facts);
        if (!result.cause.empty())
            return bTaken;
        result.nNumPnts = nNumPnts;
        for (CFinding& finding : pSource->GetFindings())
            TakeFinding(std::move(finding), result.vecFindings);
        FindInPnts(file, facts, stacked, result);
        return bTaken;
    }
    catch (const CFailure& failure) // the library takes it for something else than it is
    {
        result.cause = file.FindCause();
        if (result.cause.empty())
            result.vecFindings.push_back(FindUnreadablePnts(failure.GetCause()));
        return false;
    }
}

/// Nobody is sent to a command that fails.
void TakeBackHelp(CCheckResult& result)
{
    result.bConvert = false;
    for (CFinding& finding : result.vecFindings)
        finding.bConvert = false;
}

} // namespace

CCheckResult CheckFile(const CInputOptions& input, const CConsole& console)
{
    CCheckResult result;
    result.sPath = input.sPath;
    result.sCommand = FormatConvertCommand(input);
    std::unique_ptr<CInputFile> pFile;
    try
    {
        pFile = OpenInputFile(input);
    }
    catch (const CFailure& failure)
    {
        result.facts = FindFileFacts(zor::String(input.sPath));
        result.cause = {result.facts.eCause, failure.GetCause()};
        if (result.facts.eCause == FileCause_Directory && !result.sCommand.empty())
            result.sCommand = FormatCheckCommand(input);
        result.bConvert = result.facts.eCause == FileCause_Directory && !result.sCommand.empty();
        return result;
    }
    result.pKind = &pFile->GetKind();
    result.facts = pFile->GetFileFacts();
    result.nNumPnts = pFile->CalcNumPnts();
    result.vecFindings = pFile->GetFacts().vecFindings;
    result.cause = pFile->FindHeadCause();
    // Of a file whose points cannot be looked at, only a whole pass tells whether none of them is cut off.
    const bool bTaken =
        result.cause.empty() ? LookAtPnts(result, *pFile, console) : CanConvert(*pFile, console);
    result.bConvert = !result.cause.empty() && !result.bLoaded;
    if (IsSmall(*pFile) && !result.bLoaded)
        AskLoader(result, *pFile);
    if (result.bUnseen && result.cause.empty())
        pFile->FindByReading(result.vecFindings);
    if (!result.cause.empty()) // nothing is read wrongly of what is not read
        result.vecFindings.clear();
    if (bTaken)
        result.vecRemarks = pFile->GetFacts().vecRemarks;
    if (!bTaken || result.sCommand.empty())
        TakeBackHelp(result);
    return result;
}

} // namespace zorcld
