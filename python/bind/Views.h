#ifndef PYTHON_BIND_VIEWS_H
#define PYTHON_BIND_VIEWS_H

#include <python/bind/CCloud.h>

#include <pybind11/numpy.h>

namespace zorpy
{

/// @return the records themselves, read-only, of the dtype given; the array keeps them, whatever
///         becomes of the cloud.
pybind11::array ViewPnts(const CCloud& cloud, const pybind11::dtype& dtype);

/// Writes coordinates into `out`, N×3 of float64, C-contiguous. @param index  None: every point.
void FillXyz(const CCloud& cloud, const pybind11::object& index, pybind11::array_t<double>& out);

/// Writes colours into `out`, N×3 of uint8, C-contiguous. REQUIRES: a cloud with colour.
void FillRgb(const CCloud& cloud, const pybind11::object& index, pybind11::array_t<std::uint8_t>& out);

} // namespace zorpy

#endif
