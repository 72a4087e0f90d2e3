#ifndef PYTHON_BIND_CCOUNTEDCLD_H
#define PYTHON_BIND_CCOUNTEDCLD_H

#include <python/bind/Records.h>
#include <zor4data/CPntCld.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace zorpy
{

/// A cloud that counts the points of a file which it cannot hold where they are: once they are stored, they
/// look like others. No slot is called for a native file, which has a cloud's own numbers.
class CCountedCld : public CPntCld
{
public:
    CCountedCld() : CPntCld(nullptr) {}

    void OnReadPnt(double x, double y, double z) override
    {
        Count({x, y, z});
        CPntCld::OnReadPnt(x, y, z);
    }

    void OnReadPnt(double x, double y, double z, unsigned char r, unsigned char g, unsigned char b) override
    {
        Count({x, y, z});
        CPntCld::OnReadPnt(x, y, z, r, g, b);
    }

    /// @return how many have a coordinate that is not a number, or infinite.
    std::int64_t GetNumNotFinite() const { return m_nNumNotFinite; }

    /// @return how many others lie out of reach of the origin, which is the first point.
    std::int64_t GetNumFar() const { return m_nNumFar; }

private:
    void Count(const std::array<double, 3>& place)
    {
        if (!m_bOrg)
            SetOrg(place);
        for (std::size_t k = 0; k < place.size(); ++k)
            if (!IsInReach(place[k], m_adOrg[k]))
                return CountMoved(place);
    }

    void SetOrg(const std::array<double, 3>& place)
    {
        constexpr double c_dLargest = std::numeric_limits<float>::max();
        m_bOrg = true;
        for (std::size_t k = 0; k < place.size(); ++k)
            if (!std::isnan(place[k]))
                m_adOrg[k] =
                    static_cast<double>(static_cast<float>(std::clamp(place[k], -c_dLargest, c_dLargest)));
    }

    void CountMoved(const std::array<double, 3>& place)
    {
        const bool bFinite = std::isfinite(place[0]) && std::isfinite(place[1]) && std::isfinite(place[2]);
        ++(bFinite ? m_nNumFar : m_nNumNotFinite);
    }

    bool m_bOrg = false;
    std::array<double, 3> m_adOrg{};
    std::int64_t m_nNumNotFinite = 0;
    std::int64_t m_nNumFar = 0;
};

} // namespace zorpy

#endif
