#ifndef BENCH_CNOEND_H
#define BENCH_CNOEND_H

#include <zor4data/CPntCld.h>

/// Passes everything on to a cloud but the end, so that no tree is built.
class CNoEnd final : public IPntCldReadListener
{
public:
    explicit CNoEnd(CPntCld& cld) : m_cld(cld) {}
    void OnReadType(enumPntCldType eType) override { m_cld.OnReadType(eType); }
    void OnReadNumPnts(int nNumPnts) override { m_cld.OnReadNumPnts(nNumPnts); }
    void OnReadPnt(double x, double y, double z, unsigned char r, unsigned char g, unsigned char b) override
    {
        m_cld.OnReadPnt(x, y, z, r, g, b);
    }
    void OnReadPnt(double x, double y, double z) override { m_cld.OnReadPnt(x, y, z); }
    void OnReadEnd() override {}

private:
    CPntCld& m_cld;
};

#endif
