#ifndef OCTREE_PARTITION_H
#define OCTREE_PARTITION_H

#include <octree/BelowMask.h>

#include <algorithm>
#include <cstdint>

/// Partitions a run in place by one coordinate against a splitting plane.
///
/// The Lomuto scheme: going forward, a record below the plane is exchanged with the first record at or above
/// it that precedes it. The records below come first and keep their relative order; the exchanges alone give
/// the order of the others, which is the same on every machine.
///
/// The sides are found for 64 records at a time, as a bit mask, and only the records below are visited:
/// no branch depends on a single record, whether the run lies in order or not.
///
/// @tparam Axis    0 for x, 1 for y, 2 for z.
/// @param nPlane   compact units; L3: a record on the plane is above it.
/// @return the number of records below.
template <int Axis, class T>
std::int32_t PartitionPnts(T* pPnts, std::int32_t nNumPnts, std::int32_t nPlane) noexcept
{
    T* pBoundary = pPnts; // records before it are below; from here to the block all are at or above
    for (std::int32_t nNumLeft = nNumPnts; nNumLeft > 0; nNumLeft -= c_nMaskBits)
    {
        T* const pBlock = pPnts + (nNumPnts - nNumLeft);
        std::uint64_t nBelow = CalcBelowMask<Axis>(pBlock, std::min(nNumLeft, c_nMaskBits), nPlane);
        if (pBoundary == pBlock) // nothing above so far: the first ones below are in place
        {
            const int nNumInPlace = ~nBelow == 0 ? c_nMaskBits : __builtin_ctzll(~nBelow);
            pBoundary += nNumInPlace;
            nBelow &= nBelow + 1U; // clears the lowest run of ones
        }
        for (; nBelow != 0; nBelow &= nBelow - 1U)
            std::swap(*pBoundary++, pBlock[__builtin_ctzll(nBelow)]);
    }
    return static_cast<std::int32_t>(pBoundary - pPnts);
}

#endif
