#ifndef TESTS_IO_PLY_CSLOWPLYREADER_H
#define TESTS_IO_PLY_CSLOWPLYREADER_H

#include <zor4data/IDlgProgress.h>
#include <zor4data/IPntCldReadListener.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

/// The rules by which a PLY file is read, one after the other, value by value and without any shortcut:
/// the oracle of the PLY reader. It works on the bytes of the file.
class CSlowPlyReader
{
public:
    CSlowPlyReader(IPntCldReadListener& listener, IDlgProgress* pProgress, std::string sFile)
        : m_listener(listener), m_pProgress(pProgress), m_sFile(std::move(sFile))
    {
    }

    bool Read() { return ReadHeader() && !m_vecElements.empty() && ReadBody(); }

    /// Reads the header only, and counts the items of all elements.
    long long CountItems()
    {
        long long nNum = 0;
        if (ReadHeader())
            for (const CElement& element : m_vecElements)
                nNum += element.nCount;
        return nNum;
    }

private:
    struct CProperty
    {
        int nRole = 0;
        int nType = 0;
    };

    struct CElement
    {
        bool bVertex = false;
        int nCount = 0;
        std::vector<CProperty> vecProps;
    };

    static bool StartsWith(const std::string& sText, const std::string& sPrefix)
    {
        return sText.compare(0, sPrefix.size(), sPrefix) == 0;
    }

    // At most 511 characters; carriage return and line feed are one character, the line feed.
    bool NextLine(std::string& sLine)
    {
        sLine.clear();
        while (sLine.size() < 511 && m_nOffset < m_sFile.size())
        {
            char c = m_sFile[m_nOffset++];
            if (c == '\r' && m_nOffset < m_sFile.size() && m_sFile[m_nOffset] == '\n')
                c = m_sFile[m_nOffset++];
            sLine += c;
            if (c == '\n')
                break;
        }
        if (sLine.empty())
            return false;
        sLine = std::string(sLine.c_str()); // a zero byte ends the text
        return true;
    }

    static int Count(const std::string& sText)
    {
        errno = 0;
        const long n = std::strtol(sText.c_str(), nullptr, 10);
        return static_cast<int>(std::min<long>(std::max<long>(n, INT_MIN), INT_MAX));
    }

    static CProperty Property(const std::string& sTypeAndName)
    {
        static const std::vector<std::string> vecTypes = {"char",
                                                          "uchar",
                                                          "short",
                                                          "ushort",
                                                          "int",
                                                          "uint",
                                                          "float",
                                                          "double",
                                                          "list uchar char",
                                                          "list uchar uchar",
                                                          "list uchar short",
                                                          "list uchar ushort",
                                                          "list uchar int",
                                                          "list uchar uint",
                                                          "list uchar float",
                                                          "list uchar double"};
        static const std::vector<std::string> vecNames = {"x\n", "y\n", "z\n", "red\n", "green\n", "blue\n"};
        CProperty prop;
        std::size_t nBehindType = 0;
        for (std::size_t i = 0; i < vecTypes.size() && prop.nType == 0; ++i)
            if (StartsWith(sTypeAndName, vecTypes[i]))
            {
                prop.nType = static_cast<int>(i) + 1;
                nBehindType = vecTypes[i].size();
            }
        const std::size_t nBlank = sTypeAndName.find(' ', nBehindType);
        if (nBlank != std::string::npos)
            for (std::size_t i = 0; i < vecNames.size(); ++i)
                if (sTypeAndName.substr(nBlank + 1) == vecNames[i])
                    prop.nRole = static_cast<int>(i) + 1;
        return prop;
    }

    bool ReadHeader()
    {
        std::string sLine;
        if (!NextLine(sLine) || sLine != "ply\n")
            return false;
        if (!NextLine(sLine) || sLine != "format binary_little_endian 1.0\n")
            return false;

        CElement open;
        bool bVertexMark = false;
        const auto Complete = [&]
        {
            if (open.nCount <= 0)
                return;
            open.bVertex = bVertexMark;
            m_vecElements.push_back(open);
            bVertexMark = false;
        };
        while (NextLine(sLine))
        {
            if (StartsWith(sLine, "comment "))
                continue;
            if (StartsWith(sLine, "element "))
            {
                Complete();
                open = CElement();
                if (StartsWith(sLine.substr(sLine.find(' ') + 1), "vertex "))
                    bVertexMark = true;
                open.nCount = Count(sLine.substr(sLine.rfind(' ') + 1));
            }
            else if (StartsWith(sLine, "property "))
            {
                open.vecProps.push_back(Property(sLine.substr(std::strlen("property "))));
            }
            else if (sLine == "end_header\n")
            {
                Complete();
                break;
            }
        }
        return true;
    }

    static std::size_t SizeOfType(int nType)
    {
        static constexpr std::size_t c_anSize[] = {1, 1, 2, 2, 4, 4, 4, 8};
        return c_anSize[(nType - 1) % 8];
    }

    bool ReadBody()
    {
        const int nShare = 100 / static_cast<int>(m_vecElements.size());
        int nBase = 0;
        for (const CElement& element : m_vecElements)
        {
            bool abHas[7] = {};
            for (const CProperty& prop : element.vecProps)
                abHas[prop.nRole] = true;
            const bool bColor = abHas[4] && abHas[5] && abHas[6];
            if (element.bVertex)
            {
                if (!abHas[1] || !abHas[2] || !abHas[3])
                    return false;
                m_listener.OnReadType(bColor ? PntCldType_PntColor : PntCldType_Pnt);
                m_listener.OnReadNumPnts(element.nCount);
            }
            unsigned char aacSlot[7][8] = {};
            for (int i = 0; i < element.nCount; ++i)
            {
                // Of items that hold nothing a thousand at most are told.
                const bool bTold = !element.vecProps.empty() || i % (element.nCount / 1000 + 1) == 0;
                if (m_pProgress != nullptr && bTold)
                {
                    const double dPart = static_cast<double>(i) / static_cast<double>(element.nCount);
                    m_pProgress->SetPos(static_cast<int>(nShare * dPart + nBase));
                }
                for (const CProperty& prop : element.vecProps)
                    if (!ReadValue(prop.nType, aacSlot[prop.nRole]))
                        return false;
                if (!element.bVertex)
                    continue;
                float afPos[3];
                for (int k = 0; k < 3; ++k)
                    std::memcpy(&afPos[k], aacSlot[k + 1], 4);
                const double x = static_cast<double>(afPos[0]);
                const double y = static_cast<double>(afPos[1]);
                const double z = static_cast<double>(afPos[2]);
                if (bColor)
                    m_listener.OnReadPnt(x, y, z, aacSlot[4][0], aacSlot[5][0], aacSlot[6][0]);
                else
                    m_listener.OnReadPnt(x, y, z);
            }
            nBase += nShare;
        }
        m_listener.OnReadEnd();
        return true;
    }

    bool ReadValue(int nType, unsigned char* pSlot)
    {
        if (nType == 0)
            return false;
        const bool bList = nType > 8;
        const std::size_t nSize = SizeOfType(nType);
        if (!MakeAvailable(bList ? 1 : nSize))
            return false;
        if (bList)
        {
            m_nPos += 1 + m_vecBuffer[m_nPos] * nSize;
            return true;
        }
        std::memset(pSlot, 0, 8);
        std::memcpy(pSlot, m_vecBuffer.data() + m_nPos, nSize);
        m_nPos += nSize;
        return true;
    }

    // m_nOffset is the file position from here on.
    bool MakeAvailable(std::size_t nSize)
    {
        if (m_nPos + nSize <= m_nValid)
            return true;
        if (m_nNumFills > 0)
            m_nOffset = m_nOffset + m_nPos - m_nValid;
        const std::size_t nLeft = m_nOffset < m_sFile.size() ? m_sFile.size() - m_nOffset : 0;
        const std::size_t nRead = std::min(nLeft, m_vecBuffer.size());
        if (nRead == 0)
            return false;
        std::memcpy(m_vecBuffer.data(), m_sFile.data() + m_nOffset, nRead);
        m_nOffset += nRead;
        ++m_nNumFills;
        m_nPos = 0;
        m_nValid = nRead;
        return true;
    }

    IPntCldReadListener& m_listener;
    IDlgProgress* m_pProgress;
    std::string m_sFile;
    std::size_t m_nOffset = 0;
    std::vector<CElement> m_vecElements;
    std::vector<unsigned char> m_vecBuffer = std::vector<unsigned char>(10000);
    std::size_t m_nPos = 0;
    std::size_t m_nValid = 0;
    int m_nNumFills = 0;
};

#endif
