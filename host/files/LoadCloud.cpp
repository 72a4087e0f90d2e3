#include <host/files/LoadCloud.h>

#include <formats/CloudLimits.h>
#include <formats/CountOf.h>
#include <host/files/CFileKind.h>
#include <host/files/CWatchedCld.h>
#include <host/files/ConvertCommand.h>
#include <host/files/OpenInputFile.h>
#include <host/files/PntFindings.h>
#include <host/output/CConsole.h>
#include <host/output/CFailure.h>
#include <host/output/CProgressBar.h>
#include <host/output/GetFileName.h>
#include <zor4data/CPntCld.h>
#include <zor4data/LoadNative.h>

#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <new>
#include <utility>

namespace zorcld
{

namespace
{

double CalcSeconds(CProgressBar::TClock::duration duration)
{
    return std::chrono::duration<double>(duration).count();
}

/// A count that does not fit into memory is most often one that the file cannot hold either.
[[noreturn]] void FailForMemory(CInputFile& file)
{
    std::string sCause = file.FindCause();
    const std::int64_t nAnnounced = file.GetFileFacts().nAnnounced;
    if (sCause.empty() && nAnnounced >= 0)
        sCause = fmt::format("not enough memory for the {} that it announces", CountOf(nAnnounced, "point"));
    throw CFailure(file.GetPath(), sCause.empty() ? "not enough memory" : sCause);
}

/// Progress of a native file, which no bar shows: most are there at once.
class CNativeProgress final : public IDlgProgress
{
public:
    CNativeProgress(const CConsole& console, std::string sDoing)
        : m_console(console), m_sDoing(std::move(sDoing))
    {
    }
    void Start() override {}
    void Stop() override {}
    bool SetPos(int nPos) override
    {
        m_console.TellWatcher(m_sDoing, nPos);
        return true;
    }

private:
    const CConsole& m_console;
    std::string m_sDoing;
};

/// @param pProgress  null: no calls.
bool ReadFile(CPntCld& cloud, IDlgProgress* pProgress, CInputFile& file, const CConsole& console)
{
    try
    {
        if (file.GetKind().eFile == PntCldFile_Native)
        {
            CNativeProgress progress(console, "reading " + GetFileName(file.GetPath()));
            return LoadNative(cloud, &progress, zor::String(file.GetPath()));
        }
        return cloud.ReadFromFile(pProgress, file.GetKind().eFile, zor::String(file.GetPath()));
    }
    catch (const std::bad_alloc&)
    {
        FailForMemory(file);
    }
}

/// Points whose coordinates are numbers. Only the origin of a damaged native file makes others.
bool HasPlace(const CPntCld& cloud)
{
    zor::geom::RECT_3D box;
    return cloud.GetNumPnts() == 0 || !cloud.GetBdry(box) ||
           std::isfinite(box.xmin + box.ymin + box.zmin + box.xmax + box.ymax + box.zmax);
}

/// A point at no certain place stands for points that were announced, where none has come.
void DropMissingPnts(CPntCld& cloud)
{
    const enumPntCldType eType = cloud.IsWithColor() ? PntCldType_PntColor : PntCldType_Pnt;
    cloud.Clear();
    cloud.OnReadType(eType);
    cloud.OnReadNumPnts(0);
    cloud.OnReadEnd();
}

/// @return the command that helps against what has been found; empty: none does.
std::string FindCommand(const CLoadFacts& facts, const CPntCld& cloud, CInputFile& file,
                        const CConsole& console)
{
    const bool bHelps = std::any_of(facts.vecFindings.begin(), facts.vecFindings.end(),
                                    [](const CFinding& finding) { return finding.bConvert; });
    if (!bHelps)
        return {};
    // The points have just been read, and lie near each other.
    if (file.IsPlaceTaken() && cloud.GetNumPnts() > 0 && !facts.HasFinding("span"))
        return FormatConvertCommand(file.GetInput());
    return FindConvertCommand(file, console);
}

/// A line each; the last one that converting helps against names the command.
void NoteFindings(const CLoadFacts& facts, const CInputFile& file, const CConsole& console)
{
    const auto itLast = std::find_if(facts.vecFindings.rbegin(), facts.vecFindings.rend(),
                                     [](const CFinding& finding) { return finding.bConvert; });
    for (const CFinding& finding : facts.vecFindings)
    {
        const bool bHelp = !facts.sCommand.empty() && &finding == &*itLast;
        console.Note(fmt::format("{}: {}{}", file.GetPath(), finding.sText,
                                 bHelp ? "; what helps: " + facts.sCommand : std::string()));
    }
}

} // namespace

bool CLoadFacts::HasFinding(std::string_view sCode) const
{
    return std::any_of(vecFindings.begin(), vecFindings.end(),
                       [&](const CFinding& finding) { return finding.pCode == sCode; });
}

void RefuseMovedPnts(const CLoadFacts& facts, const std::string& sPath)
{
    if (facts.HasFinding("span"))
        throw CFailure(sPath,
                       fmt::format("its points lie more than {} units from the first one; a zorcld that is "
                                   "built with LASzip may convert it",
                                   c_nReach));
}

/// Loads the file into a cloud.
/// @param facts  receives how many points came, and how many of them are no places.
/// @return false when that failed, or the cloud is of no use.
static bool Fill(CPntCld& cloud, IDlgProgress* pProgress, CInputFile& file, CLoadFacts& facts,
                 const CConsole& console)
{
    CWatchedCld watched(cloud);
    if (!ReadFile(watched, pProgress, file, console))
        return false;
    cloud = watched; // shares what it holds
    const bool bNative = file.GetKind().eFile == PntCldFile_Native;
    facts.nNumRead = bNative ? cloud.GetNumPnts() : watched.GetNumRead();
    facts.nNotNumbers = watched.GetNumNotFinite();
    if (facts.nNumRead == 0 && cloud.GetNumPnts() > 0)
        DropMissingPnts(cloud);
    const bool bHasType = cloud.GetColorListener() != nullptr; // a file without points may give it none
    return bHasType && HasPlace(cloud);
}

static CLoadFacts ReadCloud(CPntCld& cloud, CInputFile& file, const CConsole& console)
{
    const CInputFacts& fileFacts = file.GetFacts();
    CLoadFacts facts;
    facts.vecFindings = fileFacts.vecFindings;
    facts.coords = fileFacts.coords;

    const auto timeStart = CProgressBar::TClock::now();
    CProgressBar progress(console, fmt::format("reading {}", GetFileName(file.GetPath())));
    progress.Start();
    const bool bRead = Fill(cloud, fileFacts.bNoProgress ? nullptr : &progress, file, facts, console);
    const auto timeEnd = CProgressBar::TClock::now();
    progress.Stop();
    if (!bRead)
    {
        const std::string sCause = file.FindCause();
        throw CFailure(file.GetPath(), sCause.empty() ? fmt::format("its {} data are damaged or cut off",
                                                                    file.GetKind().pTitle)
                                                      : sCause);
    }

    if (fileFacts.bDuplicates)
        facts.nDuplicates = std::max<std::int64_t>(facts.nNumRead - cloud.GetNumPnts(), 0);
    if (facts.nNotNumbers > 0)
        facts.vecFindings.push_back(FindNotFinitePnts(facts.nNotNumbers));
    file.FindInCount(facts.nNumRead, facts.vecFindings);
    file.FindInCloud(cloud, facts.vecFindings);
    facts.dSeconds = CalcSeconds(timeEnd - timeStart);
    if (progress.HasPos())
    {
        facts.dSecondsRead = CalcSeconds(progress.GetLastTime() - timeStart);
        facts.dSecondsIndex = CalcSeconds(timeEnd - progress.GetLastTime());
    }
    return facts;
}

CLoadFacts LoadCloud(CPntCld& cloud, CInputFile& file, const CConsole& console)
{
    CLoadFacts facts = ReadCloud(cloud, file, console);
    NoteFindings(facts, file, console);
    return facts;
}

CLoadFacts LoadOrAdvise(CPntCld& cloud, CInputFile& file, const CConsole& console)
{
    try
    {
        CLoadFacts facts = ReadCloud(cloud, file, console);
        facts.sCommand = FindCommand(facts, cloud, file, console);
        NoteFindings(facts, file, console);
        return facts;
    }
    catch (const CFailure& failure)
    {
        const std::string sCommand = FindConvertCommand(file, console);
        throw sCommand.empty()
            ? failure
            : CFailure(failure.GetFile(), fmt::format("{}; what helps: {}", failure.GetCause(), sCommand));
    }
}

CLoadFacts LoadOrAdvise(CPntCld& cloud, const CInputOptions& input, const CConsole& console)
{
    return LoadOrAdvise(cloud, *OpenInputFile(input), console);
}

} // namespace zorcld
