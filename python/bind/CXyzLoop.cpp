#include <python/bind/CXyzLoop.h>

#if defined(__x86_64__)
#include <immintrin.h>
#endif

namespace zorpy
{

namespace
{

constexpr int c_nPnts = 4; // four points at a time are whole vectors for the processor, whatever the stride
constexpr int c_nCoords = 3 * c_nPnts;

/// Origins of as many coordinates, one after the other.
using TOrigins = std::array<double, c_nCoords>;

template <int nStride>
void PutBlock(const unsigned char* pPnts, const TOrigins& adOrgs, double* pOut) noexcept
{
    std::int32_t an[c_nPnts * nStride / 4];
    std::memcpy(an, pPnts, sizeof an);
    for (int n = 0; n < c_nCoords; ++n)
        pOut[n] = CoordFromOffset(an[n / 3 * (nStride / 4) + n % 3], adOrgs[static_cast<std::size_t>(n)]);
}

/// Makes the coordinates of as many points as whole blocks hold. @return how many they were.
template <int nStride>
std::int64_t PutBlocks(const CPntArrays& arrays, const TOrigins& origins, double* pOut) noexcept
{
    const TOrigins adOrgs = origins;
    std::int64_t i = 0;
    for (; i + c_nPnts <= arrays.nNumPnts; i += c_nPnts)
        PutBlock<nStride>(arrays.pPnts + i * nStride, adOrgs, pOut + 3 * i);
    return i;
}

#if defined(__x86_64__)
#define ZORPY_FUSED [[gnu::target("avx2,fma")]]

/// Four offsets' coordinates, without the division, which takes longer than all else: the product with the
/// reciprocal is put right by what it leaves, which a fused operation has exactly. Of every offset this is
/// what dividing gives, to the last bit.
ZORPY_FUSED inline __m256d CoordsFromOffsets(__m128i offsets, __m256d orgs) noexcept
{
    const __m256d units = _mm256_set1_pd(c_dUnitsPerCoord);
    const __m256d reciprocal = _mm256_set1_pd(1.0 / c_dUnitsPerCoord);
    const __m256d numbers = _mm256_cvtepi32_pd(offsets);
    const __m256d near = _mm256_mul_pd(numbers, reciprocal);
    const __m256d left = _mm256_fnmadd_pd(near, units, numbers);
    return _mm256_add_pd(_mm256_fmadd_pd(left, reciprocal, near), orgs);
}

/// Offsets `4 n` to `4 n + 3` of four points, n from 0 to 2; without colour they lie so.
template <int n, int nStride>
ZORPY_FUSED inline __m128i LoadOffsets(const unsigned char* pPnts) noexcept
{
    const auto* const p = reinterpret_cast<const __m128i*>(pPnts);
    if constexpr (nStride == 12)
        return _mm_loadu_si128(p + n);
    const __m128i first = _mm_loadu_si128(p + n);
    const __m128i second = _mm_loadu_si128(p + n + 1);
    if constexpr (n == 0) // x y z, x
        return _mm_blend_epi32(first, _mm_shuffle_epi32(second, 0), 8);
    if constexpr (n == 1) // y z, x y
        return _mm_unpacklo_epi64(_mm_shuffle_epi32(first, _MM_SHUFFLE(2, 1, 2, 1)), second);
    // z, x y z
    return _mm_blend_epi32(_mm_shuffle_epi32(second, _MM_SHUFFLE(2, 1, 0, 0)), _mm_shuffle_epi32(first, 2),
                           1);
}

template <int nStride>
ZORPY_FUSED std::int64_t PutBlocks_Fused(const CPntArrays& arrays, const TOrigins& origins,
                                         double* pOut) noexcept
{
    const __m256d orgs0 = _mm256_loadu_pd(origins.data());
    const __m256d orgs1 = _mm256_loadu_pd(origins.data() + 4);
    const __m256d orgs2 = _mm256_loadu_pd(origins.data() + 8);
    std::int64_t i = 0;
    for (; i + c_nPnts <= arrays.nNumPnts; i += c_nPnts)
    {
        const unsigned char* const p = arrays.pPnts + i * nStride;
        _mm256_storeu_pd(pOut + 3 * i, CoordsFromOffsets(LoadOffsets<0, nStride>(p), orgs0));
        _mm256_storeu_pd(pOut + 3 * i + 4, CoordsFromOffsets(LoadOffsets<1, nStride>(p), orgs1));
        _mm256_storeu_pd(pOut + 3 * i + 8, CoordsFromOffsets(LoadOffsets<2, nStride>(p), orgs2));
    }
    return i;
}
#endif

template <int nStride>
std::int64_t PutWholeBlocks(const CPntArrays& arrays, const TOrigins& origins, double* pOut) noexcept
{
#if defined(__x86_64__)
    if (__builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma"))
        return PutBlocks_Fused<nStride>(arrays, origins, pOut);
#endif
    return PutBlocks<nStride>(arrays, origins, pOut);
}

} // namespace

CXyzLoop::CXyzLoop(const CPntArrays& arrays) : m_arrays(arrays), m_adOrg(GetOrigin(arrays)) {}

void CXyzLoop::PutAll(double* pOut) const noexcept
{
    TOrigins adOrgs{};
    for (std::size_t i = 0; i < adOrgs.size(); ++i)
        adOrgs[i] = m_adOrg[i % m_adOrg.size()];
    std::int64_t i = m_arrays.nStride == 12 ? PutWholeBlocks<12>(m_arrays, adOrgs, pOut)
                                            : PutWholeBlocks<16>(m_arrays, adOrgs, pOut);
    for (; i < m_arrays.nNumPnts; ++i)
        Put(i, pOut + 3 * i);
}

} // namespace zorpy
