#include <bench/BenchClouds.h>
#include <bench/BenchTable.h>

#include <CGAL/Alpha_shape_2.h>
#include <CGAL/Alpha_shape_face_base_2.h>
#include <CGAL/Alpha_shape_vertex_base_2.h>
#include <CGAL/Delaunay_triangulation_2.h>
#include <CGAL/Exact_predicates_inexact_constructions_kernel.h>

#include <cmath>

namespace
{

using Kernel = CGAL::Exact_predicates_inexact_constructions_kernel;
using Vertex = CGAL::Alpha_shape_vertex_base_2<Kernel>;
using Face = CGAL::Alpha_shape_face_base_2<Kernel>;
using Triangulation =
    CGAL::Delaunay_triangulation_2<Kernel, CGAL::Triangulation_data_structure_2<Vertex, Face>>;
using AlphaShape = CGAL::Alpha_shape_2<Triangulation>;

constexpr double c_dDistance = 2.0; // metres

/// Sums up the area inside an outline, its points coming one by one.
class CAreaListener final : public IPntCldListener
{
public:
    void OnPnts(int nNumPnts, CCldCadPnt* pPnts) override
    {
        for (int i = 0; i < nNumPnts; ++i)
        {
            const double x = pPnts[i].m_pnt.x - CSampleTerrain::c_dOrgX;
            const double y = pPnts[i].m_pnt.y - CSampleTerrain::c_dOrgY;
            if (m_nNumCorners++ > 0)
                m_dTwice += x * m_dLastY - m_dLastX * y; // clockwise counts up
            m_dLastX = x;
            m_dLastY = y;
        }
    }

    double GetArea() const noexcept { return m_dTwice / 2.0; }

private:
    std::int64_t m_nNumCorners = 0;
    double m_dTwice = 0.0;
    double m_dLastX = 0.0;
    double m_dLastY = 0.0;
};

/// The two outlines are not the same line: what is compared is the area inside, to one part in fifty.
std::uint64_t CheckArea(std::int64_t nNum, double dArea)
{
    const double dSide = CSampleTerrain(nNum).GetSide();
    return std::fabs(dArea - dSide * dSide) < 0.02 * dSide * dSide ? 1U : 0U;
}

std::uint64_t OutlineProduct(std::int64_t nNum, CCpuTimer& timer)
{
    const CPntCld& cld = GetTerrainCld(nNum);
    CAreaListener listener;
    bool bClosed = false;
    timer.Measure([&] { bClosed = cld.CalcCnt(nullptr, &listener, c_dDistance); });
    return bClosed ? CheckArea(nNum, listener.GetArea()) : 2U;
}

std::uint64_t OutlineCgal(std::int64_t nNum, CCpuTimer& timer)
{
    std::vector<Kernel::Point_2> vecPnts;
    for (const CSamplePnt& pnt : GetTerrain(nNum))
        vecPnts.emplace_back(pnt.x - CSampleTerrain::c_dOrgX, pnt.y - CSampleTerrain::c_dOrgY);
    std::size_t nNumEdges = 0;
    double dArea = 0.0;
    timer.Measure(
        [&]
        {
            AlphaShape shape(vecPnts.begin(), vecPnts.end(), c_dDistance * c_dDistance,
                             AlphaShape::REGULARIZED);
            for (auto it = shape.alpha_shape_edges_begin(); it != shape.alpha_shape_edges_end(); ++it)
                ++nNumEdges;
            for (auto it = shape.finite_faces_begin(); it != shape.finite_faces_end(); ++it)
                if (shape.classify(it) == AlphaShape::INTERIOR)
                    dArea += shape.triangle(it).area();
        });
    return nNumEdges > 0 ? CheckArea(nNum, dArea) : 2U;
}

void AddOutlineRows()
{
    for (const std::int64_t nNum : BenchSizes({100000, 1000000}))
        AddRow({"outline", "outline, d = 2 m", nNum, "CGAL Alpha_shape_2",
                nNum < 1000000 ? CBenchBar(0.04, 0.02) : CBenchBar(0.02, 0.012),
                [=](CCpuTimer& timer) { return OutlineProduct(nNum, timer); },
                [=](CCpuTimer& timer) { return OutlineCgal(nNum, timer); }, BenchResult_Same, 0.0,
                nNum < 1000000 ? 0 : 3});
}

const CBenchGroup group("outline", AddOutlineRows);

} // namespace
