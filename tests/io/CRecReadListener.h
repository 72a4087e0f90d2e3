#ifndef TESTS_IO_CRECREADLISTENER_H
#define TESTS_IO_CRECREADLISTENER_H

#include <zor4data/IDlgProgress.h>
#include <zor4data/IPntCldReadListener.h>

#include <array>
#include <cstdint>
#include <cstring>
#include <ostream>
#include <vector>

/// One call that a reader has made.
struct CReadCall
{
    enum enumKind
    {
        Kind_Type,
        Kind_NumPnts,
        Kind_Pnt,
        Kind_ColorPnt,
        Kind_End,
        Kind_Progress,
    };

    static CReadCall Type(int nType) { return {Kind_Type, nType, {}, {}}; }
    static CReadCall NumPnts(int nNumPnts) { return {Kind_NumPnts, nNumPnts, {}, {}}; }
    static CReadCall Pnt(double x, double y, double z) { return {Kind_Pnt, 0, {x, y, z}, {}}; }
    static CReadCall ColorPnt(double x, double y, double z, int r, int g, int b)
    {
        return {Kind_ColorPnt, 0, {x, y, z}, {r, g, b}};
    }
    static CReadCall End() { return {Kind_End, 0, {}, {}}; }
    static CReadCall Progress(int nPos) { return {Kind_Progress, nPos, {}, {}}; }

    /// Coordinates count by their bits: not-a-number equals itself, and zero is not minus zero.
    bool operator==(const CReadCall& other) const
    {
        return eKind == other.eKind && nValue == other.nValue && anColor == other.anColor &&
               std::memcmp(adPos.data(),
                           other.adPos.data(), // NOLINT(bugprone-suspicious-memory-comparison,cert-*)
                           sizeof adPos) == 0;
    }
    bool operator!=(const CReadCall& other) const { return !(*this == other); }

    enumKind eKind;
    int nValue;
    std::array<double, 3> adPos;
    std::array<int, 3> anColor;
};

inline std::ostream& operator<<(std::ostream& stream, const CReadCall& call)
{
    static constexpr const char* c_asName[] = {"Type", "NumPnts", "Pnt", "ColorPnt", "End", "Progress"};
    stream << c_asName[call.eKind] << '(';
    if (call.eKind == CReadCall::Kind_Pnt || call.eKind == CReadCall::Kind_ColorPnt)
        stream << call.adPos[0] << ", " << call.adPos[1] << ", " << call.adPos[2];
    else if (call.eKind != CReadCall::Kind_End)
        stream << call.nValue;
    if (call.eKind == CReadCall::Kind_ColorPnt)
        stream << ", " << call.anColor[0] << ", " << call.anColor[1] << ", " << call.anColor[2];
    return stream << ')';
}

using TReadCalls = std::vector<CReadCall>;

/// Records the calls of a reader, those to the progress object among them, in their order.
class CRecReadListener final : public IPntCldReadListener, public IDlgProgress
{
public:
    void OnReadType(enumPntCldType eType) override { m_vecCalls.push_back(CReadCall::Type(eType)); }
    void OnReadNumPnts(int nNumPnts) override { m_vecCalls.push_back(CReadCall::NumPnts(nNumPnts)); }
    void OnReadPnt(double x, double y, double z, unsigned char r, unsigned char g, unsigned char b) override
    {
        m_vecCalls.push_back(CReadCall::ColorPnt(x, y, z, r, g, b));
    }
    void OnReadPnt(double x, double y, double z) override { m_vecCalls.push_back(CReadCall::Pnt(x, y, z)); }
    void OnReadEnd() override { m_vecCalls.push_back(CReadCall::End()); }

    void Start() override { m_bOtherProgressCall = true; }
    void Stop() override { m_bOtherProgressCall = true; }
    bool SetPos(int nPos) override
    {
        m_vecCalls.push_back(CReadCall::Progress(nPos));
        return false; // nobody looks at it: the reading goes on
    }

    int CountCalls(CReadCall::enumKind eKind) const
    {
        int nNum = 0;
        for (const CReadCall& call : m_vecCalls)
            nNum += call.eKind == eKind ? 1 : 0;
        return nNum;
    }

    TReadCalls m_vecCalls;
    bool m_bOtherProgressCall = false; ///< Start or Stop was called
};

#endif
