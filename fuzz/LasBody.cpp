#include <formats/CLasGuard.h>
#include <fuzz/Check.h>
#include <fuzz/CheckFacts.h>
#include <fuzz/FuzzBody.h>
#include <tests/io/CMemFile.h>
#include <zor4data/CPntCld.h>
#include <zor4data/IDlgProgress.h>
#include <zor4data/IPntCldReadListener.h>
#include <zor4data/ReadPnts.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>

// LASzip does not release everything where what it reads is damaged.
extern "C" const char* __lsan_default_suppressions();
extern "C" const char* __lsan_default_suppressions()
{
    return "leak:liblaszip\n";
}

namespace
{

/// Points up to which a cloud is filled.
constexpr int c_nMaxPnts = 10000;

/// Checks the order of the calls while they come in, and fills a cloud with them.
class COrderListener final : public IPntCldReadListener, public IDlgProgress
{
public:
    void OnReadType(enumPntCldType eType) override
    {
        Check(!m_bHasType, "one type");
        m_bHasType = true;
        m_bColor = eType == PntCldType_PntColor;
        m_cld.OnReadType(eType);
    }
    void OnReadNumPnts(int nNumPnts) override
    {
        Check(m_bHasType && !m_bHasCount, "one count, after the type");
        m_bHasCount = true;
        m_nAnnounced = nNumPnts;
        if (nNumPnts <= c_nMaxPnts)
            m_cld.OnReadNumPnts(nNumPnts);
    }
    void OnReadPnt(double x, double y, double z, unsigned char r, unsigned char g, unsigned char b) override
    {
        CountPnt(true);
        m_cld.OnReadPnt(x, y, z, r, g, b);
    }
    void OnReadPnt(double x, double y, double z) override
    {
        CountPnt(false);
        m_cld.OnReadPnt(x, y, z);
    }
    void OnReadEnd() override
    {
        Check(m_bHasCount && !m_bEnded, "one end, after the count");
        m_bEnded = true;
        m_cld.OnReadEnd();
    }

    void Start() override { Check(false, "Start is the host's"); }
    void Stop() override { Check(false, "Stop is the host's"); }
    bool SetPos(int nPos) override
    {
        Check(m_nNumProgress == m_nNumPnts, "progress comes before its point");
        Check(nPos >= 0, "progress is not negative");
        ++m_nNumProgress;
        return false;
    }

    /// @param bResult  what the reader has returned.
    void CheckResult(bool bResult) const
    {
        Check(bResult == m_bEnded && bResult == m_bHasType, "a refused file makes no call, any other all");
        Check(m_nNumProgress == m_nNumPnts, "as many progress calls as points");
        Check(m_cld.GetNumPnts() <= std::max(m_nAnnounced, 0), "the cloud holds what was announced");
        Check(!bResult || m_cld.IsWithColor() == m_bColor, "the cloud has the announced type");
    }

private:
    void CountPnt(bool bColor)
    {
        Check(m_bHasCount && !m_bEnded && bColor == m_bColor, "points of the announced form in between");
        ++m_nNumPnts;
    }

    CPntCld m_cld{nullptr};
    bool m_bHasType = false;
    bool m_bColor = false;
    bool m_bHasCount = false;
    bool m_bEnded = false;
    int m_nAnnounced = 0;
    long long m_nNumPnts = 0;
    long long m_nNumProgress = 0;
};

} // namespace

void FuzzBody(const std::uint8_t* pBytes, std::size_t nSize)
{
    static CMemFile file;
    file.Set(std::string(pBytes, pBytes + nSize));
    COrderListener listener;
    const bool bResult = ReadPnts(listener, &listener, PntCldFile_Las, file.GetPath());
    listener.CheckResult(bResult);
    CheckFacts(PntCldFile_Las, file.GetPath(), bResult);
    CLasGuard guard(file.GetPath());
    if (guard.Check())
        static_cast<void>(guard.ReadCoordSystem());
}
