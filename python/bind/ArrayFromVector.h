#ifndef PYTHON_BIND_ARRAYFROMVECTOR_H
#define PYTHON_BIND_ARRAYFROMVECTOR_H

#include <pybind11/numpy.h>

#include <memory>
#include <utility>
#include <vector>

namespace zorpy
{

/// @return an array of a vector's elements, without a copy.
template <class Number>
pybind11::array_t<Number> ArrayFromVector(std::vector<Number> vec)
{
    auto pOwned = std::make_unique<std::vector<Number>>(std::move(vec));
    const std::vector<Number>& owned = *pOwned;
    if (owned.empty())
        return pybind11::array_t<Number>(0);
    const pybind11::capsule keeper(pOwned.get(),
                                   [](void* p) { delete static_cast<std::vector<Number>*>(p); });
    pOwned.release();
    return pybind11::array_t<Number>(static_cast<pybind11::ssize_t>(owned.size()), owned.data(), keeper);
}

} // namespace zorpy

#endif
