#ifndef PYTHON_BIND_CCLOUD_H
#define PYTHON_BIND_CCLOUD_H

#include <zor4data/CPntArrays.h>
#include <zor4data/CPntCld.h>

#include <array>
#include <memory>
#include <mutex>

namespace zorpy
{

/// A cloud as Python holds it: made once, never changed, asked from any number of threads.
class CCloud
{
public:
    /// Takes over a cloud that is filled and has its octree. REQUIRES: nobody changes a copy of it.
    explicit CCloud(const CPntCld& cld) : m_cld(cld), m_arrays(GetPntArrays(m_cld)) {}

    const CPntCld& GetCld() const noexcept { return m_cld; }
    const CPntArrays& GetArrays() const noexcept { return m_arrays; }

    /// @return least and greatest coordinates, x, y, z each, exact; not-a-number without points. The
    ///         first call looks at every point.
    const std::array<double, 6>& GetBounds() const;

private:
    const CPntCld m_cld;
    const CPntArrays m_arrays;
    mutable std::once_flag m_boundsMade;
    mutable std::array<double, 6> m_adBounds{};
};

using TCloudPtr = std::shared_ptr<CCloud>;

} // namespace zorpy

#endif
