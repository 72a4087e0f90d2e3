#ifndef HOST_FILES_CWATCHEDCLD_H
#define HOST_FILES_CWATCHEDCLD_H

#include <zor4data/CPntCld.h>

#include <cmath>
#include <cstdint>

namespace zorcld
{

/// A cloud that counts the points that come from a file: once they are stored, the missing ones and those
/// that were no numbers look like others. (No slot is called for a native file.)
class CWatchedCld final : public CPntCld
{
public:
    /// @param cloud  what it begins as.
    explicit CWatchedCld(const CPntCld& cloud) : CPntCld(cloud) {}

    void OnReadPnt(double x, double y, double z) override
    {
        Count(x, y, z);
        CPntCld::OnReadPnt(x, y, z);
    }

    void OnReadPnt(double x, double y, double z, unsigned char r, unsigned char g, unsigned char b) override
    {
        Count(x, y, z);
        CPntCld::OnReadPnt(x, y, z, r, g, b);
    }

    std::int64_t GetNumRead() const { return m_nNumRead; }

    /// @return how many of them have a coordinate that is not a number, or infinite.
    std::int64_t GetNumNotFinite() const { return m_nNumNotFinite; }

private:
    void Count(double x, double y, double z)
    {
        ++m_nNumRead;
        m_nNumNotFinite += std::isfinite(x) && std::isfinite(y) && std::isfinite(z) ? 0 : 1;
    }

    std::int64_t m_nNumRead = 0;
    std::int64_t m_nNumNotFinite = 0;
};

} // namespace zorcld

#endif
