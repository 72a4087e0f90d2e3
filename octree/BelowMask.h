#ifndef OCTREE_BELOWMASK_H
#define OCTREE_BELOWMASK_H

#include <octree/CTruncPnt.h>
#include <octree/CTruncPnt_Color.h>

#include <cstdint>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

/// Records that one mask tells of.
constexpr std::int32_t c_nMaskBits = 64;

/// Coordinate of a record by the number of its axis: 0 for x, 1 for y, 2 for z.
template <int Axis, class T>
inline std::int32_t GetCoord(const T& pnt) noexcept
{
    return Axis == 0 ? pnt.m_nX : Axis == 1 ? pnt.m_nY : pnt.m_nZ;
}

#if defined(__SSE2__)

/// @return one coordinate of four records of 12 bytes, which are three vectors.
template <int Axis>
inline __m128i GatherCoords(const CTruncPnt* pPnts) noexcept
{
    const float* const p = static_cast<const float*>(static_cast<const void*>(pPnts));
    const __m128 v0 = _mm_loadu_ps(p);     // x0 y0 z0 x1
    const __m128 v1 = _mm_loadu_ps(p + 4); // y1 z1 x2 y2
    const __m128 v2 = _mm_loadu_ps(p + 8); // z2 x3 y3 z3
    if constexpr (Axis == 0)
        return _mm_castps_si128(
            _mm_shuffle_ps(v0, _mm_shuffle_ps(v1, v2, _MM_SHUFFLE(1, 1, 2, 2)), _MM_SHUFFLE(2, 0, 3, 0)));
    else if constexpr (Axis == 1)
        return _mm_castps_si128(_mm_shuffle_ps(_mm_shuffle_ps(v0, v1, _MM_SHUFFLE(0, 0, 1, 1)),
                                               _mm_shuffle_ps(v1, v2, _MM_SHUFFLE(2, 2, 3, 3)),
                                               _MM_SHUFFLE(2, 0, 2, 0)));
    else
        return _mm_castps_si128(
            _mm_shuffle_ps(_mm_shuffle_ps(v0, v1, _MM_SHUFFLE(1, 1, 2, 2)), v2, _MM_SHUFFLE(3, 0, 2, 0)));
}

/// @return one coordinate of four records of 16 bytes, a vector each.
template <int Axis>
inline __m128i GatherCoords(const CTruncPnt_Color* pPnts) noexcept
{
    const auto load = [pPnts](int i)
    { return _mm_loadu_ps(static_cast<const float*>(static_cast<const void*>(pPnts + i))); };
    const __m128 v01 = Axis == 2 ? _mm_unpackhi_ps(load(0), load(1)) : _mm_unpacklo_ps(load(0), load(1));
    const __m128 v23 = Axis == 2 ? _mm_unpackhi_ps(load(2), load(3)) : _mm_unpacklo_ps(load(2), load(3));
    return _mm_castps_si128(Axis == 1 ? _mm_movehl_ps(v23, v01) : _mm_movelh_ps(v01, v23));
}

#endif

/// Tells which of up to 64 records lie below a plane.
///
/// @param nNumPnts  0 to 64.
/// @return bit i set when coordinate `Axis` of record i is smaller than `nPlane`.
template <int Axis, class T>
inline std::uint64_t CalcBelowMask(const T* pPnts, std::int32_t nNumPnts, std::int32_t nPlane) noexcept
{
    std::uint64_t nMask = 0;
    std::int32_t i = 0;
#if defined(__SSE2__)
    const __m128i plane = _mm_set1_epi32(nPlane);
    for (; i + 4 <= nNumPnts; i += 4)
    {
        const __m128i below = _mm_cmplt_epi32(GatherCoords<Axis>(pPnts + i), plane);
        nMask |= static_cast<std::uint64_t>(static_cast<unsigned>(_mm_movemask_ps(_mm_castsi128_ps(below))))
                 << i;
    }
#endif
    for (; i < nNumPnts; ++i)
        nMask |= static_cast<std::uint64_t>(GetCoord<Axis>(pPnts[i]) < nPlane ? 1 : 0) << i;
    return nMask;
}

#endif
