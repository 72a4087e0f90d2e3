// Looks at every point of a file without a cloud: the file may be larger than memory.

#include <zor4data/CFileFacts.h>
#include <zor4data/IPntCldReadListener.h>
#include <zor4data/ReadPnts.h>

#include <algorithm>
#include <cstdio>
#include <limits>

namespace
{

// [listener]
/// Counts points, and those of them above a height.
class CHighPnts final : public IPntCldReadListener
{
public:
    explicit CHighPnts(double dHeight) : m_dHeight(dHeight) {}

    void OnReadType(enumPntCldType) override {} // says which of the two OnReadPnt will be called
    void OnReadNumPnts(int) override {}         // what the file announces; it may be wrong
    void OnReadEnd() override {}                // not called where the file turns out to be damaged

    void OnReadPnt(double x, double y, double z, unsigned char, unsigned char, unsigned char) override
    {
        OnReadPnt(x, y, z);
    }

    void OnReadPnt(double, double, double z) override
    {
        ++m_nNumPnts;
        m_nNumHigh += z > m_dHeight ? 1 : 0;
        m_dTop = std::max(m_dTop, z);
    }

    long long m_nNumPnts = 0;
    long long m_nNumHigh = 0;
    double m_dTop = std::numeric_limits<double>::lowest();

private:
    double m_dHeight;
};
// [/listener]

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2)
        return std::fprintf(stderr, "usage: stream FILE\n"), 2;

    // [read]
    CHighPnts pnts(115.0);
    if (!ReadPnts(pnts, nullptr, FindFileFacts(argv[1]).eType, argv[1]))
        return std::fprintf(stderr, "stream: %s was not read to its end\n", argv[1]), 1;
    std::printf("%lld points, %lld of them above 115 m, the highest at %.2f m\n", pnts.m_nNumPnts,
                pnts.m_nNumHigh, pnts.m_dTop);
    // [/read]
}
