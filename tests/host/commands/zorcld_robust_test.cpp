// Every command that reads, over damaged files: it does its work or says in one line why not. No command
// dies, runs without end, or meets an exception that is not about the file.
#include <tests/host/support/CZorcld.h>
#include <tests/host/support/RunCommands.h>
#include <tests/io/CMemFile.h>
#include <tests/support/CRandom.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <iostream>
#include <limits>
#include <stdexcept>

// Under the address sanitizer too a block that is too large is no block, and not the end of the program.
extern "C" const char* __asan_default_options();
extern "C" const char* __asan_default_options()
{
    return "allocator_may_return_null=1";
}

namespace
{

namespace fs = std::filesystem;

constexpr int c_nMaxSeconds = 120; // of one child: takes about one

struct CSeedFile
{
    std::string sName;
    std::string sType; // as --type takes it
    std::string sBytes;
};

/// The corpora of the fuzz targets and the small native files of the tests.
std::vector<CSeedFile> ReadSeeds()
{
    std::vector<CSeedFile> vecSeeds;
    const auto add = [&](const char* pFolder, const char* pType)
    {
        for (const fs::directory_entry& entry : fs::directory_iterator(std::string(ZORCLD_SOURCES) + pFolder))
            vecSeeds.push_back({entry.path().string(), pType, ReadBytes(entry.path().string())});
    };
    add("/fuzz/corpus/native", "native");
    add("/tests/data/native", "native");
    add("/fuzz/corpus/ply", "ply");
    add("/fuzz/corpus/ascii_grid", "grid");
    if (CZorcld::HasLas())
        add("/fuzz/corpus/las", "las");
    std::sort(vecSeeds.begin(), vecSeeds.end(),
              [](const CSeedFile& a, const CSeedFile& b) { return a.sName < b.sName; });
    return vecSeeds;
}

std::vector<CSeedFile> OfType(const std::vector<CSeedFile>& vecAll, const std::string& sType)
{
    std::vector<CSeedFile> vecSeeds;
    std::copy_if(vecAll.begin(), vecAll.end(), std::back_inserter(vecSeeds),
                 [&](const CSeedFile& seed) { return seed.sType == sType; });
    return vecSeeds;
}

void Overwrite(std::string& sBytes, std::size_t nPos, const void* pValue, std::size_t nSize)
{
    if (nPos + nSize <= sBytes.size())
        std::memcpy(sBytes.data() + nPos, pValue, nSize);
}

/// Numbers that counts, extents, offsets and origins should not be.
void OverwriteNumber(CRandom& random, std::string& sBytes)
{
    constexpr std::int32_t c_nMax = std::numeric_limits<std::int32_t>::max();
    const auto nPos = static_cast<std::size_t>(random.Int(0, static_cast<std::int64_t>(sBytes.size())));
    if (random.Chance(3))
    {
        const float f = random.Pick<float>({0.0F, -1.0F, 1.0e-40F, 3.0e38F, -3.0e38F, 1.0e7F,
                                            std::numeric_limits<float>::infinity(),
                                            std::numeric_limits<float>::quiet_NaN()});
        Overwrite(sBytes, nPos, &f, sizeof f);
        return;
    }
    const auto nAny = static_cast<std::int32_t>(random.Int(-c_nMax, c_nMax));
    const auto nSmall = static_cast<std::int32_t>(random.Int(-20000, 20000));
    const std::int32_t n =
        random.Pick<std::int32_t>({0, 1, -1, c_nMax, -c_nMax - 1, 65536, nAny, nSmall, nSmall});
    Overwrite(sBytes, nPos, &n, sizeof n);
}

void Damage(CRandom& random, const std::vector<CSeedFile>& vecSeeds, std::string& sBytes)
{
    const auto nSize = static_cast<std::int64_t>(sBytes.size());
    const auto at = [&]
    { return static_cast<std::size_t>(random.Int(0, std::max<std::int64_t>(nSize - 1, 0))); };
    const std::int64_t nKind = random.Int(0, 9);
    if (nKind == 0)
        sBytes.resize(at());
    else if (nKind == 1) // the end of another one
    {
        const std::string& sOther = random.Pick(vecSeeds).sBytes;
        sBytes = sBytes.substr(0, at()) + sOther.substr(std::min(at(), sOther.size()));
    }
    else if (nKind == 2)
        sBytes.insert(at(),
                      random.Pick<std::string>({std::string(4, '\0'), "1e400 ", "\n", "nan ", "-0.5 "}));
    else if (nKind < 6 && nSize > 0)
        sBytes[at()] = static_cast<char>(random.Int(0, 255));
    else
        OverwriteNumber(random, sBytes);
}

/// A LAS file that announces thousands of millions of points takes half a minute a load, since so many are
/// made: known, told, and tested where it is about that. Here counts stay below 65536.
void LimitCounts(std::string& sBytes)
{
    constexpr std::size_t c_nCount = 107; // 4 bytes; in versions from 1.4 on also 8 bytes
    constexpr std::size_t c_nLongCount = 247;
    for (std::size_t n = c_nCount + 2; n < std::min(c_nCount + 4, sBytes.size()); ++n)
        sBytes[n] = '\0';
    for (std::size_t n = c_nLongCount + 2; n < std::min(c_nLongCount + 8, sBytes.size()); ++n)
        sBytes[n] = '\0';
}

/// Runs the commands over the file, naming it first: the last name printed is that of the culprit.
void RunOver(const CZorcld& folder, const std::string& sName, const std::string& sType,
             const std::string& sBytes, const std::vector<TCommand>& vecCommands)
{
    const CMemFile file(sBytes);
    for (TCommand command : vecCommands)
    {
        if (!sType.empty())
            command.insert(command.end(), {"--type", sType});
        std::cout << "\nfile " << sName << " command";
        for (const std::string& sArg : command)
            std::cout << ' ' << sArg;
        std::cout << std::endl;
        const std::string sWrong = RunReading(command, file.GetPath(), folder.GetPath(""));
        if (sWrong.empty())
            continue;
        throw std::runtime_error(sWrong);
    }
}

/// The environment asks for everything: that takes minutes.
bool IsAllWanted()
{
    return std::getenv("ZORCLD_ROBUST_ALL") != nullptr;
}

/// A quarter of the commands, another one for each file, and `info` and `check`.
std::vector<TCommand> PickCommands(int nFile)
{
    const std::vector<TCommand>& vecAll = GetReadingCommands();
    if (IsAllWanted())
        return vecAll;
    std::vector<TCommand> vecCommands = {vecAll[1], vecAll[3]};
    for (std::size_t i = static_cast<std::size_t>(nFile % 4); i < vecAll.size(); i += 4)
        vecCommands.push_back(vecAll[i]);
    return vecCommands;
}

/// @param nPart  which of the files: each part has others.
void RunDamaged(const CZorcld& folder, const std::vector<CSeedFile>& vecSeeds, int nPart)
{
    constexpr int c_nFiles = 500;
    constexpr int c_nBatch = 25; // a process each
    // Under the sanitizers, where a file takes several times as long, every second batch.
    const int nStep = CZorcld::IsSanitized() && !IsAllWanted() ? 2 * c_nBatch : c_nBatch;
    for (int nFirst = nPart * c_nFiles; nFirst < (nPart + 1) * c_nFiles; nFirst += nStep)
    {
        const std::string sFailure =
            RunInChild(c_nMaxSeconds,
                       [&]
                       {
                           for (int n = nFirst; n < nFirst + c_nBatch; ++n)
                           {
                               CRandom random(static_cast<std::uint64_t>(n));
                               const CSeedFile& seed = random.Pick(vecSeeds);
                               std::string sBytes = seed.sBytes;
                               for (std::int64_t i = random.Int(1, 4); i > 0; --i)
                                   Damage(random, vecSeeds, sBytes);
                               if (seed.sType == "las")
                                   LimitCounts(sBytes);
                               RunOver(folder, std::to_string(n) + " of " + seed.sName, seed.sType, sBytes,
                                       PickCommands(n));
                           }
                       });
        ASSERT_TRUE(sFailure.empty()) << sFailure;
    }
}

class ZorcldRobust : public testing::Test
{
protected:
    void TearDown() override
    {
        for (const fs::directory_entry& entry : fs::directory_iterator(m_folder.GetPath("")))
            EXPECT_EQ(entry.path().string().find(".zorcld-"), std::string::npos) << entry.path();
    }

    const CZorcld m_folder{CZorcld::InMemory{}};
};

class ZorcldRobustParts : public ZorcldRobust, public testing::WithParamInterface<int>
{
};

} // namespace

TEST_F(ZorcldRobust, Corpora_EveryCommand)
{
    for (const CSeedFile& seed : ReadSeeds())
    {
        const std::string sFailure =
            RunInChild(c_nMaxSeconds,
                       [&]
                       {
                           RunOver(m_folder, seed.sName, "", seed.sBytes, GetReadingCommands());
                           RunOver(m_folder, seed.sName, seed.sType, seed.sBytes, GetReadingCommands());
                       });
        EXPECT_TRUE(sFailure.empty()) << sFailure;
    }
}

// Both extents in plan below 0: their product was taken for an area.
TEST_F(ZorcldRobust, NativeWithNegativeExtents)
{
    for (const CSeedFile& seed : OfType(ReadSeeds(), "native"))
    {
        if (seed.sName.find("plain_two.cld") == std::string::npos)
            continue;
        std::string sBytes = seed.sBytes;
        for (const auto& [nPos, nExtent] : {std::pair<std::size_t, std::int32_t>{67, -5000}, {71, -2500}})
            Overwrite(sBytes, nPos, &nExtent, sizeof nExtent);
        const std::string sFailure = RunInChild(
            c_nMaxSeconds, [&] { RunOver(m_folder, seed.sName, "", sBytes, GetReadingCommands()); });
        EXPECT_TRUE(sFailure.empty()) << sFailure;
        return;
    }
    FAIL() << "the file is not there";
}

TEST_P(ZorcldRobustParts, DamagedNatives)
{
    RunDamaged(m_folder, OfType(ReadSeeds(), "native"), GetParam());
}

TEST_P(ZorcldRobustParts, DamagedFiles)
{
    RunDamaged(m_folder, ReadSeeds(), GetParam());
}

INSTANTIATE_TEST_SUITE_P(Seeds, ZorcldRobustParts, testing::Range(0, 10));
