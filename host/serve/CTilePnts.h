#ifndef HOST_SERVE_CTILEPNTS_H
#define HOST_SERVE_CTILEPNTS_H

#include <host/picture/CRgb.h>
#include <host/serve/CAttribute.h>
#include <host/serve/CCloudVersion.h>
#include <host/serve/CTileWriter.h>
#include <zor4data/CPntArrays.h>
#include <zor4data/CPntRun.h>

#include <algorithm>
#include <cstdint>
#include <memory>
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

    /// How many are still to be written.
    std::int64_t GetNumLeft() const { return m_nNumPnts - m_nNumWritten; }

    void Rewind()
    {
        m_nNumWritten = 0;
        m_next = {};
    }

    /// Writes the next points, up to so many, 12 bytes each. @return how many there were.
    std::int64_t WriteNext(std::int64_t nMaxPnts, CTileWriter& writer, char* pTo)
    {
        const std::int64_t nNum = std::min(nMaxPnts, GetNumLeft());
        m_nNumWritten += nNum;
        if (m_pAttribute != nullptr)
            Write(nNum, writer, pTo,
                  [this](std::int32_t nIndex, const unsigned char*)
                  {
                      const int nFileIndex = m_version.GetFileIndex(nIndex);
                      return m_pAttribute
                          ->palette[m_pAttribute->vecShades[static_cast<std::size_t>(nFileIndex)]];
                  });
        else if (m_arrays.bColor)
            Write(nNum, writer, pTo,
                  [](std::int32_t, const unsigned char* pRecord) {
                      return CRgbBytes{pRecord[c_nColorAt], pRecord[c_nColorAt + 1], pRecord[c_nColorAt + 2]};
                  });
        else
            Write(nNum, writer, pTo,
                  [](std::int32_t, const unsigned char*) {
                      return CRgbBytes{255, 255, 255};
                  });
        return nNum;
    }

private:
    static constexpr std::size_t c_nAhead = 16; // runs between asking for a point's memory and reading it
    static constexpr std::size_t c_nColorAt = 12;

    /// A point of a run.
    struct CPlace
    {
        std::size_t nRun = 0;
        std::int32_t nInRun = 0;
    };

    const unsigned char* FindRecord(std::int32_t nIndex) const
    {
        return m_arrays.pPnts + static_cast<std::size_t>(nIndex) * static_cast<std::size_t>(m_arrays.nStride);
    }

    /// @param findColor  of a point by index and record.
    template <class TFindColor>
    void Write(std::int64_t nNum, CTileWriter& writer, char* pTo, TFindColor findColor)
    {
        CPlace end;
        writer.PutPnts([&](auto& put) { end = WriteFrom(m_next, nNum, pTo, findColor, put); });
        m_next = end;
    }

    /// @return the place behind what was written.
    template <class TFindColor, class TPut>
    CPlace WriteFrom(CPlace place, std::int64_t nNum, char* pTo, TFindColor findColor, TPut& putPnt) const
    {
        TPut put = putPnt; // by itself, so that what it knows stays in registers while bytes are written
        const auto nStride = static_cast<std::size_t>(m_arrays.nStride);
        for (; nNum > 0; ++place.nRun, place.nInRun = 0)
        {
            const CPntRun run = m_vecRuns[place.nRun];
            if (place.nRun + c_nAhead < m_vecRuns.size())
                __builtin_prefetch(FindRecord(m_vecRuns[place.nRun + c_nAhead].nFirst));
            const auto nNumHere =
                static_cast<std::int32_t>(std::min<std::int64_t>(run.nCount - place.nInRun, nNum));
            const std::int32_t nFirst = run.nFirst + place.nInRun;
            const unsigned char* pRecord = FindRecord(nFirst);
            for (std::int32_t i = 0; i < nNumHere; ++i, pRecord += nStride, pTo += CTileWriter::c_nPntSize)
                put(pRecord, findColor(nFirst + i, pRecord), pTo);
            nNum -= nNumHere;
            if (nNumHere < run.nCount - place.nInRun)
            {
                place.nInRun += nNumHere;
                break;
            }
        }
        putPnt = put;
        return place;
    }

    const CCloudVersion& m_version;
    const CPntArrays& m_arrays;
    std::vector<CPntRun> m_vecRuns;
    std::shared_ptr<const CAttribute> m_pAttribute;
    CPlace m_next;
    std::int64_t m_nNumPnts = 0;
    std::int64_t m_nNumWritten = 0;
};

} // namespace zorcld

#endif
