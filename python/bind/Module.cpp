// The module zor4data._core: the library, without its conveniences. What users see is written in Python above
// it.

#include <python/bind/Analysis.h>
#include <python/bind/CBatchStream.h>
#include <python/bind/FillCloud.h>
#include <python/bind/Gil.h>
#include <python/bind/HashFile.h>
#include <python/bind/ReadCloud.h>
#include <python/bind/Views.h>

#include <pybind11/stl.h>

#include <exception>
#include <limits>
#include <new>

namespace py = pybind11;

namespace zorpy
{

namespace
{

double CalcSearchDistance(const CCloud& cloud)
{
    constexpr double c_dNoLimit = 1e200; // what the library gives for "none" is beyond it
    const double dDistance = cloud.GetCld().CalcMaxSearchDist();
    return dDistance < c_dNoLimit ? dDistance : std::numeric_limits<double>::infinity();
}

std::array<double, 6> GetBounds(const CCloud& cloud)
{
    const CReleasedGil released;
    return cloud.GetBounds();
}

std::array<float, 3> GetOriginOf(const CCloud& cloud)
{
    const CPntArrays& arrays = cloud.GetArrays();
    return {arrays.fOrgX, arrays.fOrgY, arrays.fOrgZ};
}

void DefineCloud(py::module_& module)
{
    py::class_<CCloud, TCloudPtr>(module, "Cloud")
        .def("__len__", [](const CCloud& cloud) { return cloud.GetArrays().nNumPnts; })
        .def("has_color", [](const CCloud& cloud) { return cloud.GetArrays().bColor; })
        .def("stride", [](const CCloud& cloud) { return cloud.GetArrays().nStride; })
        .def("origin", &GetOriginOf)
        .def("bounds", &GetBounds)
        .def("points", &ViewPnts, py::arg("dtype"))
        .def("fill_xyz", &FillXyz, py::arg("index"), py::arg("out").noconvert())
        .def("fill_rgb", &FillRgb, py::arg("index"), py::arg("out").noconvert())
        .def("find", &FindAll, py::arg("query"))
        .def("pick", &PickPnts, py::arg("origins"), py::arg("directions"), py::arg("tangent"),
             py::arg("planes"))
        .def("nearest", &FindNearest, py::arg("places"), py::arg("max_distance"))
        .def("ground_index", &FindGroundPnts, py::arg("plan"), py::arg("height"), py::arg("progress"))
        .def("ground", &MakeGround, py::arg("plan"), py::arg("height"), py::arg("progress"))
        .def("outline", &FindOutline, py::arg("distance"), py::arg("progress"))
        .def("search_distance", &CalcSearchDistance)
        .def("take", &TakePnts, py::arg("index"))
        .def("to_bytes", &BytesFromCloud)
        .def("write", &WriteCloud, py::arg("path"));
}

void DefineQueries(py::module_& module)
{
    py::class_<CQuery>(module, "Query");
    module.def("query_all", &MakeAllQuery);
    module.def("query_lod", &MakeLodQuery, py::arg("spacing"));
    module.def("query_clip", &MakeClipQuery, py::arg("planes"));
    module.def("query_lod_clip", &MakeLodClipQuery, py::arg("spacing"), py::arg("planes"));
    module.def("query_rect", &MakeRectQuery, py::arg("xmin"), py::arg("ymin"), py::arg("xmax"),
               py::arg("ymax"));
    module.def("query_line", &MakeLineQuery, py::arg("p1"), py::arg("p2"), py::arg("distance"),
               py::arg("start"), py::arg("end"));
    module.def("query_polygons", &MakePolygonQuery, py::arg("polygons"), py::arg("outside"));
    py::class_<CBatchStream>(module, "BatchStream")
        .def(py::init<TCloudPtr, CQuery, int>(), py::arg("cloud").none(false), py::arg("query"), py::arg("n"))
        .def("next", &CBatchStream::GetNext)
        .def("close", &CBatchStream::Close);
}

/// In place of std::bad_alloc's name for itself.
void DefineErrors()
{
    py::register_exception_translator(
        [](std::exception_ptr pError)
        {
            try
            {
                if (pError)
                    std::rethrow_exception(pError);
            }
            catch (const std::bad_alloc&)
            {
                PyErr_SetString(PyExc_MemoryError, "memory has run out");
            }
        });
}

} // namespace

} // namespace zorpy

PYBIND11_MODULE(_core, module)
{
    module.doc() = "The library behind zor4data; use zor4data itself.";
    zorpy::DefineErrors();
    zorpy::DefineCloud(module);
    zorpy::DefineQueries(module);
    module.def("read", &zorpy::ReadCloud, py::arg("path"), py::arg("kind"), py::arg("progress"));
    module.def("from_arrays", &zorpy::FillCloud, py::arg("xyz"), py::arg("rgb"), py::arg("origin"));
    module.def("from_bytes", &zorpy::CloudFromBytes, py::arg("data"));
    module.def("facts", &zorpy::FindFacts, py::arg("path"), py::arg("kind"));
    module.def("hash_file", &zorpy::HashFile, py::arg("path"));
    module.def("hash_bytes", &zorpy::HashBytes, py::arg("data"));
    module.def("units", &zorpy::FindUnits, py::arg("path"), py::arg("kind"));
}
