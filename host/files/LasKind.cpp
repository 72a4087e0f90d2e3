#include <formats/CLasGuard.h>
#include <host/files/FileKinds.h>

#include <fmt/format.h>

#include <limits>

namespace zorcld
{

namespace
{

std::string FindLasCause(const std::string& sPath)
{
#if ZORCLD_HAS_LAS
    CLasGuard guard(sPath.c_str());
    guard.Check();
    return guard.GetCause();
#else
    static_cast<void>(sPath);
    return "this zorcld was built without a library that reads LAS (ZOR4DATA_LAS)";
#endif
}

void FindCountFindings(const CLasHeader& header, std::vector<CFinding>& vecFindings)
{
    const std::int64_t nHeld = header.CalcNumHeld();
    if (nHeld >= 0 && nHeld < header.nNumPnts)
        vecFindings.push_back(
            {"las-count",
             fmt::format("its header announces {} points, but {} are there: it is cut off, and "
                         "a point at the first one's place comes for the missing ones",
                         header.nNumPnts, nHeld),
             nHeld > 0, ""});
    if (header.nNumPnts == 0)
        vecFindings.push_back({"las-empty", "it holds no points", false, ""});
    if (header.nNumPnts > std::numeric_limits<std::int32_t>::max())
        vecFindings.push_back(
            {"las-too-many",
             fmt::format("its header announces {} points, a cloud holds 2147483647 at most", header.nNumPnts),
             false, "split it into tiles"});
}

CFileFacts FindLasFacts(const std::string& sPath)
{
    CFileFacts facts;
    CLasGuard guard(sPath.c_str());
    if (!guard.Check())
        return facts;
    const CLasHeader& header = guard.GetHeader();
    facts.nAnnounced = header.nNumPnts;
    facts.nHeld = header.CalcNumHeld();
    FindCountFindings(header, facts.vecFindings);
    if (header.HasColor() && !header.IsColorTaken())
        facts.vecFindings.push_back(
            {"las-color",
             fmt::format("its colours are not taken, since its point format is {}: those of formats 2, 3 and "
                         "5 are",
                         header.nFormat),
             !header.bCompressed,
             header.bCompressed ? "unpack it to .las first, then zorcld convert keeps them" : ""});
    return facts;
}

} // namespace

const CFileKind c_kindLas = {PntCldFile_Las,
                             "las",
                             "LAS",
                             {"las", "laz"},
                             [](std::string_view sFirst) { return sFirst.substr(0, 4) == "LASF"; },
                             FindLasFacts,
                             FindLasCause};

} // namespace zorcld
