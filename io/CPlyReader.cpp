#include <io/CPlyReader.h>

#include <io/CFilePtr.h>
#include <io/CPlyBuffer.h>
#include <io/CPlyHeader.h>
#include <io/CPlyLayout.h>
#include <zor4data/IDlgProgress.h>
#include <zor4data/IPntCldReadListener.h>

#include <algorithm>
#include <cstring>
#include <new>

namespace
{

/// The value at `pBytes` as a coordinate.
/// KEPT: four bytes as a 32-bit float, whatever type the property has: only a "float" gives its value.
float CoordDaBytes(const unsigned char* pBytes)
{
    float f = 0.0F;
    std::memcpy(&f, pBytes, sizeof f);
    return f;
}

/// Values of one vertex: of each the bytes as they stand in the file, then zeros; zeros of a list.
class CPlyVertex
{
public:
    /// Of several values of one role in an item the last one counts.
    void Set(enumPlyRole eRole, const unsigned char* pBytes, std::size_t nSize)
    {
        m_aacSlot[eRole].fill(0);
        std::memcpy(m_aacSlot[eRole].data(), pBytes, nSize);
    }

    void Deliver(IPntCldReadListener& listener, bool bColor) const
    {
        const float x = GetCoord(PlyRole_X);
        const float y = GetCoord(PlyRole_Y);
        const float z = GetCoord(PlyRole_Z);
        if (bColor)
            listener.OnReadPnt(x, y, z, GetChannel(PlyRole_Red), GetChannel(PlyRole_Green),
                               GetChannel(PlyRole_Blue));
        else
            listener.OnReadPnt(x, y, z);
    }

private:
    float GetCoord(enumPlyRole eRole) const { return CoordDaBytes(m_aacSlot[eRole].data()); }

    /// KEPT: the first byte, whatever type the property has: only a "uchar" gives its value.
    unsigned char GetChannel(enumPlyRole eRole) const { return m_aacSlot[eRole].front(); }

    std::array<std::array<unsigned char, CPlyProperty::c_nMaxSize>, PlyRole_Blue + 1> m_aacSlot{};
};

/// Progress of one element: of the share that each element has of the 100 percent, whole percent.
class CPlyProgress
{
public:
    /// @param pProgress  null: no calls.
    /// @param nElement   index of the element, of `nNumElements`.
    CPlyProgress(IDlgProgress* pProgress, std::size_t nElement, std::size_t nNumElements, std::int32_t nCount)
        : m_pProgress(pProgress), m_nCount(nCount), m_nShare(static_cast<int>(100 / nNumElements)),
          m_dBase(static_cast<double>(nElement) * m_nShare)
    {
    }

    bool IsWanted() const { return m_pProgress != nullptr; }

    /// Before item `i`.
    void Report(std::int32_t i) const
    {
        if (m_pProgress != nullptr)
            m_pProgress->SetPos(static_cast<int>(m_nShare * (static_cast<double>(i) / m_nCount) + m_dBase));
    }

private:
    IDlgProgress* m_pProgress;
    std::int32_t m_nCount;
    int m_nShare;
    double m_dBase;
};

/// Reads the items of one element.
class CPlyElementReader
{
public:
    CPlyElementReader(IPntCldReadListener& listener, CPlyBuffer& buffer, const CPlyProgress& progress,
                      const CPlyElement& element, const CPlyProperty* pProps)
        : m_listener(listener), m_buffer(buffer), m_progress(progress), m_element(element), m_pProps(pProps),
          m_layout(pProps, element.m_nNumProps), m_bColor(m_layout.HasColor())
    {
    }

    /// @return false when the load has failed.
    bool Read();

private:
    bool Announce();
    std::int32_t CountWholeItems(std::int32_t nMax) const;
    void TakeWholeItems(std::int32_t i, std::int32_t nEnd);
    bool ReadItem();
    bool ReadValue(const CPlyProperty& prop);

    IPntCldReadListener& m_listener;
    CPlyBuffer& m_buffer;
    const CPlyProgress& m_progress;
    const CPlyElement& m_element;
    const CPlyProperty* m_pProps;
    const CPlyLayout m_layout;
    const bool m_bColor;
    CPlyVertex m_vertex;
};

bool CPlyElementReader::Read()
{
    if (m_element.m_bVertex && !Announce())
        return false;
    // Items that lie in the window whole are taken from it as they stand; what the end of the window cuts,
    // and what has no fixed layout, is read value by value.
    for (std::int32_t i = 0; i < m_element.m_nCount;)
    {
        const std::int32_t nNumWhole = CountWholeItems(m_element.m_nCount - i);
        TakeWholeItems(i, i + nNumWhole);
        i += nNumWhole;
        if (i == m_element.m_nCount)
            break;
        m_progress.Report(i++);
        if (!ReadItem())
            return false;
    }
    return true;
}

/// Tells the listener what will come.
bool CPlyElementReader::Announce()
{
    if (!m_layout.HasPosition())
        return false;
    m_listener.OnReadType(m_bColor ? PntCldType_PntColor : PntCldType_Pnt);
    try
    {
        m_listener.OnReadNumPnts(m_element.m_nCount);
    }
    catch (const std::bad_alloc&)
    {
        // A count that the file cannot hold is the file's fault, not a lack of memory.
        if (m_layout.CanHold(m_element.m_nCount, m_buffer.CalcNumLeft()))
            throw;
        return false;
    }
    return true;
}

/// @return how many items, at most `nMax`, can be taken as they stand.
std::int32_t CPlyElementReader::CountWholeItems(std::int32_t nMax) const
{
    if (!(m_element.m_bVertex ? m_layout.IsPlain() : m_layout.IsFixed()))
        return 0;
    if (m_layout.GetMinSize() == 0) // nothing to read
        return nMax;
    const std::size_t nNumWhole = m_buffer.GetNumAhead() / m_layout.GetMinSize();
    return static_cast<std::int32_t>(std::min(nNumWhole, static_cast<std::size_t>(nMax)));
}

/// Takes items `i` to `nEnd` - 1, which lie in the window whole.
void CPlyElementReader::TakeWholeItems(std::int32_t i, std::int32_t nEnd)
{
    const std::size_t nSize = m_layout.GetMinSize();
    const unsigned char* p = m_buffer.GetPos();
    m_buffer.Skip(nSize * static_cast<std::size_t>(nEnd - i));
    if (!m_element.m_bVertex && !m_progress.IsWanted())
        return;
    const auto Coord = [&](enumPlyRole eRole) { return CoordDaBytes(p + m_layout.GetOffset(eRole)); };
    const auto Channel = [&](enumPlyRole eRole) { return p[m_layout.GetOffset(eRole)]; };
    for (; i < nEnd; ++i, p += nSize)
    {
        m_progress.Report(i);
        if (!m_element.m_bVertex)
            continue;
        if (m_bColor)
            m_listener.OnReadPnt(Coord(PlyRole_X), Coord(PlyRole_Y), Coord(PlyRole_Z), Channel(PlyRole_Red),
                                 Channel(PlyRole_Green), Channel(PlyRole_Blue));
        else
            m_listener.OnReadPnt(Coord(PlyRole_X), Coord(PlyRole_Y), Coord(PlyRole_Z));
    }
}

/// Reads the values of one item one by one, and delivers it if it is a vertex.
bool CPlyElementReader::ReadItem()
{
    for (std::size_t k = 0; k < m_element.m_nNumProps; ++k)
        if (!ReadValue(m_pProps[k]))
            return false;
    if (m_element.m_bVertex)
        m_vertex.Deliver(m_listener, m_bColor);
    return true;
}

bool CPlyElementReader::ReadValue(const CPlyProperty& prop)
{
    if (!prop.IsReadable())
        return false;
    const std::size_t nSize = prop.GetSize();
    if (!m_buffer.MakeAvailable(prop.IsList() ? 1 : nSize))
        return false;
    if (prop.IsList())
    {
        m_buffer.Skip(1 + *m_buffer.GetPos() * nSize); // its entries are never looked at
        return true;
    }
    m_vertex.Set(prop.m_eRole, m_buffer.GetPos(), nSize);
    m_buffer.Skip(nSize);
    return true;
}

bool ReadHeader(CPlyHeader& header, const zor::String& sPath)
{
    const CFilePtr pFile(std::fopen(sPath.c_str(), "rb"));
    return pFile != nullptr && header.Read(pFile.get());
}

} // namespace

bool CPlyReader::Read(IDlgProgress* pProgress, const zor::String& sPath)
{
    CPlyHeader header;
    if (!ReadHeader(header, sPath) || header.GetElements().empty())
        return false;

    const CFilePtr pFile(std::fopen(sPath.c_str(), "rb"));
    if (pFile == nullptr)
        return false;
    std::setvbuf(pFile.get(), nullptr, _IONBF, 0); // the window is the buffer
    if (std::fseek(pFile.get(), header.GetDataOffset(), SEEK_SET) != 0)
        return false;

    CPlyBuffer buffer(pFile.get());
    const std::vector<CPlyElement>& vecElements = header.GetElements();
    for (std::size_t i = 0; i < vecElements.size(); ++i)
    {
        const CPlyElement& element = vecElements[i];
        const CPlyProgress progress(pProgress, i, vecElements.size(), element.m_nCount);
        CPlyElementReader reader(m_listener, buffer, progress, element, header.GetProperties(element));
        if (!reader.Read())
            return false;
    }
    m_listener.OnReadEnd();
    return true;
}
