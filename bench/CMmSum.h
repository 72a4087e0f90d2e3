#ifndef BENCH_CMMSUM_H
#define BENCH_CMMSUM_H

#include <cstdint>

/// Checksum of points in whole millimetres, in any order: the same for two sides that hold the same points,
/// one as floats and one as offsets of 1/10000. The benchmarks' coordinates are whole millimetres, and no
/// side is off by half of one.
class CMmSum
{
public:
    CMmSum() = default;

    /// Coordinates that lie about this origin count from it: one side may hold them so, the other not.
    CMmSum(double dOrgX, double dOrgY) : m_dOrgX(dOrgX), m_dOrgY(dOrgY) {}

    void Add(double x, double y, double z) noexcept
    {
        m_nSum += (ToMm(x - m_dOrgX) * 73856093U) ^ (ToMm(y - m_dOrgY) * 19349663U) ^ (ToMm(z) * 83492791U);
    }

    std::uint64_t Get() const noexcept { return m_nSum; }

private:
    static std::uint64_t ToMm(double d) noexcept
    {
        constexpr double c_dShift = 1.0e10; // what is converted is above 0: the nearest, by truncation
        return static_cast<std::uint64_t>(d * 1000.0 + (c_dShift + 0.5));
    }

    double m_dOrgX = 0.0;
    double m_dOrgY = 0.0;
    std::uint64_t m_nSum = 0;
};

#endif
