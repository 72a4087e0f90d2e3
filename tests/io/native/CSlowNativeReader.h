#ifndef TESTS_IO_NATIVE_CSLOWNATIVEREADER_H
#define TESTS_IO_NATIVE_CSLOWNATIVEREADER_H

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <set>
#include <string>
#include <utility>
#include <vector>

/// What the rules make of the bytes of a native file, damaged ones included, followed one by one. The
/// store that it is loaded into is empty.
class CSlowNativeReader
{
public:
    explicit CSlowNativeReader(std::string sBytes) : m_sBytes(std::move(sBytes))
    {
        if (m_sBytes.size() < 5)
            return;
        m_nPos = 5;
        m_nVersion = Number<std::int32_t>();
        m_nType = Number<std::int16_t>();
        m_bResult = m_nType == 0 || m_nType == 1;
        if (m_bResult)
            ReadStore();
        m_bRead = true;
    }

    bool m_bRead = false;   ///< the file could be opened: type and, of a known type, version are taken over
    bool m_bResult = false; ///< what the load returns
    std::int32_t m_nVersion = 0;
    int m_nType = -1;
    std::int64_t m_nNumPnts = 0;
    std::string m_sPnts; ///< the records, as in the file
    bool m_bTree = false;
    std::vector<std::int32_t> m_anHeader;
    std::vector<int> m_vecFound; ///< points of the leaves, in the order of the walk
    bool m_bLost = false;        ///< something of the octree was not there or was dropped
    std::size_t m_nPos = 0;      ///< how far it has been read

private:
    void ReadStore()
    {
        for (int i = 0; i < 3; ++i)
            Number<float>();
        const std::int64_t nNum = std::max(Number<std::int32_t>(), 0);
        const std::int64_t nSize = m_nType == 0 ? 12 : 15;
        const std::int64_t nLeft = static_cast<std::int64_t>(m_sBytes.size() - m_nPos);
        m_nNumPnts = std::min(nNum, nLeft / nSize);
        m_sPnts = m_sBytes.substr(m_nPos, static_cast<std::size_t>(m_nNumPnts * nSize));
        m_nPos += m_sPnts.size();
        if (m_nNumPnts == 0)
            return;
        m_bTree = true;
        for (int i = 0; i < 7; ++i)
            m_anHeader.push_back(Number<std::int32_t>());
        ReadNode(0);
    }

    /// Bytes behind the end are zero.
    template <class N>
    N Number()
    {
        char ac[sizeof(N)] = {};
        const std::size_t nNum = std::min(sizeof(N), m_sBytes.size() - m_nPos);
        std::memcpy(ac, m_sBytes.data() + m_nPos, nNum);
        m_nPos += nNum;
        N number{};
        std::memcpy(&number, ac, sizeof number);
        return number;
    }

    bool Has(std::size_t nNumBytes)
    {
        m_bEnded = m_bEnded || m_sBytes.size() - m_nPos < nNumBytes;
        m_bLost = m_bLost || m_bEnded;
        return !m_bEnded;
    }

    void ReadNode(int nDepth)
    {
        m_bEnded = m_bEnded || nDepth > 20;
        if (!Has(2))
            return;
        const int nChildren = Number<std::uint8_t>();
        const int nLeaves = Number<std::uint8_t>();
        for (int k = 0; k < 8; ++k)
        {
            if ((nChildren >> k & 1) == 0 || m_bEnded)
                continue;
            if ((nLeaves >> k & 1) != 0)
                ReadLeaf();
            else
                ReadNode(nDepth + 1);
        }
    }

    void ReadLeaf()
    {
        if (!Has(8))
            return;
        const std::int64_t nCount = Number<std::uint32_t>();
        const std::int64_t nFirst = Number<std::uint32_t>();
        bool bUsable = nFirst + nCount <= m_nNumPnts;
        for (std::int64_t i = nFirst; bUsable && i < nFirst + nCount; ++i)
            bUsable = m_setFound.count(i) == 0;
        m_bLost = m_bLost || !bUsable;
        for (std::int64_t i = nFirst; bUsable && i < nFirst + nCount; ++i)
        {
            m_setFound.insert(i);
            m_vecFound.push_back(static_cast<int>(i));
        }
    }

    std::string m_sBytes;
    std::set<std::int64_t> m_setFound; // what is in m_vecFound
    bool m_bEnded = false;
};

#endif
