#include <host/tile/CNativePnts.h>

#include <formats/Compact.h>
#include <formats/LittleEndian.h>
#include <formats/NativeFacts.h>
#include <formats/OpenRegularFile.h>
#include <host/output/CFailure.h>
#include <host/tile/FailForReach.h>

#include <algorithm>
#include <vector>

namespace zorcld
{

namespace
{

CByteReader OpenReader(const std::string& sPath)
{
    CFileCause cause;
    CFilePtr pStream = OpenRegularFile(sPath.c_str(), cause);
    if (pStream == nullptr)
        throw CFailure(sPath, cause);
    return CByteReader(std::move(pStream));
}

} // namespace

CNativePnts::CNativePnts(const std::string& sPath) : m_sPath(sPath), m_reader(OpenReader(sPath))
{
    const CNativeFacts facts = FindNativeFacts(m_reader);
    m_header = facts.header;
    if (const CFileCause cause = m_header.FindCause(); !cause.empty())
        throw CFailure(sPath, cause);
    if (!facts.IsWhole())
        throw CFailure(sPath,
                       "is damaged (zorcld check tells more, zorcld convert mends what can be mended)");
}

void CNativePnts::ForEach(const TOrigin& origin, const TOnPnts& onPnts)
{
    const std::size_t nPntSize = m_header.GetPntSize();
    const bool bSameOrigin = origin == m_header.afOrg;
    std::vector<unsigned char> vecBlock(c_nNumAtOnce * nPntSize);
    std::vector<CTilePnt> vecPnts;
    m_reader.SetPos(static_cast<std::int64_t>(c_nNativeHeaderSize));
    for (auto nLeft = static_cast<std::size_t>(m_header.nNumPnts); nLeft > 0;)
    {
        const std::size_t nNum = std::min(nLeft, c_nNumAtOnce);
        if (!m_reader.Read(vecBlock.data(), nNum * nPntSize))
            throw CFailure(m_sPath, "it was changed while it was read");
        vecPnts.resize(nNum);
        for (std::size_t i = 0; i < nNum; ++i)
            vecPnts[i] = Parse(vecBlock.data() + i * nPntSize, origin, bSameOrigin);
        onPnts(vecPnts);
        nLeft -= nNum;
    }
}

CTilePnt CNativePnts::Parse(const unsigned char* pRecord, const TOrigin& origin, bool bSameOrigin) const
{
    CTilePnt pnt;
    for (std::size_t k = 0; k < 3; ++k)
    {
        const auto n = LittleEndian::Get<std::int32_t>(pRecord + k * sizeof(std::int32_t));
        const double dPlace = CoordFromCompact(n, m_header.afOrg[k]);
        if (!bSameOrigin && !FitsInt32(CompactUnits(dPlace, origin[k])))
            FailForReach(m_sPath, dPlace, k, origin[k]);
        pnt.anSteps[k] = bSameOrigin ? n : CompactFromCoord(dPlace, origin[k]);
        if (HasColor())
            pnt.anColor[k] = pRecord[c_nNativePntSize + k];
    }
    return pnt;
}

} // namespace zorcld
