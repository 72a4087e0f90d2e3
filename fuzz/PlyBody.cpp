#include <fuzz/AskCloud.h>
#include <fuzz/CheckFacts.h>
#include <fuzz/FuzzBody.h>
#include <io/ReadForeign.h>
#include <tests/io/CMemFile.h>
#include <tests/io/CRecReadListener.h>
#include <tests/io/ply/CSlowPlyReader.h>
#include <zor4data/ReadPnts.h>

#include <algorithm>
#include <string>
#include <vector>

namespace
{

/// Items up to which the calls are recorded and compared, and progress is asked for.
constexpr long long c_nMaxItems = 20000;

/// Points up to which a cloud is filled.
constexpr int c_nMaxPnts = 1000000;

/// Remembers the largest announced count, and the number of points.
class CCountListener final : public IPntCldReadListener
{
public:
    void OnReadType(enumPntCldType) override {}
    void OnReadNumPnts(int nNumPnts) override { m_nMaxAnnounced = std::max(m_nMaxAnnounced, nNumPnts); }
    void OnReadPnt(double, double, double, unsigned char, unsigned char, unsigned char) override {}
    void OnReadPnt(double, double, double) override {}
    void OnReadEnd() override {}

    int m_nMaxAnnounced = 0;
};

void FillAndAsk(const char* sPath, const CNumbers& numbers)
{
    CFuzzHost host;
    CPntCld cld(&host);
    const bool bLoaded = cld.ReadFromFile(nullptr, PntCldFile_Ply, sPath);
    if (!bLoaded && cld.GetNumPnts() > c_nMaxItems)
        return; // slots that were announced only: nothing to learn from so many of them
    AskCloud(cld, bLoaded ? cld.GetNumPnts() : 0, numbers);
    CheckNumbers(cld);
    const bool bHasPnts = cld.GetNumPnts() > 0; // then a deletion builds the tree
    const int nNumLeft = DeleteSome(cld);
    AskCloud(cld, bLoaded || bHasPnts ? nNumLeft : 0, numbers);
}

/// The reader makes the calls that the rules, followed one by one, make.
void CompareWithRules(const char* sPath, const std::string& sBytes)
{
    CRecReadListener rec;
    const bool bResult = ReadForeign(rec, &rec, PntCldFile_Ply, sPath);
    CRecReadListener expected;
    const bool bExpected = CSlowPlyReader(expected, &expected, sBytes).Read();
    Check(bResult == bExpected, "result");
    Check(rec.m_vecCalls == expected.m_vecCalls, "calls");
}

} // namespace

void FuzzBody(const std::uint8_t* pBytes, std::size_t nSize)
{
    static CMemFile file;
    const std::string sBytes(pBytes, pBytes + nSize);
    file.Set(sBytes);

    CCountListener counter;
    const bool bResult = ReadPnts(counter, nullptr, PntCldFile_Ply, file.GetPath());
    Check(!bResult || nSize > 0, "an empty file is none");
    CheckFacts(PntCldFile_Ply, file.GetPath(), bResult);
    if (CSlowPlyReader(counter, nullptr, sBytes).CountItems() <= c_nMaxItems)
        CompareWithRules(file.GetPath(), sBytes);
    if (counter.m_nMaxAnnounced <= c_nMaxPnts)
        FillAndAsk(file.GetPath(), CNumbers(pBytes, nSize));
}
