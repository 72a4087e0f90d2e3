#include <formats/CPlyLines.h>

#include <formats/CByteReader.h>

#include <algorithm>

std::int64_t CPlyLines::GetPos() const
{
    return m_reader.GetPos();
}

bool CPlyLines::ReadPiece()
{
    if (m_bLineEnd)
        m_sLine.clear();
    m_bLineEnd = false;
    m_sPiece.clear();
    int c = 0;
    while (!m_bLineEnd && m_sPiece.size() < c_nMaxPiece && (c = TakeChar()) >= 0)
    {
        m_bLineEnd = c == m_cEnd;
        m_sPiece.push_back(static_cast<char>(c));
        if (!m_bLineEnd && c != '\r' && m_sLine.size() < c_nMaxLine)
            m_sLine.push_back(static_cast<char>(c));
    }
    const bool bRead = !m_sPiece.empty();
    m_sPiece.resize(std::min(m_sPiece.size(), m_sPiece.find('\0')));
    return bRead;
}

/// @return the next character, a line feed for carriage return and line feed; -1 at the end of the file.
int CPlyLines::TakeChar()
{
    int c = m_reader.Get();
    if (c == '\r' && m_cEnd != '\r' && m_reader.Peek() == '\n')
        c = m_reader.Get();
    if (m_cEnd == 0 && (c == '\n' || c == '\r'))
        m_cEnd = c;
    return c;
}
