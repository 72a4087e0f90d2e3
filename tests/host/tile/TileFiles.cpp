#include <tests/host/tile/TileFiles.h>

#include <tests/host/support/CZorcld.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <random>

namespace fs = std::filesystem;

namespace
{

template <class T>
T GetAt(const std::string& sBytes, std::size_t nPos)
{
    T value{};
    if (nPos + sizeof value <= sBytes.size())
        std::memcpy(&value, sBytes.data() + nPos, sizeof value);
    return value;
}

} // namespace

CNativePntsRead ReadNativePnts(const std::string& sPath)
{
    const std::string sBytes = ReadBytes(sPath);
    CNativePntsRead read;
    if (sBytes.size() < 27)
        return read;
    for (std::size_t k = 0; k < 3; ++k)
        read.afOrigin[k] = GetAt<float>(sBytes, 11 + 4 * k);
    const std::size_t nSize = GetAt<std::int16_t>(sBytes, 9) == 1 ? 15 : 12;
    const auto nNum = static_cast<std::size_t>(GetAt<std::int32_t>(sBytes, 23));
    for (std::size_t i = 0; i < nNum; ++i)
        read.vecPnts.push_back(GetAt<TSteps>(sBytes, 27 + i * nSize));
    std::sort(read.vecPnts.begin(), read.vecPnts.end());
    return read;
}

nlohmann::json ReadManifest(const std::string& sFolder)
{
    return nlohmann::json::parse(ReadBytes(sFolder + "/manifest.json"), nullptr, false);
}

std::vector<nlohmann::json> GetTiles(const std::string& sFolder)
{
    return ReadManifest(sFolder).at("tiles").get<std::vector<nlohmann::json>>();
}

std::int64_t StepFromBorder(double dBorder, float fOrigin)
{
    const double dSteps = (dBorder - static_cast<double>(fOrigin)) * 10000.0;
    return std::llround(dSteps + 0.5);
}

std::vector<TSteps> ChooseAround(const CNativePntsRead& pnts, const nlohmann::json& core, std::int64_t nReach)
{
    std::vector<TSteps> vecChosen;
    for (const TSteps& pnt : pnts.vecPnts)
    {
        bool bInside = true;
        for (std::size_t k = 0; k < 2; ++k)
            bInside = bInside && pnt[k] >= StepFromBorder(core[k].get<double>(), pnts.afOrigin[k]) - nReach &&
                      pnt[k] < StepFromBorder(core[k + 2].get<double>(), pnts.afOrigin[k]) + nReach;
        if (bInside)
            vecChosen.push_back(pnt);
    }
    return vecChosen;
}

std::vector<TSteps> JoinCores(const std::string& sFolder)
{
    std::vector<TSteps> vecAll;
    for (const nlohmann::json& tile : GetTiles(sFolder))
    {
        const CNativePntsRead read = ReadNativePnts(sFolder + "/" + tile["file"].get<std::string>());
        const std::vector<TSteps> vecCore = ChooseAround(read, tile["core"], 0);
        vecAll.insert(vecAll.end(), vecCore.begin(), vecCore.end());
    }
    std::sort(vecAll.begin(), vecAll.end());
    return vecAll;
}

std::vector<float> MakeScan(std::uint32_t nSeed, int nNumPnts)
{
    std::mt19937 random(nSeed);
    const auto pick = [&](int nMin, int nMax)
    { return static_cast<float>(std::uniform_int_distribution<int>(nMin, nMax)(random)); };
    std::vector<float> vecCoords;
    for (int i = 0; i < nNumPnts; ++i)
    {
        float x = pick(-300, 300) / 2.0F;
        float y = pick(-300, 300) / 2.0F;
        const float fEdge = i % 3 == 0 ? 16.0F : i % 3 == 1 ? 50.0F : 64.0F;
        if (i % 8 == 0)
            x = pick(-2, 2) * fEdge;
        if (i % 12 == 0)
            y = pick(-2, 2) * fEdge;
        float z = std::floor(x / 20.0F) + (y > 30.0F ? 9.0F : 0.0F);
        if (std::fmod(std::fabs(x), 40.0F) < 25.0F && std::fmod(std::fabs(y), 60.0F) < 18.0F)
            z += 7.0F;
        z += pick(0, 9) == 0 ? pick(0, 24) / 2.0F : 0.0F;
        vecCoords.insert(vecCoords.end(), {x, y, z});
    }
    return vecCoords;
}

std::string ReadFolder(const std::string& sFolder)
{
    std::vector<std::string> vecFiles;
    for (const fs::directory_entry& entry : fs::directory_iterator(sFolder))
        if (entry.is_regular_file())
            vecFiles.push_back(entry.path().string());
    std::sort(vecFiles.begin(), vecFiles.end());
    std::string sAll;
    for (const std::string& sFile : vecFiles)
        sAll += fs::path(sFile).filename().string() + "\n" + ReadBytes(sFile);
    return sAll;
}

std::vector<float> WithoutStacked(const std::vector<float>& vecCoords)
{
    std::vector<std::array<float, 3>> vecPnts;
    for (std::size_t i = 0; i < vecCoords.size(); i += 3)
        vecPnts.push_back({vecCoords[i], vecCoords[i + 1], vecCoords[i + 2]});
    std::sort(vecPnts.begin(), vecPnts.end());
    vecPnts.erase(std::unique(vecPnts.begin(), vecPnts.end(),
                              [](const auto& a, const auto& b) { return a[0] == b[0] && a[1] == b[1]; }),
                  vecPnts.end());
    std::vector<float> vecLeft;
    for (const auto& pnt : vecPnts)
        vecLeft.insert(vecLeft.end(), pnt.begin(), pnt.end());
    return vecLeft;
}

std::vector<TSteps> RunCommands(const CZorcld& zorcld, const std::string& sFolder,
                                const std::vector<std::string>& vecMore)
{
    std::vector<std::string> vecArgs = {"tile", sFolder, "--print-commands", "ground"};
    vecArgs.insert(vecArgs.end(), vecMore.begin(), vecMore.end());
    const CRun run = zorcld.Run(vecArgs);
    const std::string sScript =
        zorcld.Write("run.sh", "set -e\nzorcld() { \"$ZORCLD\" \"$@\"; }\n" + run.sOut);
    EXPECT_EQ(
        std::system(("ZORCLD='" + CZorcld::GetProgram() + "' sh '" + sScript + "' >/dev/null 2>&1").c_str()),
        0);
    std::vector<TSteps> vecAll;
    for (const auto& entry : std::filesystem::directory_iterator(sFolder + "/ground"))
    {
        const std::vector<TSteps> vecPart = ReadNativePnts(entry.path().string()).vecPnts;
        vecAll.insert(vecAll.end(), vecPart.begin(), vecPart.end());
    }
    std::sort(vecAll.begin(), vecAll.end());
    return vecAll;
}
