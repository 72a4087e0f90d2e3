#include <bench/BenchClouds.h>

#include <octree/Compact.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <random>

#include <unistd.h>

const std::vector<CSamplePnt>& GetTerrain(std::int64_t nNumPnts)
{
    static std::vector<CSamplePnt> vecPnts;
    if (static_cast<std::int64_t>(vecPnts.size()) != nNumPnts)
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
        vecCompact.emplace_back(CompactDaCoord(pnt.x, fOrgX), CompactDaCoord(pnt.y, fOrgY),
                                CompactDaCoord(pnt.z, fOrgZ));
    if (bShuffled)
        std::shuffle(vecCompact.begin(), vecCompact.end(), std::mt19937(1));
    return vecCompact;
}

const CPntCld& GetTerrainCld(std::int64_t nNumPnts)
{
    static CNoColors colors;
    static std::unique_ptr<CPntCld> pCld;
    static std::int64_t nNumMade = -1;
    if (nNumMade != nNumPnts)
    {
        pCld = std::make_unique<CPntCld>(&colors);
        pCld->OnReadType(PntCldType_Pnt);
        pCld->Init(static_cast<int>(nNumPnts));
        for (const CSamplePnt& pnt : GetTerrain(nNumPnts))
            pCld->AddPnt(pnt.x, pnt.y, pnt.z);
        pCld->ComputeTree();
        nNumMade = nNumPnts;
    }
    return *pCld;
}

namespace
{

class CTempPly
{
public:
    explicit CTempPly(std::int64_t nNumPnts)
        : m_sPath((std::filesystem::temp_directory_path() /
                   ("zor4data_bench_" + std::to_string(getpid()) + "_" + std::to_string(nNumPnts) + ".ply"))
                      .string())
    {
        std::FILE* const pFile = std::fopen(m_sPath.c_str(), "wb");
        if (pFile == nullptr || !WriteSamplePly(CSampleTerrain(nNumPnts), pFile) || std::fclose(pFile) != 0)
        {
            std::fprintf(stderr, "%s: cannot be written\n", m_sPath.c_str());
            std::exit(1);
        }
    }

    ~CTempPly() { std::remove(m_sPath.c_str()); }

    CTempPly(const CTempPly&) = delete;
    CTempPly& operator=(const CTempPly&) = delete;

    const std::string& GetPath() const { return m_sPath; }

private:
    std::string m_sPath;
};

} // namespace

std::string GetTerrainPly(std::int64_t nNumPnts)
{
    static std::vector<std::pair<std::int64_t, std::unique_ptr<CTempPly>>> vecFiles;
    for (const auto& file : vecFiles)
        if (file.first == nNumPnts)
            return file.second->GetPath();
    vecFiles.emplace_back(nNumPnts, std::make_unique<CTempPly>(nNumPnts));
    return vecFiles.back().second->GetPath();
}
