#include <python/bind/Views.h>

#include <python/bind/CXyzLoop.h>
#include <python/bind/Gil.h>
#include <python/bind/ReadIndex.h>

#include <utility>

namespace py = pybind11;

namespace zorpy
{

namespace
{

constexpr int c_nFirstColorByte = 12;

/// `put(point, position)` for all points or those listed.
template <class TFn>
void ForEachPnt(const CPntArrays& arrays, const py::object& index, TFn put)
{
    if (index.is_none())
    {
        const CReleasedGil released;
        for (std::int64_t i = 0; i < arrays.nNumPnts; ++i)
            put(i, i);
        return;
    }
    const py::array array = index.cast<py::array>();
    const CIndexList list(array, arrays.nNumPnts);
    const CReleasedGil released;
    list.ForEach([&](std::int64_t i, std::int64_t nIndex) { put(nIndex, i); });
}

/// @throws pybind11::value_error for an array that is too small, which would be written behind its end.
void CheckRoom(const CPntArrays& arrays, const py::object& index, const py::array& out)
{
    const std::int64_t nNum =
        index.is_none() ? arrays.nNumPnts : static_cast<std::int64_t>(index.cast<py::array>().size());
    if (static_cast<std::int64_t>(out.size()) != 3 * nNum)
        throw py::value_error("the array does not have as many rows as there are points");
}

} // namespace

py::array ViewPnts(const CCloud& cloud, const py::dtype& dtype)
{
    using TOwner = std::shared_ptr<const void>;
    const CPntArrays& arrays = cloud.GetArrays();
    const unsigned char* pPnts = arrays.pPnts;
    static const unsigned char c_ucNothing = 0;
    if (pPnts == nullptr)
        pPnts = &c_ucNothing; // an array without points, but not without memory: numpy would make its own
    auto pOwner = std::make_unique<TOwner>(arrays.pOwner);
    const py::capsule keeper(pOwner.get(), [](void* p) { delete static_cast<TOwner*>(p); });
    pOwner.release();
    py::array view(dtype, {static_cast<py::ssize_t>(arrays.nNumPnts)}, {dtype.itemsize()}, pPnts, keeper);
    py::detail::array_proxy(view.ptr())->flags &= ~py::detail::npy_api::NPY_ARRAY_WRITEABLE_;
    return view;
}

void FillXyz(const CCloud& cloud, const py::object& index, py::array_t<double>& out)
{
    const CPntArrays& arrays = cloud.GetArrays();
    CheckRoom(arrays, index, out);
    double* const pOut = out.mutable_data();
    const CXyzLoop loop(arrays);
    if (index.is_none())
    {
        const CReleasedGil released;
        loop.PutAll(pOut);
        return;
    }
    ForEachPnt(arrays, index, [&](std::int64_t nIndex, std::int64_t i) { loop.Put(nIndex, pOut + 3 * i); });
}

void FillRgb(const CCloud& cloud, const py::object& index, py::array_t<std::uint8_t>& out)
{
    const CPntArrays& arrays = cloud.GetArrays();
    CheckRoom(arrays, index, out);
    std::uint8_t* const pOut = out.mutable_data();
    ForEachPnt(arrays, index,
               [&](std::int64_t nIndex, std::int64_t i)
               { std::memcpy(pOut + 3 * i, arrays.pPnts + nIndex * arrays.nStride + c_nFirstColorByte, 3); });
}

} // namespace zorpy
