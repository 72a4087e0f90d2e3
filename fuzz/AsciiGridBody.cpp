#include <fuzz/AskCloud.h>
#include <fuzz/CheckFacts.h>
#include <fuzz/FuzzBody.h>
#include <io/ReadForeign.h>
#include <tests/io/CMemFile.h>
#include <tests/io/grid/CSlowGridReader.h>
#include <zor4data/ReadPnts.h>

#include <string>

void FuzzBody(const std::uint8_t* pBytes, std::size_t nSize)
{
    static CMemFile file;
    const std::string sText(pBytes, pBytes + nSize);
    file.Set(sText);

    CRecReadListener rec;
    const bool bResult = ReadForeign(rec, &rec, PntCldFile_AsciiGrid, file.GetPath());
    CRecReadListener expected;
    Check(bResult == CSlowGridReader(expected, sText).Read(), "result");
    Check(rec.m_vecCalls == expected.m_vecCalls, "calls");
    CRecReadListener streamed;
    Check(ReadPnts(streamed, nullptr, PntCldFile_AsciiGrid, file.GetPath()) == bResult, "result of ReadPnts");
    Check(streamed.m_vecCalls == expected.m_vecCalls, "calls of ReadPnts");
    CheckFacts(PntCldFile_AsciiGrid, file.GetPath(), bResult);

    CFuzzHost host;
    CPntCld cld(&host);
    Check(cld.ReadFromFile(nullptr, PntCldFile_AsciiGrid, file.GetPath()) == bResult,
          "the same result again");
    Check(cld.GetNumPnts() <= rec.CountCalls(CReadCall::Kind_Pnt), "no more points than were delivered");
    Check((cld.GetNumPnts() > 0) == bResult, "a grid that is read has points");
    const CNumbers numbers(pBytes, nSize);
    AskCloud(cld, cld.GetNumPnts(), numbers);
    CheckNumbers(cld);
    AskCloud(cld, DeleteSome(cld), numbers);
}
