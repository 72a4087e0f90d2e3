#include <tests/answers/Questions.h>

#include <zor3geom/TMultiPartPolygon.h>
#include <zor4data/CRootCube.h>
#include <zor4data/FindGround.h>
#include <zor4data/FindIndices.h>
#include <zor4data/FindLodRuns.h>
#include <zor4data/FindPntsInPolygons.h>
#include <zor4data/IPntIndexListener.h>
#include <zor4data/PickPnt.h>

#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <iterator>

using zor::geom::PLANE_3D;
using zor::geom::PNT_2D;
using zor::geom::PNT_3D;
using zor::geom::RECT_3D;
using zor::geom::TMultiPartPolygon;

void CAnswer::OnPnts(int nNumPnts, CCldCadPnt* pPnts)
{
    m_hash.Add(nNumPnts);
    for (int i = 0; i < nNumPnts; ++i)
    {
        const CCldCadPnt& pnt = pPnts[i];
        for (const double d : {pnt.m_pnt.x, pnt.m_pnt.y, pnt.m_pnt.z, static_cast<double>(pnt.m_fR),
                               static_cast<double>(pnt.m_fG), static_cast<double>(pnt.m_fB)})
            m_hash.Add(d);
        m_hash.Add(pnt.m_nIndex);
        m_hash.Add(pnt.m_bSel ? 1 : 0);
    }
}

void CAnswer::GetColor(double z, float& r, float& g, float& b)
{
    r = static_cast<float>(z);
    g = z > 10.0 ? 0.25F : 0.75F;
    b = 0.5F;
}

void CAnswer::SetZRange(double zMin, double zMax)
{
    m_hash.Add(zMin);
    m_hash.Add(zMax);
}

CHash CAnswer::Take()
{
    const CHash hash = m_hash;
    m_hash = CHash();
    return hash;
}

namespace
{

class CIndexHash final : public IPntIndexListener
{
public:
    explicit CIndexHash(CHash& hash) : m_hash(hash) {}

    void OnIndices(int nNumPnts, const std::int32_t* pIndices) override
    {
        m_hash.Add(nNumPnts);
        for (int i = 0; i < nNumPnts; ++i)
            m_hash.Add(pIndices[i]);
    }

private:
    CHash& m_hash;
};

/// A cloud's box as places in it: 0 and 1 are its sides.
class CPlaces
{
public:
    explicit CPlaces(const CPntCld& cld)
    {
        if (!cld.GetBdry(m_box))
            m_box = RECT_3D(0.0, 0.0, 0.0, 1.0, 1.0, 1.0);
    }

    double X(double d) const { return m_box.xmin + (m_box.xmax - m_box.xmin) * d; }
    double Y(double d) const { return m_box.ymin + (m_box.ymax - m_box.ymin) * d; }
    double Z(double d) const { return m_box.zmin + (m_box.zmax - m_box.zmin) * d; }
    double Width() const { return m_box.xmax - m_box.xmin; }
    PNT_2D At(double x, double y) const { return {X(x), Y(y)}; }

    std::vector<PNT_2D> Star(double x, double y, double dSize) const
    {
        return {At(x - dSize, y),
                At(x - dSize * 0.2, y + dSize * 0.3),
                At(x + dSize * 0.1, y + dSize),
                At(x + dSize * 0.3, y + dSize * 0.1),
                At(x + dSize, y - dSize * 0.2),
                At(x, y - dSize)};
    }

    std::vector<PLANE_3D> Planes() const
    {
        return {PLANE_3D(1.0, 0.25, 0.5, -(X(0.7) + 0.25 * Y(0.6) + 0.5 * Z(0.5))),
                PLANE_3D(-0.5, -1.0, 0.125, 0.5 * X(0.2) + Y(0.3) - 0.125 * Z(0.4))};
    }

    bool IsSmall() const { return Width() < 20000.0 && m_box.ymax - m_box.ymin < 20000.0; }

private:
    RECT_3D m_box;
};

constexpr double c_adLod[] = {0.3, 0.04, 0.002};

void AskArray(CPntCld& cld, CAnswer& answer)
{
    for (int i = 0; i < cld.GetNumPnts(); ++i)
    {
        PNT_3D pnt;
        cld.GetPnt(i, pnt);
        unsigned char r = 0;
        unsigned char g = 0;
        unsigned char b = 0;
        answer.m_hash.Add(cld.GetPntColor(i, r, g, b) ? 1 : 0);
        for (const double d : {pnt.x, pnt.y, pnt.z})
            answer.m_hash.Add(d);
        for (const int n : {int{r}, int{g}, int{b}})
            answer.m_hash.Add(n);
    }
}

void AskTree(CPntCld& cld, CAnswer& answer)
{
    CRootCube cube{};
    answer.m_hash.Add(GetRootCube(cld, cube) ? 1 : 0);
    for (const int n : {cube.nX, cube.nY, cube.nZ, cube.nEdge})
        answer.m_hash.Add(n);
    for (const float f : {cube.fOrgX, cube.fOrgY, cube.fOrgZ})
        answer.m_hash.Add(static_cast<double>(f));
    const CPlaces places(cld);
    for (int nCube = 0; nCube < 64; ++nCube)
        for (const double d : c_adLod)
        {
            CLodRuns runs;
            answer.m_hash.Add(
                FindLodRuns(cld, places.Width() * d, 2, nCube % 4, nCube / 4 % 4, nCube / 16, runs) ? 1 : 0);
            answer.m_hash.Add(runs.nNumInCube);
            for (const CPntRun& run : runs.vecRuns)
                for (const int n : {run.nFirst, run.nCount})
                    answer.m_hash.Add(n);
        }
}

void AskFile(CPntCld& cld, CAnswer& answer)
{
    const std::string sPath = "answers_" + std::to_string(getpid()) + ".cld"; // where the program runs
    answer.m_hash.Add(cld.WriteToFile(sPath, 0) ? 1 : 0);
    std::ifstream file(sPath, std::ios::binary);
    const std::string sBytes{std::istreambuf_iterator<char>(file), {}};
    for (const char c : sBytes)
        answer.m_hash.Add(int{c} & 0xFF); // the sign of a char differs from machine to machine
    std::remove(sPath.c_str());
}

void AskSpace(CPntCld& cld, CAnswer& answer)
{
    const CPlaces places(cld);
    CIndexHash indices(answer.m_hash);
    cld.GetPnts(&answer, 7);
    FindIndices(cld, &indices, 100);
    for (const double d : c_adLod)
    {
        const double dLod = places.Width() * d;
        cld.GetPnts_Lod(&answer, dLod, 100);
        cld.GetPnts_LodClip(&answer, dLod, places.Planes(), 100);
        FindIndices_Lod(cld, &indices, dLod, 100);
        FindIndices_LodClip(cld, &indices, dLod, places.Planes(), 100);
    }
    cld.GetPnts_Clip(&answer, places.Planes(), 1);
    FindIndices_Clip(cld, &indices, places.Planes(), 3);
}

void AskPlan(CPntCld& cld, CAnswer& answer)
{
    const CPlaces p(cld);
    CIndexHash indices(answer.m_hash);
    for (const double d : {0.0, 0.26, 0.5, 0.77})
    {
        cld.GetPnts2D(&answer, p.X(d), p.Y(d / 2.0), p.X(d + 0.3), p.Y(d + 0.1));
        answer.m_hash.Add(cld.GetNumPnts2D(p.X(d), p.Y(d / 2.0), p.X(d + 0.3), p.Y(d + 0.1)));
        FindIndices2D(cld, &indices, p.X(d), p.Y(d), p.X(0.9), p.Y(0.8), 10);
        cld.FindPnts2D_NearLine(&answer, p.At(d, 0.1), p.At(0.6, d), p.Width() * 0.03, d > 0.3, d < 0.6);
    }
    answer.m_hash.Add(cld.CalcMaxSearchDist());
}

void AskContours(CPntCld& cld, CAnswer& answer)
{
    const CPlaces p(cld);
    CIndexHash indices(answer.m_hash);
    const std::vector<PNT_2D> outer = p.Star(0.45, 0.55, 0.5);
    const std::vector<PNT_2D> hole = p.Star(0.5, 0.5, 0.1);
    cld.FindPnts2D_Cnts(&answer, outer, {});
    cld.FindPnts2D_Cnts(&answer, outer, {hole});
    cld.FindPnts2D_IntCnt(&answer, outer);
    const std::vector<TMultiPartPolygon> polygons = {{outer, {hole}}, {p.Star(0.8, 0.2, 0.3), {}}};
    FindPntsInPolygons(cld, &answer, polygons, false, 10);
    FindPntsInPolygons(cld, &answer, polygons, true, 10);
    FindIndicesInPolygons(cld, &indices, polygons, false, 10);
}

void AskNearest(CPntCld& cld, CAnswer& answer)
{
    const CPlaces p(cld);
    for (int i = 0; i < 40; ++i)
    {
        const double d = i / 32.0 - 0.1;
        const PNT_3D pnt(p.X(d), p.Y(1.0 - d * 0.7), p.Z(0.5));
        answer.m_hash.Add(FindNearestPnt(cld, pnt, p.Width()));
        answer.m_hash.Add(FindNearestPnt2D(cld, {pnt.x, pnt.y}, p.Width() * 0.1));
        const PNT_3D eye(p.X(-0.5), p.Y(-0.4), p.Z(2.0));
        const PNT_3D direction(pnt.x - eye.x, pnt.y - eye.y, pnt.z - eye.z);
        answer.m_hash.Add(
            PickPnt(cld, eye, direction, 0.02, i % 2 == 0 ? std::vector<PLANE_3D>() : p.Planes()));
    }
}

void AskOutline(CPntCld& cld, CAnswer& answer)
{
    const CPlaces places(cld);
    if (!places.IsSmall())
        return;
    for (const double d : {0.02, 0.1, 0.5})
        answer.m_hash.Add(cld.CalcCnt(&answer, &answer, places.Width() * d) ? 1 : 0);
}

void AskGround(CPntCld& cld, CAnswer& answer)
{
    if (!CPlaces(cld).IsSmall())
        return;
    const auto add = [&](const std::vector<int>& vecGround)
    {
        answer.m_hash.Add(static_cast<std::int64_t>(vecGround.size()));
        for (const int n : vecGround)
            answer.m_hash.Add(n);
    };
    add(FindGround(cld, &answer));
    CGroundScale scale;
    scale.dPlan = 0.3048;
    scale.dHeight = 0.5;
    std::vector<int> vecGround;
    answer.m_hash.Add(FindGround_Scaled(cld, scale, &answer, vecGround) ? 1 : 0);
    add(vecGround);
    CPntCld copy(cld);
    copy.Morph(&answer);
    AskArray(copy, answer);
}

} // namespace

const CQuestion c_aQuestions[] = {
    {"array", AskArray},     {"tree", AskTree},       {"file", AskFile},
    {"space", AskSpace},     {"plan", AskPlan},       {"contours", AskContours},
    {"nearest", AskNearest}, {"outline", AskOutline}, {"ground", AskGround},
};
const int c_nNumQuestions = static_cast<int>(std::size(c_aQuestions));
