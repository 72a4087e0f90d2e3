// Every command that reads, over damaged files: it does its work or says in one line why not. No command
// dies, runs without end, or meets an exception that is not about the file.
#include <tests/host/support/CZorcld.h>
#include <tests/host/support/DamagedFiles.h>
#include <tests/host/support/RunCommands.h>
#include <tests/io/CMemFile.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <iostream>
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
                               const CSeedFile file = MakeDamaged(vecSeeds, n);
                               RunOver(folder, std::to_string(n) + " of " + file.sName, file.sType,
                                       file.sBytes, PickCommands(n));
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
    for (const CSeedFile& seed : ReadSeeds(ZORCLD_SOURCES))
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
    for (const CSeedFile& seed : OfType(ReadSeeds(ZORCLD_SOURCES), "native"))
    {
        if (seed.sName.find("plain_two.cld") == std::string::npos)
            continue;
        std::string sBytes = seed.sBytes;
        for (const auto& [nPos, nExtent] : {std::pair<std::size_t, std::int32_t>{67, -5000}, {71, -2500}})
            std::memcpy(sBytes.data() + nPos, &nExtent, sizeof nExtent);
        const std::string sFailure = RunInChild(
            c_nMaxSeconds, [&] { RunOver(m_folder, seed.sName, "", sBytes, GetReadingCommands()); });
        EXPECT_TRUE(sFailure.empty()) << sFailure;
        return;
    }
    FAIL() << "the file is not there";
}

TEST_P(ZorcldRobustParts, DamagedNatives)
{
    RunDamaged(m_folder, OfType(ReadSeeds(ZORCLD_SOURCES), "native"), GetParam());
}

TEST_P(ZorcldRobustParts, DamagedFiles)
{
    RunDamaged(m_folder, ReadSeeds(ZORCLD_SOURCES), GetParam());
}

INSTANTIATE_TEST_SUITE_P(Seeds, ZorcldRobustParts, testing::Range(0, 10));
