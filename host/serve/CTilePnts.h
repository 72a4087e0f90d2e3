#ifndef HOST_SERVE_CTILEPNTS_H
#define HOST_SERVE_CTILEPNTS_H

#include <host/picture/CRgb.h>
#include <host/serve/CAttribute.h>
#include <host/serve/CTileWriter.h>
#include <zor4data/CPntArrays.h>
#include <zor4data/CPntRun.h>

#include <cstring>
#include <memory>
#include <string>
#include <vector>

namespace zorcld
{

/// Goes through points of a cloud's array that lie in runs, far from each other as a rule.
class CTilePnts
{
public:
    /// @param pAttribute  that the colours stand for; null: the file's, white without any.
    CTilePnts(const CPntArrays& arrays, std::vector<CPntRun> vecRuns,
              std::shared_ptr<const CAttribute> pAttribute)
        : m_arrays(arrays), m_vecRuns(std::move(vecRuns)), m_pAttribute(std::move(pAttribute))
    {
    }

    /// @return how many points there are from the first on.
    std::int64_t CountPnts() const
    {
        std::int64_t nNumPnts = 0;
        for (const CPntRun& run : m_vecRuns)
            nNumPnts += run.nCount;
        return nNumPnts;
    }

    void Rewind()
    {
        m_nRun = 0;
        m_nInRun = 0;
    }

    /// Appends the next points, up to so many. @return whether any are left.
    bool WriteNext(std::int64_t nMaxPnts, CTileWriter& writer, std::string& sBytes)
    {
        for (; m_nRun < m_vecRuns.size() && nMaxPnts > 0; ++m_nRun, m_nInRun = 0)
        {
            const CPntRun& run = m_vecRuns[m_nRun];
            if (m_nRun + c_nAhead < m_vecRuns.size())
                __builtin_prefetch(FindRecord(m_vecRuns[m_nRun + c_nAhead].nFirst));
            for (; m_nInRun < run.nCount; ++m_nInRun, --nMaxPnts)
            {
                if (nMaxPnts == 0)
                    return true;
                Write(run.nFirst + m_nInRun, writer, sBytes);
            }
        }
        return m_nRun < m_vecRuns.size();
    }

private:
    static constexpr std::size_t c_nAhead = 16; // runs between asking for a point's memory and reading it
    static constexpr std::size_t c_nColorAt = 12;

    const unsigned char* FindRecord(std::int32_t nIndex) const
    {
        return m_arrays.pPnts + static_cast<std::size_t>(nIndex) * static_cast<std::size_t>(m_arrays.nStride);
    }

    void Write(std::int32_t nIndex, CTileWriter& writer, std::string& sBytes) const
    {
        const unsigned char* const pRecord = FindRecord(nIndex);
        std::int32_t anOffsets[3];
        std::memcpy(anOffsets, pRecord, sizeof(anOffsets));
        CRgbBytes color{255, 255, 255};
        if (m_pAttribute != nullptr)
            color = m_pAttribute->palette[m_pAttribute->vecShades[static_cast<std::size_t>(nIndex)]];
        else if (m_arrays.bColor)
            color = {pRecord[c_nColorAt], pRecord[c_nColorAt + 1], pRecord[c_nColorAt + 2]};
        writer.Add(anOffsets[0], anOffsets[1], anOffsets[2], color, sBytes);
    }

    const CPntArrays& m_arrays;
    std::vector<CPntRun> m_vecRuns;
    std::shared_ptr<const CAttribute> m_pAttribute;
    std::size_t m_nRun = 0;
    std::int32_t m_nInRun = 0;
};

} // namespace zorcld

#endif
