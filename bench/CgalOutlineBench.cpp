#include <bench/OutlineCases.h>

#include <CGAL/Alpha_shape_2.h>
#include <CGAL/Alpha_shape_face_base_2.h>
#include <CGAL/Alpha_shape_vertex_base_2.h>
#include <CGAL/Delaunay_triangulation_2.h>
#include <CGAL/Exact_predicates_inexact_constructions_kernel.h>

namespace
{

using Kernel = CGAL::Exact_predicates_inexact_constructions_kernel;
using Vertex = CGAL::Alpha_shape_vertex_base_2<Kernel>;
using Face = CGAL::Alpha_shape_face_base_2<Kernel>;
using Triangulation =
    CGAL::Delaunay_triangulation_2<Kernel, CGAL::Triangulation_data_structure_2<Vertex, Face>>;
using AlphaShape = CGAL::Alpha_shape_2<Triangulation>;

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
            AlphaShape shape(vecPnts.begin(), vecPnts.end(), c_dOutlineDistance * c_dOutlineDistance,
                             AlphaShape::REGULARIZED);
            for (auto it = shape.alpha_shape_edges_begin(); it != shape.alpha_shape_edges_end(); ++it)
                ++nNumEdges;
            for (auto it = shape.finite_faces_begin(); it != shape.finite_faces_end(); ++it)
                if (shape.classify(it) == AlphaShape::INTERIOR)
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

const CBenchGroup group("outline", AddOutlineRows);

} // namespace
