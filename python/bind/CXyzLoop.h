#ifndef PYTHON_BIND_CXYZLOOP_H
#define PYTHON_BIND_CXYZLOOP_H

#include <python/bind/Records.h>

namespace zorpy
{

/// Makes coordinates of records, as the library itself computes them.
class CXyzLoop
{
public:
    /// REQUIRES: `arrays` outlive the object.
    explicit CXyzLoop(const CPntArrays& arrays);

    /// The coordinates of one point.
    void Put(std::int64_t nIndex, double* pOut) const noexcept
    {
        const std::array<std::int32_t, 3> an = GetOffsets(m_arrays, nIndex);
        for (std::size_t k = 0; k < an.size(); ++k)
            pOut[k] = CoordFromOffset(an[k], m_adOrg[k]);
    }

    /// The coordinates of all points.
    void PutAll(double* pOut) const noexcept;

private:
    const CPntArrays& m_arrays;
    std::array<double, 3> m_adOrg;
};

} // namespace zorpy

#endif
