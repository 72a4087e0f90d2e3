#include <host/CConsole.h>
#include <host/CFailure.h>
#include <host/CFileColors.h>
#include <host/COutFile.h>
#include <host/GetExtension.h>
#include <host/Query.h>
#include <host/SaveCloud.h>
#include <host/WritePnts.h>

#include <zor4data/CPntCld.h>

#include <fmt/format.h>

#include <array>

namespace
{

constexpr short c_nVersion = 1; // handed to the library, which writes the cloud's own

bool IsSamePnt(const CPntCld& a, const CPntCld& b, int i)
{
    zor::geom::PNT_3D pntA;
    zor::geom::PNT_3D pntB;
    a.GetPnt(i, pntA);
    b.GetPnt(i, pntB);
    std::array<unsigned char, 3> colorA{};
    std::array<unsigned char, 3> colorB{};
    a.GetPntColor(i, colorA[0], colorA[1], colorA[2]);
    b.GetPntColor(i, colorB[0], colorB[1], colorB[2]);
    return pntA.x == pntB.x && pntA.y == pntB.y && pntA.z == pntB.z && colorA == colorB;
}

/// Points in the octree's cubes: those that a damaged octree has lost are not among them.
std::int64_t CountInTree(const CPntCld& cloud)
{
    CQuery query;
    query.vecPlanes.emplace_back(0.0, 0.0, 0.0, -1.0); // in front of it is nothing
    return CountPnts(cloud, query);
}

bool IsSameCloud(const CPntCld& a, const CPntCld& b)
{
    const int nNumPnts = a.GetNumPnts();
    if (b.GetNumPnts() != nNumPnts || b.IsWithColor() != a.IsWithColor())
        return false;
    for (int i = 0; i < nNumPnts; ++i)
        if (!IsSamePnt(a, b, i))
            return false;
    return nNumPnts == 0 || CountInTree(a) == CountInTree(b);
}

/// The library does not notice a full disk: what it wrote is loaded again and compared.
void SaveNative(CPntCld& cloud, COutFile& out, const CConsole&)
{
    const std::string& sPath = out.GetTempPath();
    if (sPath.empty())
        throw CFailure(out.GetPath(), "is no regular file: a native file could not be checked there");
    if (!cloud.WriteToFile(zor::String(sPath), c_nVersion))
        out.Fail();
    CFileColors colors;
    CPntCld written(&colors);
    if (!written.ReadFromFile(nullptr, PntCldFile_Native, zor::String(sPath)) || !IsSameCloud(cloud, written))
        throw CFailure(out.GetPath(), "could not be written: not every byte arrived (is the disk full?)");
}

} // namespace

TSaveCloud FindSaveCloud(const std::string& sPath)
{
    const std::string sExtension = GetExtension(sPath);
    if (sExtension == ".cld")
        return SaveNative;
    if (sExtension != ".ply" && sExtension != ".csv")
        throw CUsageError(fmt::format("--output: '{}' ends in none of .cld, .ply and .csv", sPath));
    return [makeWriter = FindPntWriter(sPath)](CPntCld& cloud, COutFile& out, const CConsole& console)
    { WritePnts(cloud, CQuery(), makeWriter, out, console); };
}
