#ifndef PYTHON_BIND_FILLCLOUD_H
#define PYTHON_BIND_FILLCLOUD_H

#include <python/bind/CCloud.h>

#include <pybind11/numpy.h>
#include <pybind11/stl.h>

namespace zorpy
{

/// Makes a cloud of coordinates and colours.
///
/// @param xyz     N×3, C-contiguous, float64 or float32 (anything else: TypeError).
/// @param rgb     N×3 of uint8, C-contiguous, or None.
/// @param origin  three numbers, or None: the first point.
/// @throws pybind11::value_error naming the first row that is not finite or out of reach.
TCloudPtr FillCloud(const pybind11::array& xyz, const pybind11::object& rgb, const pybind11::object& origin);

/// @return a cloud of the listed points. @param index  int32 or int64, inside the cloud, each once; else
///         IndexError or ValueError.
TCloudPtr TakePnts(const CCloud& cloud, const pybind11::array& index);

} // namespace zorpy

#endif
