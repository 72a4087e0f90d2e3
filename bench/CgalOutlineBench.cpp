#include <bench/OutlineCases.h>

#include <CGAL/Alpha_shape_2.h>
#include <CGAL/Alpha_shape_face_base_2.h>
#include <CGAL/Alpha_shape_vertex_base_2.h>
#include <CGAL/Delaunay_triangulation_2.h>
#include <CGAL/Exact_predicates_inexact_constructions_kernel.h>

namespace
{

using TKernel = CGAL::Exact_predicates_inexact_constructions_kernel;
using TVertex = CGAL::Alpha_shape_vertex_base_2<TKernel>;
using TFace = CGAL::Alpha_shape_face_base_2<TKernel>;
using TTriangulation =
    CGAL::Delaunay_triangulation_2<TKernel, CGAL::Triangulation_data_structure_2<TVertex, TFace>>;
using TAlphaShape = CGAL::Alpha_shape_2<TTriangulation>;

std::uint64_t OutlineCgal(std::int64_t nNum, CCpuTimer& timer)
{
    std::vector<TKernel::Point_2> vecPnts;
    for (const CSamplePnt& pnt : GetTerrain(nNum))
        vecPnts.emplace_back(pnt.x - CSampleTerrain::c_dOrgX, pnt.y - CSampleTerrain::c_dOrgY);
    std::size_t nNumEdges = 0;
    double dArea = 0.0;
    timer.Measure(
        [&]
        {
            TAlphaShape shape(vecPnts.begin(), vecPnts.end(), c_dOutlineDistance * c_dOutlineDistance,
                              TAlphaShape::REGULARIZED);
            for (auto it = shape.alpha_shape_edges_begin(); it != shape.alpha_shape_edges_end(); ++it)
                ++nNumEdges;
            for (auto it = shape.finite_faces_begin(); it != shape.finite_faces_end(); ++it)
                if (shape.classify(it) == TAlphaShape::INTERIOR)
                    dArea += shape.triangle(it).area();
        });
    return nNumEdges > 0 ? CheckOutlineArea(nNum, dArea) : 2U;
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

const CBenchGroup c_group("outline", AddOutlineRows);

} // namespace
