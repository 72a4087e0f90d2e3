#include <bench/BenchClouds.h>

#include <bench/CTempFile.h>
#include <formats/Compact.h>
#include <sample/WriteSamplePly.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <map>
#include <random>

const std::vector<CSamplePnt>& GetTerrain(std::int64_t nNumPnts)
{
    static std::map<std::int64_t, std::vector<CSamplePnt>> mapPnts;
    std::vector<CSamplePnt>& vecPnts = mapPnts[nNumPnts];
    if (vecPnts.empty())
        vecPnts = CSampleTerrain(nNumPnts).CalcPnts();
    return vecPnts;
}

std::vector<CTruncPnt> MakeCompact(std::int64_t nNumPnts, bool bShuffled)
{
    const std::vector<CSamplePnt>& vecPnts = GetTerrain(nNumPnts);
    const float fOrgX = SaturateToFloat(vecPnts[0].x);
    const float fOrgY = SaturateToFloat(vecPnts[0].y);
    const float fOrgZ = SaturateToFloat(vecPnts[0].z);
    std::vector<CTruncPnt> vecCompact;
    vecCompact.reserve(vecPnts.size());
    for (const CSamplePnt& pnt : vecPnts)
        vecCompact.emplace_back(CompactFromCoord(pnt.x, fOrgX), CompactFromCoord(pnt.y, fOrgY),
                                CompactFromCoord(pnt.z, fOrgZ));
    if (bShuffled)
        std::shuffle(vecCompact.begin(), vecCompact.end(), std::mt19937(1));
    return vecCompact;
}

const CPntCld& GetTerrainCld(std::int64_t nNumPnts)
{
    static CNoColors colors;
    static std::map<std::int64_t, std::unique_ptr<CPntCld>> mapClds;
    std::unique_ptr<CPntCld>& pCld = mapClds[nNumPnts];
    if (pCld == nullptr)
    {
        pCld = std::make_unique<CPntCld>(&colors);
        pCld->OnReadType(PntCldType_Pnt);
        pCld->Init(static_cast<int>(nNumPnts));
        for (const CSamplePnt& pnt : GetTerrain(nNumPnts))
            pCld->AddPnt(pnt.x, pnt.y, pnt.z);
        pCld->ComputeTree();
    }
    return *pCld;
}

std::uint64_t SumMm(const CPntCld& cld, CMmSum sum)
{
    zor::geom::PNT_3D pnt;
    for (int i = 0; i < cld.GetNumPnts(); ++i)
    {
        cld.GetPnt(i, pnt);
        sum.Add(pnt.x, pnt.y, pnt.z);
    }
    return sum.Get();
}

std::uint64_t GetTerrainSum(std::int64_t nNumPnts)
{
    static std::map<std::int64_t, std::uint64_t> mapSums;
    const auto it = mapSums.find(nNumPnts);
    if (it != mapSums.end())
        return it->second;
    CMmSum sum = MakeAbsoluteSum();
    for (const CSamplePnt& pnt : GetTerrain(nNumPnts))
        sum.Add(pnt.x, pnt.y, pnt.z);
    return mapSums[nNumPnts] = sum.Get();
}

namespace
{

bool WritePly(const std::string& sPath, std::int64_t nNumPnts)
{
    std::FILE* const pFile = std::fopen(sPath.c_str(), "wb");
    const bool bWritten = pFile != nullptr && WriteSamplePly(CSampleTerrain(nNumPnts), pFile);
    return pFile != nullptr && std::fclose(pFile) == 0 && bWritten;
}

bool WriteUnfinishedPly(const std::string& sPath, const std::string& sPly)
{
    std::ifstream in(sPly, std::ios::binary);
    std::ofstream out(sPath, std::ios::binary);
    for (std::string sLine; std::getline(in, sLine) && sLine != "end_header";)
        out << sLine << '\n';
    out << "element none 1\nproperty none x\nend_header\n" << in.rdbuf();
    return in.good() && out.good();
}

} // namespace

std::string GetBenchFile(const std::string& sName, const std::function<bool(const std::string&)>& write)
{
    static std::map<std::string, std::unique_ptr<CTempFile>> mapFiles;
    std::unique_ptr<CTempFile>& pFile = mapFiles[sName];
    if (pFile == nullptr)
    {
        pFile = std::make_unique<CTempFile>(sName);
        if (!write(pFile->GetPath()))
        {
            std::fprintf(stderr, "%s: cannot be written\n", pFile->GetPath().c_str());
            std::exit(1);
        }
    }
    return pFile->GetPath();
}

std::string GetTerrainPly(std::int64_t nNumPnts)
{
    return GetBenchFile(std::to_string(nNumPnts) + ".ply",
                        [=](const std::string& sPath) { return WritePly(sPath, nNumPnts); });
}

std::string GetUnfinishedPly(std::int64_t nNumPnts)
{
    const std::string sPly = GetTerrainPly(nNumPnts);
    return GetBenchFile(std::to_string(nNumPnts) + "_unfinished.ply",
                        [=](const std::string& sPath) { return WriteUnfinishedPly(sPath, sPly); });
}
