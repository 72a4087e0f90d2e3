#include <host/files/CByteReader.h>
#include <host/files/FileKinds.h>
#include <host/files/GridHeader.h>
#include <host/files/IPntSource.h>
#include <host/output/CFailure.h>

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cctype>

namespace zorcld
{

namespace
{

bool IsGrid(std::string_view sFirst)
{
    std::string sLower(sFirst);
    std::transform(sLower.begin(), sLower.end(), sLower.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    constexpr std::array c_starts = {"ncols", "nrows", "xllcorner", "xllcenter"};
    return std::any_of(c_starts.begin(), c_starts.end(),
                       [&](const char* pStart) { return sLower.rfind(pStart, 0) == 0; });
}

CGridHeader ReadHeader(const std::string& sPath)
{
    CByteReader reader(sPath);
    return ReadGridHeader(reader);
}

std::string FindGridCause(const std::string& sPath)
{
    std::string sCause = ReadHeader(sPath).FindLibraryCause();
    if (!sCause.empty())
        return sCause;
    try
    {
        std::int64_t nNumPnts = 0;
        MakeGridSource(sPath)->ForEach([&](const CSourcePnt&) { ++nNumPnts; });
        return nNumPnts > 0 ? "" : "no cell holds a height: there are none, or all have the no-data value";
    }
    catch (const CFailure&)
    {
        return {};
    }
}

CFileFacts FindGridFacts(const std::string& sPath)
{
    CFileFacts facts; // the cells with a height are not counted in the header
    const CGridHeader header = ReadHeader(sPath);
    if (!header.FindLibraryCause().empty() || !header.IsPlaceLost())
        return facts;
    if (header.xCorner && header.yCorner)
        facts.vecFindings.push_back(
            {"grid-zero-corner",
             "its corner is 0, 0 and no centre is given: such a corner counts as not given, and all "
             "points lie at 1.7e200, 1.7e200",
             true, ""});
    else
        facts.vecFindings.push_back({"grid-centre-only",
                                     "it gives the centre of its lower left cell (xllcenter, yllcenter), but "
                                     "no corner: all points lie at 1.7e200, 1.7e200",
                                     true, ""});
    return facts;
}

} // namespace

const CFileKind c_kindGrid = {PntCldFile_AsciiGrid, "grid",       "ESRI ASCII grid", {"asc", "agr"}, IsGrid,
                              FindGridFacts,        FindGridCause};

} // namespace zorcld
