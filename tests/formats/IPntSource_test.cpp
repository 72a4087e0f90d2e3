// The points of files as they mean them, from the sources themselves: point by point, and places alone.

#include <formats/CByteReader.h>
#include <formats/CLasGuard.h>
#include <formats/CLasSource.h>
#include <formats/CPlyHeader.h>
#include <formats/CPlyMeaning.h>
#include <formats/CPlySource.h>
#include <formats/IPntSource.h>
#include <tests/io/CMemFile.h>
#ifdef ZOR4DATA_TEST_LAZ
#include <tests/support/LazBytes.h>
#endif

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <string>
#include <vector>

namespace
{

/// What a test compares of a point.
using TPnt = std::array<double, 6>;

TPnt ToValues(const CSourcePnt& pnt)
{
    return {pnt.x,
            pnt.y,
            pnt.z,
            static_cast<double>(pnt.r),
            static_cast<double>(pnt.g),
            static_cast<double>(pnt.b)};
}

std::vector<TPnt> ListPnts(IPntSource& source)
{
    std::vector<TPnt> vecPnts;
    EXPECT_EQ(source.ForEach([&](const CSourcePnt& pnt) { vecPnts.push_back(ToValues(pnt)); }), "");
    return vecPnts;
}

std::vector<TPnt> ListPlaces(IPntSource& source)
{
    std::vector<TPnt> vecPnts;
    const auto onPlaces = [&](const CSourcePnt* pPnts, std::size_t nNum)
    {
        for (std::size_t i = 0; i < nNum; ++i)
            vecPnts.push_back(ToValues(pPnts[i]));
    };
    EXPECT_EQ(source.ForEachPlace(onPlaces), "");
    return vecPnts;
}

class CNumAtOnce final : public IPntSource
{
public:
    using IPntSource::CalcNumAtOnce;

    bool HasColor() const override { return false; }
    std::int64_t GetNumAnnounced() const override { return 0; }
    std::string ForEach(const TOnPnt&) override { return {}; }
};

} // namespace

TEST(IPntSource, CalcNumAtOnce_AtLeastOnePointAndNotTooMany)
{
    EXPECT_EQ(CNumAtOnce::CalcNumAtOnce(0), 2048U);
    EXPECT_EQ(CNumAtOnce::CalcNumAtOnce(1), 2048U);
    EXPECT_EQ(CNumAtOnce::CalcNumAtOnce(64), 2048U);
    EXPECT_EQ(CNumAtOnce::CalcNumAtOnce(1024), 128U);
    EXPECT_EQ(CNumAtOnce::CalcNumAtOnce(1U << 17U), 1U);
    EXPECT_EQ(CNumAtOnce::CalcNumAtOnce(1U << 20U), 1U);
}

TEST(IPntSource, PlainPnts_ReadsPlaceAndColour)
{
    const std::array<unsigned char, 20> acRecord{1,    0,    0, 0, 0, 2, 0, 0, 0xFF, 0xFF,
                                                 0xFF, 0xFF, 9, 9, 5, 0, 0, 6, 7,    1};
    CPlainPnts plain{{0.5, 1.0, 10.0}, {100.0, 200.0, 300.0}, acRecord.size(), 14};
    EXPECT_EQ(ToValues(plain.Read(acRecord.data())), (TPnt{100.5, 712.0, 290.0, 5.0, 0x600, 0x107}));
    plain.nPosColor = 0;
    EXPECT_EQ(ToValues(plain.Read(acRecord.data())), (TPnt{100.5, 712.0, 290.0, 0.0, 0.0, 0.0}));
}

// Values that nobody asks for stand before, between and behind those that are.
TEST(IPntSource, Ply_PointsAndPlacesAreTheSame)
{
    const std::string sBytes = std::string("ply\nformat binary_little_endian 1.0\nelement vertex 2\n"
                                           "property uchar a\nproperty char x\nproperty char y\n"
                                           "property uchar b\nproperty char z\nproperty uchar red\n"
                                           "property uchar green\nproperty uchar blue\nproperty uchar c\n"
                                           "end_header\n") +
                               "\x63\x01\x02\x63\x03\x04\x05\x06\x63\x63\x0B\x0C\x63\x0D\x0E\x0F\x10\x63";
    const CMemFile file(sBytes);
    CByteReader reader(CFilePtr(std::fopen(file.GetPath(), "rb")));
    CPlyHeader header;
    CPlyMeaning meaning;
    ASSERT_TRUE(header.Read(reader, &meaning));
    const CMadeSource made = MakePlySource(meaning, reader);
    ASSERT_NE(made.pSource, nullptr) << made.sCause;
    const std::vector<TPnt> vecExpected{{1, 2, 3, 4, 5, 6}, {11, 12, 13, 14, 15, 16}};
    EXPECT_EQ(ListPnts(*made.pSource), vecExpected);
    EXPECT_EQ(ListPlaces(*made.pSource), vecExpected);
    EXPECT_EQ(made.pSource->GetLeftOut().size(), 3U);
}

#ifdef ZOR4DATA_TEST_LAZ

// More points than are read at once, in chunks and in layers; and points behind the announced ones.
TEST(IPntSource, Las_PointsAndPlacesAreTheSame)
{
    for (const int nFormat : {0, 6})
    {
        CLasFile las;
        las.nMinor = nFormat < 6 ? 2 : 4;
        las.nFormat = nFormat;
        std::vector<TPnt> vecExpected;
        for (int i = 0; i < 5000; ++i)
        {
            las.vecPnts.push_back({i, 2 * i, 3 * i});
            vecExpected.push_back({i * 0.01, 2 * i * 0.01, 3 * i * 0.01, 0, 0, 0});
        }
        const std::string sLaz = LazBytes(las, 2000);
        las.nAnnounced = 4000;
        for (const std::string& sBytes : {sLaz, las.GetBytes()})
        {
            const CMemFile file(sBytes);
            CLasGuard guard(file.GetPath());
            ASSERT_TRUE(guard.Check()) << guard.GetCause();
            const CMadeSource made = MakeLasSource(guard);
            ASSERT_NE(made.pSource, nullptr) << made.sCause;
            EXPECT_EQ(ListPnts(*made.pSource), vecExpected) << nFormat;
            EXPECT_EQ(ListPlaces(*made.pSource), vecExpected) << nFormat;
        }
    }
}

#endif
