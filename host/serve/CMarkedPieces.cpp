#include <host/serve/CMarkedPieces.h>

#include <zor4data/CPntCld.h>

namespace zorcld
{

namespace
{

/// The point as a query would deliver it, in the file's colours and with the index that clients know.
CCldCadPnt GetCadPnt(const CCloudVersion& version, int nIndex)
{
    const CPntCld& cloud = version.GetCloud();
    CCldCadPnt pnt;
    cloud.GetPnt(nIndex, pnt.m_pnt);
    unsigned char r = 0;
    unsigned char g = 0;
    unsigned char b = 0;
    if (cloud.GetPntColor(nIndex, r, g, b))
    {
        pnt.m_fR = static_cast<float>(r) / 255.0F;
        pnt.m_fG = static_cast<float>(g) / 255.0F;
        pnt.m_fB = static_cast<float>(b) / 255.0F;
    }
    pnt.m_nIndex = version.GetFileIndex(nIndex);
    return pnt;
}

} // namespace

bool CMarkedPieces::MakeNext(std::string& sPiece)
{
    constexpr std::size_t c_nPiece = 65536;
    sPiece.clear();
    if (!m_bBegun)
        m_pWriter->Begin(sPiece);
    m_bBegun = true;
    for (; m_nNext < m_marked.vecMarks.size() && sPiece.size() < c_nPiece; ++m_nNext)
        if (m_marked.vecMarks[m_nNext])
            m_pWriter->Add(GetCadPnt(*m_marked.pVersion, static_cast<int>(m_nNext)), sPiece);
    return !sPiece.empty();
}

} // namespace zorcld
