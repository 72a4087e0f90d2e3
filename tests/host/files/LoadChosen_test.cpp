// The attribute of each point of a cloud is that of its own point in the file, wherever the cloud puts it.
#include <host/files/CFileColors.h>
#include <host/files/CLasTally.h>
#include <host/files/LoadChosen.h>
#include <host/files/OpenInputFile.h>
#include <host/output/AttributeBytes.h>
#include <host/output/CConsole.h>
#include <tests/io/CMemFile.h>
#include <tests/support/CRandom.h>
#include <tests/support/LazBytes.h>
#include <zor4data/CPntCld.h>

#include <gtest/gtest.h>

#include <cmath>

namespace zorcld
{

namespace
{

/// Points of which many share x and y; no two share z, which is told from it again.
CLasFile MakeLas(int nFormat, int nNumPnts)
{
    CLasFile las = LasOf(nFormat, nNumPnts);
    las.adScale = {0.01, 0.01, 0.001};
    CRandom random(static_cast<unsigned>(nFormat + 1));
    int nNum = 0;
    for (CLasPnt& pnt : las.vecPnts)
    {
        pnt.x = static_cast<std::int32_t>(random.Int(-500, 500));
        pnt.y = static_cast<std::int32_t>(random.Int(-50, 50));
        pnt.z = ++nNum;
        pnt.nClass = static_cast<std::uint8_t>(random.Int(0, nFormat < 6 ? 31 : 255));
        pnt.nIntensity = static_cast<std::uint16_t>(random.Int(0, 65535));
        pnt.nReturn = static_cast<std::uint8_t>(random.Int(0, nFormat < 6 ? 7 : 15));
    }
    return las;
}

std::uint16_t GetAttribute(const CLasPnt& pnt, enumLasAttribute eAttribute)
{
    return eAttribute == LasAttribute_Class       ? pnt.nClass
           : eAttribute == LasAttribute_Intensity ? pnt.nIntensity
                                                  : pnt.nReturn;
}

void ExpectOwnAttributes(const CLasFile& las, const std::string& sBytes, const CLasWish& wish)
{
    const CMemFile memFile(sBytes);
    CConsole console;
    console.SetQuiet();
    const std::unique_ptr<CInputFile> pFile = OpenInputFile({memFile.GetPath(), "las"});
    CFileColors colors;
    CPntCld cloud(&colors);
    const CLasTally tally = CollectLasTally(*pFile, console);
    const CLoadFacts facts = LoadChosen(cloud, *pFile, wish, tally, console);
    EXPECT_EQ(facts.nDuplicates + cloud.GetNumPnts(), tally.Count(wish.choice));
    EXPECT_GT(facts.nDuplicates, 0);
    ASSERT_GT(cloud.GetNumPnts(), 0);
    for (int i = 0; i < cloud.GetNumPnts(); ++i)
    {
        zor::geom::PNT_3D pnt;
        cloud.GetPnt(i, pnt);
        unsigned char r = 0;
        unsigned char g = 0;
        unsigned char b = 0;
        ASSERT_TRUE(cloud.GetPntColor(i, r, g, b));
        const CLasPnt& own = las.vecPnts.at(static_cast<std::size_t>(std::lround(pnt.z * 1000.0) - 1));
        ASSERT_NEAR(pnt.x, own.x * 0.01, 0.001) << i;
        ASSERT_EQ(AttributeFromBytes(r, g), GetAttribute(own, wish.eAttribute)) << i;
        ASSERT_TRUE(wish.choice.IsKept(own.nClass)) << i;
    }
}

} // namespace

TEST(LoadChosen, AttributesStayWithTheirPnts)
{
    for (const int nFormat : {0, 3, 6, 7})
    {
        const CLasFile las = MakeLas(nFormat, 20000);
        const std::string sLas = las.GetBytes();
        const std::string sLaz = LazBytes(las, 1000);
        for (const auto eAttribute : {LasAttribute_Class, LasAttribute_Intensity, LasAttribute_Return})
        {
            SCOPED_TRACE(nFormat * 10 + eAttribute);
            CLasWish wish;
            wish.eAttribute = eAttribute;
            ExpectOwnAttributes(las, sLas, wish);
            wish.choice = CClassChoice(CClassOptions{{}, {"3-12"}});
            ExpectOwnAttributes(las, sLaz, wish);
        }
    }
}

// Far points are told by the first that is chosen, not by the first of the file.
TEST(LoadChosen, FarPnts_AreTold)
{
    CLasFile las = LasOf(1, 10);
    las.adScale = {1.0, 1.0, 1.0};
    las.vecPnts[0].x = 500000;
    las.vecPnts[0].nClass = 7;
    const CMemFile memFile(las.GetBytes());
    CConsole console;
    console.SetQuiet();
    for (const char* pNoClass : {"7", "9"})
    {
        const std::unique_ptr<CInputFile> pFile = OpenInputFile({memFile.GetPath(), "las"});
        CFileColors colors;
        CPntCld cloud(&colors);
        CLasWish wish;
        wish.choice = CClassChoice(CClassOptions{{}, {pNoClass}});
        const CLoadFacts facts = LoadChosen(cloud, *pFile, wish, CollectLasTally(*pFile, console), console);
        EXPECT_EQ(facts.vecFindings.size(), pNoClass == std::string("7") ? 0U : 1U);
    }
}

} // namespace zorcld
