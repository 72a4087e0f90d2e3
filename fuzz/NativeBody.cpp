#include <fuzz/AskCloud.h>
#include <fuzz/CheckFacts.h>
#include <fuzz/FuzzBody.h>
#include <tests/io/CMemFile.h>
#include <tests/io/native/CSlowNativeReader.h>

#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace
{

class CIndexListener final : public IPntCldListener
{
public:
    void OnPnts(int nNumPnts, CCldCadPnt* pPnts) override
    {
        for (int i = 0; i < nNumPnts; ++i)
            m_vecIndices.push_back(pPnts[i].m_nIndex);
    }

    std::vector<int> m_vecIndices;
};

std::string Save(CPntCld& cld)
{
    static const CMemFile file;
    Check(cld.WriteToFile(file.GetPath(), 1), "WriteToFile succeeds");
    std::ifstream stream(file.GetPath(), std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

/// The cloud is what the rules, followed one by one, make of the file.
void CompareWithRules(const CPntCld& cld, const CSlowNativeReader& expected)
{
    Check(cld.GetNumPnts() == expected.m_nNumPnts, "number of points");
    Check(cld.GetVersion() == (expected.m_bResult ? expected.m_nVersion : -1), "version");
    Check(cld.IsWithColor() == (expected.m_nType == 1), "type");
    zor::geom::RECT_3D rect;
    Check(cld.GetBdry(rect) == expected.m_bTree, "octree or none");
    CIndexListener listener;
    cld.GetPnts_Clip(&listener, {}, 100);
    Check(listener.m_vecIndices == expected.m_vecFound, "leaves");
}

/// Saved and loaded it is the same cloud, and saved again the same file.
void SaveAndLoad(CPntCld& cld, const CSlowNativeReader& expected)
{
    const std::string sBytes = Save(cld);
    Check(expected.m_bLost || sBytes.size() == expected.m_nPos, "a sound octree is kept as it stands");
    static CMemFile file;
    file.Set(sBytes);
    CFuzzHost host;
    CPntCld loaded(&host);
    Check(loaded.ReadFromFile(nullptr, PntCldFile_Native, file.GetPath()), "a saved file loads");
    CompareWithRules(loaded, expected);
    Check(Save(loaded) == sBytes, "the same bytes again");
}

} // namespace

void FuzzBody(const std::uint8_t* pBytes, std::size_t nSize)
{
    static CMemFile file;
    const std::string sBytes(pBytes, pBytes + nSize);
    file.Set(sBytes);
    const CNumbers numbers(pBytes, nSize);
    const CSlowNativeReader expected(sBytes);
    CFuzzHost host;
    CPntCld cld(&host);
    Check(cld.ReadFromFile(nullptr, PntCldFile_Native, file.GetPath()) == expected.m_bResult, "result");
    CheckFacts(PntCldFile_Native, file.GetPath(), expected.m_bResult);
    CompareWithRules(cld, expected);
    AskCloud(cld, static_cast<int>(expected.m_vecFound.size()), numbers);
    if (!expected.m_bTree)
        return;
    SaveAndLoad(cld, expected);
    AskCloud(cld, DeleteSome(cld), numbers); // a deletion builds the tree anew
}
