// What the writers put into files, byte for byte.
#include <host/output/ByteFromShare.h>
#include <host/output/CFailure.h>
#include <host/output/PntWriter.h>
#include <tests/host/support/CZorcld.h>

#include <gtest/gtest.h>

#include <limits>

namespace zorcld
{

namespace
{

CCldCadPnt MakePnt(double x, double y, double z, float fRed)
{
    CCldCadPnt pnt;
    pnt.m_pnt = zor::geom::PNT_3D(x, y, z);
    pnt.m_fR = fRed;
    pnt.m_fG = 0.0F;
    pnt.m_fB = 1.0F;
    return pnt;
}

std::string Write(const TMakePntWriter& makeWriter, const CCldCadPnt& pnt, bool bColor)
{
    const CZorcld zorcld;
    const std::string sPath = zorcld.GetPath("out");
    CPntSummary summary;
    summary.Add(pnt.m_pnt);
    summary.bColor = bColor;
    COutFile out(sPath);
    const std::unique_ptr<IPntWriter> pWriter = makeWriter(WriteTo(out), summary);
    pWriter->Add(pnt);
    pWriter->Finish();
    out.Commit();
    return ReadBytes(sPath);
}

} // namespace

TEST(PntWriter, ByteFromShare_RoundsAndHoldsTheEnds)
{
    EXPECT_EQ(ByteFromShare(0.0F), 0);
    EXPECT_EQ(ByteFromShare(0.5F), 128);
    EXPECT_EQ(ByteFromShare(1.0F), 255);
    EXPECT_EQ(ByteFromShare(-1.0F), 0);
    EXPECT_EQ(ByteFromShare(std::numeric_limits<float>::infinity()), 255);
}

TEST(PntWriter, Csv_FourDecimalsAndBytes)
{
    EXPECT_EQ(Write(MakeCsvWriter, MakePnt(1.0, -2.00004, 3.5, 0.2F), true),
              "x,y,z,red,green,blue\n1.0000,-2.0000,3.5000,51,0,255\n");
    EXPECT_EQ(Write(MakeCsvWriter, MakePnt(1.0, 2.0, 3.5, 0.2F), false), "x,y,z\n1.0000,2.0000,3.5000\n");
}

// A float holds 500000.25 to 1/32 only: the file is shifted by a round number, and says so.
TEST(PntWriter, Ply_FarCoordinatesAreShifted)
{
    const std::string sBytes = Write(MakePlyWriter, MakePnt(500000.25, 2.0, 3.5, 0.2F), false);
    EXPECT_NE(sBytes.find("comment coordinates are shifted: add 500000 0 0\n"), std::string::npos) << sBytes;
    const float coords[] = {0.25F, 2.0F, 3.5F};
    const std::string sCoords(static_cast<const char*>(static_cast<const void*>(coords)), sizeof coords);
    EXPECT_EQ(sBytes.substr(sBytes.size() - sizeof coords), sCoords);
}

TEST(PntWriter, FindPntWriter_ByExtension)
{
    EXPECT_NO_THROW(static_cast<void>(FindPntWriter("a.PLY")));
    EXPECT_NO_THROW(static_cast<void>(FindPntWriter("a.csv")));
    EXPECT_THROW(static_cast<void>(FindPntWriter("a.txt")), CUsageError);
}

} // namespace zorcld
