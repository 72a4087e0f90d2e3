#ifndef OCTREE_PARTITION_H
#define OCTREE_PARTITION_H

#include <cstdint>

/// Stable-below partition of a run by one coordinate against a splitting plane.
///
/// One forward pass; a record below the plane is exchanged with the first record at or above it that
/// precedes it (N. Lomuto's scheme): the records below come first and keep their relative order. Both
/// forms make exactly these exchanges, so the resulting order is the same whichever runs.
namespace Partition
{

/// For runs in which neighbours mostly lie on the same side: the branch is then free.
template <class T>
std::int32_t Branching(T* pPnts, std::int32_t nNumPnts, std::int32_t T::*pCoord, std::int32_t nPlane) noexcept
{
    std::int32_t nNumBelow = 0;
    while (nNumBelow < nNumPnts && pPnts[nNumBelow].*pCoord < nPlane)
        ++nNumBelow;
    for (std::int32_t i = nNumBelow + 1; i < nNumPnts; ++i)
    {
        if (pPnts[i].*pCoord < nPlane)
        {
            const T pnt = pPnts[i];
            pPnts[i] = pPnts[nNumBelow];
            pPnts[nNumBelow] = pnt;
            ++nNumBelow;
        }
    }
    return nNumBelow;
}

/// For runs in no order: the side chooses where a record is written, not what is executed.
template <class T>
std::int32_t Branchless(T* pPnts, std::int32_t nNumPnts, std::int32_t T::*pCoord,
                        std::int32_t nPlane) noexcept
{
    T* pBoundary = pPnts; // records before it lie below the plane, those from it to i at or above
    for (T* p = pPnts; p != pPnts + nNumPnts; ++p)
    {
        const T pnt = *p;
        const T pntFirstAbove = *pBoundary;
        const bool bBelow = pnt.*pCoord < nPlane;
        *(bBelow ? p : pBoundary) = pntFirstAbove;
        *(bBelow ? pBoundary : p) = pnt;
        pBoundary += bBelow ? 1 : 0;
    }
    return static_cast<std::int32_t>(pBoundary - pPnts);
}

} // namespace Partition

#endif
