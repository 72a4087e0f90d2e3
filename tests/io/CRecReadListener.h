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
        return m_eKind == other.m_eKind && m_nValue == other.m_nValue && m_anColor == other.m_anColor &&
               std::memcmp(m_adPos.data(), other.m_adPos.data(), sizeof m_adPos) == 0;
    }
    bool operator!=(const CReadCall& other) const { return !(*this == other); }

    enumKind m_eKind;
    int m_nValue;
    std::array<double, 3> m_adPos;
    std::array<int, 3> m_anColor;
};

inline std::ostream& operator<<(std::ostream& stream, const CReadCall& call)
{
    static constexpr const char* c_asName[] = {"Type", "NumPnts", "Pnt", "ColorPnt", "End", "Progress"};
    stream << c_asName[call.m_eKind] << '(';
    if (call.m_eKind == CReadCall::Kind_Pnt || call.m_eKind == CReadCall::Kind_ColorPnt)
        stream << call.m_adPos[0] << ", " << call.m_adPos[1] << ", " << call.m_adPos[2];
    else if (call.m_eKind != CReadCall::Kind_End)
        stream << call.m_nValue;
    if (call.m_eKind == CReadCall::Kind_ColorPnt)
        stream << ", " << call.m_anColor[0] << ", " << call.m_anColor[1] << ", " << call.m_anColor[2];
    return stream << ')';
}

using CReadCalls = std::vector<CReadCall>;

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
            nNum += call.m_eKind == eKind ? 1 : 0;
        return nNum;
    }

    CReadCalls m_vecCalls;
    bool m_bOtherProgressCall = false; ///< Start or Stop was called
};

#endif
