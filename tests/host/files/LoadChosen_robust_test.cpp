// Damaged LAS and LAZ files read by class: a failure with a cause, or as many points as were counted.
#include <host/files/CFileColors.h>
#include <host/files/CLasTally.h>
#include <host/files/LoadChosen.h>
#include <host/files/OpenInputFile.h>
#include <host/output/CConsole.h>
#include <host/output/CFailure.h>
#include <tests/io/CMemFile.h>
#include <tests/support/LazBytes.h>
#include <zor4data/CPntCld.h>

#include <gtest/gtest.h>

namespace zorcld
{

namespace
{

CLasFile MakeLas(int nFormat)
{
    CLasFile las = LasOf(nFormat, 30);
    for (std::size_t i = 0; i < las.vecPnts.size(); ++i)
        las.vecPnts[i].nClass = static_cast<std::uint8_t>(i % 5);
    return las;
}

void Load(const std::string& sBytes)
{
    const CMemFile memFile(sBytes);
    CConsole console;
    console.SetQuiet();
    CLasWish wish;
    wish.choice = CClassChoice(CClassOptions{{"1-200"}, {}});
    wish.eAttribute = LasAttribute_Intensity;
    CFileColors colors;
    CPntCld cloud(&colors);
    try
    {
        const std::unique_ptr<CInputFile> pFile = OpenInputFile({memFile.GetPath(), "las"});
        const CLasTally tally = CollectLasTally(*pFile, console);
        const CLoadFacts facts = LoadChosen(cloud, *pFile, wish, tally, console);
        EXPECT_EQ(cloud.GetNumPnts() + facts.nDuplicates, tally.Count(wish.choice));
    }
    catch (const CFailure& failure)
    {
        EXPECT_NE(failure.GetCause(), "");
    }
}

} // namespace

TEST(LoadChosen, EveryTruncation)
{
    for (const int nFormat : {1, 7})
        for (const std::string& sBytes : {MakeLas(nFormat).GetBytes(), LazBytes(MakeLas(nFormat), 12)})
            for (std::size_t nSize = 0; nSize < sBytes.size(); ++nSize)
            {
                SCOPED_TRACE(nSize);
                Load(sBytes.substr(0, nSize));
            }
}

TEST(LoadChosen, EveryByteChanged)
{
    for (const int nFormat : {1, 7})
        for (const std::string& sBytes : {MakeLas(nFormat).GetBytes(), LazBytes(MakeLas(nFormat), 12)})
            for (std::size_t i = 0; i < sBytes.size(); ++i)
                for (const unsigned nChange : {1U, 0x80U, 0xFFU})
                {
                    SCOPED_TRACE(i);
                    std::string sChanged = sBytes;
                    sChanged[i] = static_cast<char>(static_cast<unsigned char>(sChanged[i]) ^ nChange);
                    Load(sChanged);
                }
}

} // namespace zorcld
