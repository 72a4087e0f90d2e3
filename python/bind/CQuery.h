#ifndef PYTHON_BIND_CQUERY_H
#define PYTHON_BIND_CQUERY_H

#include <python/bind/CCloud.h>
#include <zor4data/IPntIndexListener.h>

#include <pybind11/numpy.h>

#include <functional>
#include <utility>

namespace zorpy
{

/// A question to a cloud, which the library answers with indices.
class CQuery
{
public:
    /// Asks a cloud; `nBatch` indices a call. May run without the interpreter's lock.
    using TAsk = std::function<void(const CPntCld& cld, IPntIndexListener& listener, int nBatch)>;

    explicit CQuery(TAsk ask) : m_ask(std::move(ask)) {}

    void Ask(const CPntCld& cld, IPntIndexListener& listener, int nBatch) const
    {
        m_ask(cld, listener, nBatch);
    }

private:
    TAsk m_ask;
};

/// Rings as Python gives them: N×2 of float64, C-contiguous.
using TRingArray = pybind11::array_t<double, pybind11::array::c_style>;
/// An outer ring and its holes.
using TPolygonArrays = std::pair<TRingArray, std::vector<TRingArray>>;
/// Planes: N×4 of float64, C-contiguous.
using TPlaneArray = pybind11::array_t<double, pybind11::array::c_style>;

std::vector<zor::geom::PLANE_3D> ReadPlanes(const TPlaneArray& planes);

CQuery MakeAllQuery();
CQuery MakeLodQuery(double dSpacing);
CQuery MakeClipQuery(const TPlaneArray& planes);
CQuery MakeLodClipQuery(double dSpacing, const TPlaneArray& planes);
CQuery MakeRectQuery(double xmin, double ymin, double xmax, double ymax);
CQuery MakeLineQuery(const std::array<double, 2>& p1, const std::array<double, 2>& p2, double dDistance,
                     bool bStart, bool bEnd);
CQuery MakePolygonQuery(const std::vector<TPolygonArrays>& polygons, bool bOutside);

/// @return the indices that answer a query, int32.
pybind11::array_t<std::int32_t> FindAll(const CCloud& cloud, const CQuery& query);

} // namespace zorpy

#endif
