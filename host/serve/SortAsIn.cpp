#include <host/serve/SortAsIn.h>

#include <zor4data/CPntArrays.h>

#include <algorithm>
#include <array>
#include <cassert>
#include <cstring>
#include <numeric>
#include <utility>

namespace zorcld
{

namespace
{

/// Sorts indices by where their points lie.
void SortByPlace(const CPntArrays& arrays, std::vector<std::int32_t>& vecIndices)
{
    const auto findPlace = [&](std::int32_t nIndex)
    {
        std::array<std::int32_t, 3> place{};
        std::memcpy(place.data(),
                    arrays.pPnts + static_cast<std::ptrdiff_t>(nIndex) * std::ptrdiff_t{arrays.nStride},
                    sizeof(place));
        return place;
    };
    std::sort(vecIndices.begin(), vecIndices.end(),
              [&](std::int32_t nOne, std::int32_t nOther) { return findPlace(nOne) < findPlace(nOther); });
}

} // namespace

void SortAsIn(const CPntArrays& part, const CPntArrays& whole, std::vector<std::int32_t>& vecIndices)
{
    assert(vecIndices.size() == static_cast<std::size_t>(part.nNumPnts));
    std::vector<std::int32_t> vecOrder(vecIndices.size());
    std::iota(vecOrder.begin(), vecOrder.end(), 0);
    SortByPlace(part, vecOrder);
    SortByPlace(whole, vecIndices);
    // Both lists now have the points in one order: the second moves to the places that the first names.
    std::vector<std::int32_t> vecSorted(vecIndices.size());
    for (std::size_t i = 0; i < vecOrder.size(); ++i)
        vecSorted[static_cast<std::size_t>(vecOrder[i])] = vecIndices[i];
    vecIndices = std::move(vecSorted);
}

} // namespace zorcld
