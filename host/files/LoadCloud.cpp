#include <formats/CLasGuard.h>
#include <host/files/CloudSteps.h>
#include <host/files/FileKinds.h>
#include <host/files/LoadCloud.h>
#include <host/files/SourceFacts.h>
#include <host/output/CConsole.h>
#include <host/output/CFailure.h>
#include <host/output/CProgressBar.h>

#include <zor4data/CPntCld.h>

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <filesystem>
#include <new>

namespace zorcld
{

namespace
{

double CalcSeconds(CProgressBar::TClock::duration duration)
{
    return std::chrono::duration<double>(duration).count();
}

/// A count that does not fit into memory is most often one that the file cannot hold either.
[[noreturn]] void FailForMemory(const CFileKind& kind, const CLoadFacts& facts, const std::string& sPath)
{
    std::string sCause = kind.pFindCause(sPath);
    if (sCause.empty() && facts.nAnnounced >= 0)
        sCause = fmt::format("not enough memory for the {} points that it announces", facts.nAnnounced);
    throw CFailure(sPath, sCause.empty() ? "not enough memory" : sCause);
}

/// @param pProgress  null: no calls.
bool ReadFile(CPntCld& cloud, IDlgProgress* pProgress, const CFileKind& kind, const CLoadFacts& facts,
              const std::string& sPath)
{
    try
    {
        return cloud.ReadFromFile(pProgress, kind.eFile, zor::String(sPath));
    }
    catch (const std::bad_alloc&)
    {
        FailForMemory(kind, facts, sPath);
    }
}

/// Of a compressed file, only reading it tells how many points it holds.
///
/// @param nNumCalls  of the progress bar: of LAS one a point, whose count the header announced.
void CountPnts(CLoadFacts& facts, const CFileFacts& fileFacts, std::int64_t nNumCalls, std::int64_t nNumPnts)
{
    std::int64_t nHeld = fileFacts.nHeld < 0 ? facts.nAnnounced : std::min(fileFacts.nHeld, facts.nAnnounced);
    if (facts.pKind->eFile == PntCldFile_Las && fileFacts.nHeld < 0 && nNumCalls < facts.nAnnounced)
    {
        nHeld = nNumCalls;
        facts.vecFindings.push_back(
            {"las-count",
             fmt::format("its header announces {} points, but {} could be read: it is damaged or cut off",
                         facts.nAnnounced, nNumCalls),
             false, ""});
    }
    if (fileFacts.bDuplicates && nHeld >= 0)
        facts.nDuplicates = std::max<std::int64_t>(nHeld - nNumPnts, 0);
}

/// Points whose coordinates are numbers. Only the origin of a damaged native file makes others.
bool HasPlace(const CPntCld& cloud)
{
    zor::geom::RECT_3D box;
    return cloud.GetNumPnts() == 0 || !cloud.GetBdry(box) ||
           std::isfinite(box.xmin + box.ymin + box.zmin + box.xmax + box.ymax + box.zmax);
}

/// Points out of the first one's reach lie at the end of it once they are loaded. (The bounds of a cloud do
/// not tell: they are those of its octree.)
void FindMovedPnts(const CPntCld& cloud, const std::string& sPath, CLoadFacts& facts)
{
    constexpr double c_dNearEnd = c_dReach - 0.0001;
    CLasGuard guard(sPath.c_str());
    if (facts.pKind->eFile != PntCldFile_Las || !guard.Check())
        return;
    const std::array<double, 3> adFirst = guard.ReadFirstPnt();
    const auto calcDist = [&](double d, std::size_t k) { return std::fabs(d - CalcOrigin(adFirst[k])); };
    double dReach = 0.0;
    for (int i = 0; i < cloud.GetNumPnts() && dReach < c_dNearEnd; ++i)
    {
        zor::geom::PNT_3D pnt;
        cloud.GetPnt(i, pnt);
        dReach = std::max({calcDist(pnt.x, 0), calcDist(pnt.y, 1), calcDist(pnt.z, 2)});
    }
    if (dReach >= c_dNearEnd)
        facts.vecFindings.push_back(
            {"span",
             fmt::format("points lie more than 214748 units from the first one ({:.10g} {:.10g} {:.10g}) and "
                         "are moved to that distance",
                         adFirst[0], adFirst[1], adFirst[2]),
             false, guard.GetHeader().bCompressed ? "unpack it to .las and check that" : ""});
}

} // namespace

void RefuseMovedPnts(const CLoadFacts& facts, const std::string& sPath)
{
    for (const CFinding& finding : facts.vecFindings)
        if (finding.pCode == std::string_view("span"))
            throw CFailure(sPath, "its points lie more than 214748 units from the first one; unpacked to "
                                  ".las it may be converted");
}

void AddTypeOption(CLI::App& command, std::string& sType)
{
    std::vector<std::string> vecNames;
    for (const CFileKind* pKind : GetFileKinds())
        vecNames.emplace_back(pKind->pName);
    command.add_option("--type", sType, "Type of the file, where first bytes and extension mislead")
        ->check(CLI::IsMember(vecNames));
}

void AddInputOptions(CLI::App& command, CInputOptions& input)
{
    command.add_option("FILE", input.sPath, "File to read")->required();
    AddTypeOption(command, input.sType);
}

CLoadFacts LoadCloud(CPntCld& cloud, const CInputOptions& input, const CConsole& console)
{
    const CFileKind& kind = FindFileKind(input.sPath, input.sType);
    const CFileFacts fileFacts = kind.pFindFacts(input.sPath);
    CLoadFacts facts;
    facts.pKind = &kind;
    facts.nAnnounced = fileFacts.nAnnounced;
    facts.vecFindings = fileFacts.vecFindings;

    const auto timeStart = CProgressBar::TClock::now();
    CProgressBar progress(console,
                          fmt::format("reading {}", std::filesystem::path(input.sPath).filename().string()));
    progress.Start();
    const bool bRead = ReadFile(cloud, fileFacts.bNoProgress ? nullptr : &progress, kind, facts, input.sPath);
    const auto timeEnd = CProgressBar::TClock::now();
    progress.Stop();
    const bool bHasType = cloud.GetColorListener() != nullptr; // a file without points may give it none
    if (!bRead || !bHasType || !HasPlace(cloud))
    {
        const std::string sCause = kind.pFindCause(input.sPath);
        throw CFailure(input.sPath, sCause.empty()
                                        ? fmt::format("its {} data are damaged or cut off", kind.pTitle)
                                        : sCause);
    }

    CountPnts(facts, fileFacts, progress.GetNumCalls(), cloud.GetNumPnts());
    FindMovedPnts(cloud, input.sPath, facts);
    for (const CFinding& finding : facts.vecFindings)
        console.Note(fmt::format("{}: {}", input.sPath, finding.sText));
    facts.dSeconds = CalcSeconds(timeEnd - timeStart);
    if (progress.HasPos())
    {
        facts.dSecondsRead = CalcSeconds(progress.GetLastTime() - timeStart);
        facts.dSecondsIndex = CalcSeconds(timeEnd - progress.GetLastTime());
    }
    return facts;
}

} // namespace zorcld
