#include <zor4data/CPntCld.h>

#include <array>
#include <cstdio>
#include <fstream>

namespace
{

// Colours by height; remembers the range it was given.
class CHeightColors final : public ICldColorListener
{
public:
    void GetColor(double z, float& r, float& g, float& b) override
    {
        r = static_cast<float>((z - m_dMin) / (m_dMax - m_dMin));
        g = 0.0F;
        b = 1.0F - r;
    }

    void SetZRange(double zMin, double zMax) override
    {
        m_dMin = zMin;
        m_dMax = zMax;
    }

private:
    double m_dMin = 0.0;
    double m_dMax = 1.0;
};

class CCounter final : public IPntCldListener
{
public:
    void OnPnts(int nNumPnts, CCldCadPnt* pPnts) override
    {
        m_nNumPnts += nNumPnts;
        for (int i = 0; i < nNumPnts; ++i)
            m_dSumX += pPnts[i].m_pnt.x;
    }

    int m_nNumPnts = 0;
    double m_dSumX = 0.0;
};

// Counts the points of a file on their way into the cloud.
class CCountingCld : public CPntCld
{
public:
    using CPntCld::CPntCld;
    using CPntCld::OnReadPnt;

    void OnReadPnt(double x, double y, double z, unsigned char r, unsigned char g, unsigned char b) override
    {
        ++m_nNumRead;
        CPntCld::OnReadPnt(x, y, z, r, g, b);
    }

    int m_nNumRead = 0;
};

int g_nFailed = 0;

void Expect(bool bHolds, const char* pWhat)
{
    if (bHolds)
        return;
    std::fprintf(stderr, "does not hold: %s\n", pWhat);
    ++g_nFailed;
}

// A file of three points with colour, as other programs write them (this machine being little-endian).
void WritePly(const char* pPath)
{
    std::ofstream file(pPath, std::ios::binary);
    file << "ply\nformat binary_little_endian 1.0\nelement vertex 3\n"
            "property float x\nproperty float y\nproperty float z\n"
            "property uchar red\nproperty uchar green\nproperty uchar blue\nend_header\n";
    for (int i = 0; i < 3; ++i)
    {
        const std::array<float, 3> position{1.0F * static_cast<float>(i), 2.0F, 3.0F};
        const std::array<unsigned char, 3> color{255, 128, static_cast<unsigned char>(i)};
        file.write(reinterpret_cast<const char*>(position.data()), sizeof position);
        file.write(reinterpret_cast<const char*>(color.data()), sizeof color);
    }
}

void ReadPly(const char* pPath)
{
    CHeightColors colors;
    CCountingCld cld(&colors);
    Expect(cld.ReadFromFile(nullptr, PntCldFile_Ply, pPath), "ReadFromFile");
    Expect(cld.m_nNumRead == 3, "the slots of a derived cloud");
    Expect(cld.GetNumPnts() == 3 && cld.IsWithColor(), "three points with colour");
    unsigned char r = 0;
    unsigned char g = 0;
    unsigned char b = 0;
    Expect(cld.GetPntColor(0, r, g, b) && r == 255 && g == 128 && b < 3, "GetPntColor");
}

// Fills a grid of 100 by 100 points, one unit apart and rising with x, and asks for it in every way.
void FillAndAsk()
{
    CHeightColors colors;
    CPntCld cld(&colors);
    cld.OnReadType(PntCldType_PntColor);
    Expect(cld.Init(10000), "Init");
    for (int i = 0; i < 10000; ++i)
        Expect(cld.AddPnt(500000.0 + i % 100, 4000000.0 + i / 100, 0.5 * (i % 100), 10, 20, 30), "AddPnt");
    Expect(cld.ComputeTree(), "ComputeTree");
    Expect(cld.GetNumPnts() == 10000 && cld.IsWithColor(), "GetNumPnts, IsWithColor");

    zor::geom::RECT_3D rect;
    Expect(cld.GetBdry(rect) && rect.xmin == 500000.0 && rect.zmax == 49.5, "GetBdry");

    CCounter all;
    cld.GetPnts(&all, 4096);
    Expect(all.m_nNumPnts == 10000 && all.m_dSumX == 10000 * 500049.5, "GetPnts");

    CCounter thin;
    cld.GetPnts_Lod(&thin, 10.0, 4096);
    Expect(thin.m_nNumPnts > 0 && thin.m_nNumPnts < 1000, "GetPnts_Lod");

    // Keeps x up to 500024.5: 25 columns.
    CCounter west;
    cld.GetPnts_Clip(&west, {zor::geom::PLANE_3D(1.0, 0.0, 0.0, -500024.5)}, 100);
    Expect(west.m_nNumPnts == 2500, "GetPnts_Clip");

    Expect(cld.GetNumPnts2D(500010.0, 4000010.0, 500019.0, 4000019.0) == 100, "GetNumPnts2D");
    CCounter contour;
    cld.FindPnts2D_Cnts(
        &contour,
        {{500009.5, 4000009.5}, {500019.5, 4000009.5}, {500019.5, 4000019.5}, {500009.5, 4000019.5}}, {});
    Expect(contour.m_nNumPnts == 100, "FindPnts2D_Cnts");
    CCounter line;
    cld.FindPnts2D_NearLine(&line, {500009.5, 4000010.0}, {500019.5, 4000010.0}, 0.5, true, true);
    Expect(line.m_nNumPnts == 10, "FindPnts2D_NearLine");
    Expect(cld.CalcMaxSearchDist() > 4.9, "CalcMaxSearchDist");

    cld.SelPnt(0, false);
    cld.DelSelPnts();
    Expect(cld.GetNumPnts() == 9999 && cld.GetVersion() == 1, "DelSelPnts, GetVersion");

    const CPntCld copy(cld);
    cld.Clear();
    Expect(copy.GetNumPnts() == 9999, "a copy outlives its original's points");

    Expect(!cld.ReadFromFile(nullptr, PntCldFile_Ply, "no/such/file.ply"), "ReadFromFile without a file");
    Expect(cld.GetFilePath().Compare("no/such/file.ply") == 0, "GetFilePath");
}

} // namespace

int main(int argc, char** argv)
{
    FillAndAsk();
    if (argc > 1)
    {
        WritePly(argv[1]);
        ReadPly(argv[1]);
    }
    return g_nFailed == 0 ? 0 : 1;
}
