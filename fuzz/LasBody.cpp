#include <fuzz/FuzzBody.h>
#include <tests/io/CMemFile.h>
#include <zor4data/CPntCld.h>
#include <zor4data/IDlgProgress.h>
#include <zor4data/IPntCldReadListener.h>

#include <io/ReadForeign.h>

#include <cstdio>
#include <cstdlib>
#include <string>

namespace
{

/// Points up to which a cloud is filled.
constexpr int c_nMaxPnts = 1000000;

void Check(bool bHolds, const char* sWhat)
{
    if (bHolds)
        return;
    std::fprintf(stderr, "does not hold: %s\n", sWhat);
    std::abort();
}

/// Checks the order of the calls while they come in.
class COrderListener final : public IPntCldReadListener, public IDlgProgress
{
public:
    void OnReadType(enumPntCldType eType) override
    {
        Check(!m_bHasType, "one type");
        m_bHasType = true;
        m_bColor = eType == PntCldType_PntColor;
    }
    void OnReadNumPnts(int nNumPnts) override
    {
        Check(m_bHasType && !m_bHasCount, "one count, after the type");
        m_bHasCount = true;
        m_nAnnounced = nNumPnts;
    }
    void OnReadPnt(double, double, double, unsigned char, unsigned char, unsigned char) override
    {
        CountPnt(true);
    }
    void OnReadPnt(double, double, double) override { CountPnt(false); }
    void OnReadEnd() override
    {
        Check(m_bHasCount && !m_bEnded, "one end, after the count");
        m_bEnded = true;
    }

    void Start() override { Check(false, "Start is the host's"); }
    void Stop() override { Check(false, "Stop is the host's"); }
    bool SetPos(int nPos) override
    {
        Check(m_nNumProgress == m_nNumPnts, "progress comes before its point");
        Check(m_nAnnounced <= 0 || (nPos >= 0 && nPos <= 100), "progress is a percentage");
        ++m_nNumProgress;
        return false;
    }

    /// @param bResult    what the reader has returned.
    /// @param bProgress  it had a progress object.
    void CheckResult(bool bResult, bool bProgress) const
    {
        Check(bResult == m_bEnded && bResult == m_bHasType, "a refused file makes no call, any other all");
        Check(m_nNumProgress == (bProgress ? m_nNumPnts : 0), "as many progress calls as points");
    }

    long long GetNumPnts() const { return m_nNumPnts; }
    int GetNumAnnounced() const { return m_nAnnounced; }

private:
    void CountPnt(bool bColor)
    {
        Check(m_bHasCount && !m_bEnded && bColor == m_bColor, "points of the announced form in between");
        ++m_nNumPnts;
    }

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

    COrderListener quiet;
    quiet.CheckResult(ReadForeign(quiet, nullptr, PntCldFile_Las, file.GetPath()), false);
    COrderListener shown;
    shown.CheckResult(ReadForeign(shown, &shown, PntCldFile_Las, file.GetPath()), true);
    Check(quiet.GetNumPnts() == shown.GetNumPnts(), "progress changes nothing");

    if (quiet.GetNumAnnounced() > c_nMaxPnts)
        return;
    CPntCld cld(nullptr);
    const bool bLoaded = cld.ReadFromFile(nullptr, PntCldFile_Las, file.GetPath());
    Check(cld.GetNumPnts() <= (bLoaded ? quiet.GetNumAnnounced() : 0) || quiet.GetNumAnnounced() < 0,
          "the cloud holds what was announced, less duplicates");
}
