#ifndef PYTHON_BIND_ANALYSIS_H
#define PYTHON_BIND_ANALYSIS_H

#include <python/bind/CQuery.h>

namespace zorpy
{

/// Rays or places: N×3 (in plan N×2) of float64, C-contiguous.
using TPlaceArray = pybind11::array_t<double, pybind11::array::c_style>;

/// @return for each ray the index of the point picked, or -1. @param dTan  tangent of half the cone's angle.
pybind11::array_t<std::int32_t> PickPnts(const CCloud& cloud, const TPlaceArray& origins,
                                         const TPlaceArray& directions, double dTan,
                                         const TPlaneArray& planes);

/// @return for each place the index of the nearest point within `dMax`, or -1; in plan where places have two
///         coordinates.
pybind11::array_t<std::int32_t> FindNearest(const CCloud& cloud, const TPlaceArray& places, double dMax);

/// @return indices of the ground points, ascending; None: the cloud is too wide in metres.
pybind11::object FindGroundPnts(const CCloud& cloud, double dPlan, double dHeight,
                                const pybind11::object& callback);

/// @return the cloud of its ground points; null: it is too wide in metres.
TCloudPtr MakeGround(const CCloud& cloud, double dPlan, double dHeight, const pybind11::object& callback);

/// @return x and y of the corners of the outline, 2N; none: there is none.
pybind11::array_t<double> FindOutline(const CCloud& cloud, double dDistance,
                                      const pybind11::object& callback);

/// @return what a file says of itself, as a tuple: kind, number and text of the cause, points announced,
///         colour, six bounds or None, list of (code, text) of what would be lost. @param nKind  -1: by
///         content.
pybind11::tuple FindFacts(const std::string& sPath, int nKind);

/// @return the units that a file states, as a tuple: name of that of x and y, metres, whether it is an angle,
///         metres of that of z. Metres are 0 where they are not known.
pybind11::tuple FindUnits(const std::string& sPath, int nKind);

} // namespace zorpy

#endif
