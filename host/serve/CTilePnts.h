#ifndef HOST_SERVE_CTILEPNTS_H
#define HOST_SERVE_CTILEPNTS_H

#include <host/picture/CRgb.h>
#include <host/serve/CAttribute.h>
#include <host/serve/CCloudVersion.h>
#include <host/serve/CTileWriter.h>
#include <zor4data/CPntArrays.h>
#include <zor4data/CPntRun.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace zorcld
{

/// Goes through points of a cloud's array that lie in runs, far from each other as a rule.
class CTilePnts
{
public:
    /// @param pAttribute  that the colours stand for; null: the file's, white without any.
    CTilePnts(const CCloudVersion& version, std::vector<CPntRun> vecRuns,
              std::shared_ptr<const CAttribute> pAttribute)
        : m_version(version), m_arrays(version.GetArrays()), m_vecRuns(std::move(vecRuns)),
          m_pAttribute(std::move(pAttribute))
    {
        for (const CPntRun& run : m_vecRuns)
            m_nNumPnts += run.nCount;
    }

    std::int64_t GetNumPnts() const { return m_nNumPnts; }

    void Rewind()
    {
        m_nNumWritten = 0;
        m_nRun = 0;
        m_nInRun = 0;
    }

    /// Appends the next points, up to so many. @return whether there were any.
    bool WriteNext(std::int64_t nMaxPnts, CTileWriter& writer, std::string& sBytes)
    {
        const std::int64_t nNum = std::min(nMaxPnts, m_nNumPnts - m_nNumWritten);
        const std::size_t nAt = sBytes.size();
        sBytes.resize(nAt + static_cast<std::size_t>(nNum) * CTileWriter::c_nPntSize);
        m_nNumWritten += nNum;
        if (m_pAttribute != nullptr)
            Write(nNum, writer, &sBytes[nAt],
                  [this](std::int32_t nIndex, const unsigned char*)
                  {
                      const int nFileIndex = m_version.GetFileIndex(nIndex);
                      return m_pAttribute
                          ->palette[m_pAttribute->vecShades[static_cast<std::size_t>(nFileIndex)]];
                  });
        else if (m_arrays.bColor)
            Write(nNum, writer, &sBytes[nAt],
                  [](std::int32_t, const unsigned char* pRecord) {
                      return CRgbBytes{pRecord[c_nColorAt], pRecord[c_nColorAt + 1], pRecord[c_nColorAt + 2]};
                  });
        else
            Write(nNum, writer, &sBytes[nAt],
                  [](std::int32_t, const unsigned char*) {
                      return CRgbBytes{255, 255, 255};
                  });
        return nNum > 0;
    }

private:
    static constexpr std::size_t c_nAhead = 16; // runs between asking for a point's memory and reading it
    static constexpr std::size_t c_nColorAt = 12;

    const unsigned char* FindRecord(std::int32_t nIndex) const
    {
        return m_arrays.pPnts + static_cast<std::size_t>(nIndex) * static_cast<std::size_t>(m_arrays.nStride);
    }

    /// @param findColor  of a point by index and record.
    template <class TFindColor>
    void Write(std::int64_t nNum, CTileWriter& writer, char* pTo, TFindColor findColor)
    {
        for (; nNum > 0; ++m_nRun, m_nInRun = 0)
        {
            const CPntRun& run = m_vecRuns[m_nRun];
            if (m_nRun + c_nAhead < m_vecRuns.size())
                __builtin_prefetch(FindRecord(m_vecRuns[m_nRun + c_nAhead].nFirst));
            const std::int64_t nEnd = std::min<std::int64_t>(run.nCount, m_nInRun + nNum);
            nNum -= nEnd - m_nInRun;
            for (; m_nInRun < nEnd; ++m_nInRun, pTo += CTileWriter::c_nPntSize)
            {
                const auto nIndex = static_cast<std::int32_t>(run.nFirst + m_nInRun);
                const unsigned char* const pRecord = FindRecord(nIndex);
                std::int32_t anOffsets[3];
                std::memcpy(anOffsets, pRecord, sizeof(anOffsets));
                writer.Put(anOffsets[0], anOffsets[1], anOffsets[2], findColor(nIndex, pRecord), pTo);
            }
            if (m_nInRun < run.nCount)
                return;
        }
    }

    const CCloudVersion& m_version;
    const CPntArrays& m_arrays;
    std::vector<CPntRun> m_vecRuns;
    std::shared_ptr<const CAttribute> m_pAttribute;
    std::size_t m_nRun = 0;
    std::int64_t m_nInRun = 0;
    std::int64_t m_nNumPnts = 0;
    std::int64_t m_nNumWritten = 0;
};

} // namespace zorcld

#endif
