#include <host/files/CByteReader.h>
#include <host/files/NativeLayout.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>

namespace zorcld
{

namespace
{

constexpr int c_nMaxDepth = 20; // of an inner node
constexpr std::array<unsigned char, 5> c_acMarks = {':', 1, 1, 0, 0};

/// @return 0 behind the end of the file, as the library takes it.
template <class T>
T ReadNumber(CByteReader& reader)
{
    T value{};
    return reader.Read(&value, sizeof value) ? value : T{};
}

class CTreeWalk
{
public:
    CTreeWalk(CByteReader& reader, CNativeLayout& layout) : m_reader(reader), m_layout(layout) {}

    /// @return false when the file ends, or the node lies too deep.
    bool WalkNode(int nDepth)
    {
        std::array<unsigned char, 2> acMasks{};
        if (nDepth > c_nMaxDepth || !m_reader.Read(acMasks.data(), acMasks.size()))
            return false;
        for (unsigned nBit = 1; nBit < 256; nBit <<= 1U)
        {
            if ((acMasks[0] & nBit) == 0)
                continue;
            if (!((acMasks[1] & nBit) != 0 ? TakeLeaf() : WalkNode(nDepth + 1)))
                return false;
        }
        return true;
    }

private:
    /// The runs of the leaves lie behind each other and inside the array; others are not used.
    bool TakeLeaf()
    {
        std::array<std::uint32_t, 2> anRun{};
        if (!m_reader.Read(anRun.data(), sizeof anRun))
            return false;
        const std::int64_t nFirst = anRun[1];
        if (anRun[0] == 0 || nFirst < m_nEnd || nFirst + anRun[0] > m_layout.nNumHeld)
            return true;
        m_nEnd = nFirst + anRun[0];
        m_layout.nNumInTree += anRun[0];
        return true;
    }

    CByteReader& m_reader;
    CNativeLayout& m_layout;
    std::int64_t m_nEnd = 0; // of the last run
};

} // namespace

CNativeLayout ReadNativeLayout(CByteReader& reader)
{
    CNativeLayout layout;
    reader.SetPos(0);
    layout.nFileSize = reader.GetSize();
    std::array<unsigned char, 5> acMarks{};
    static_cast<void>(reader.Read(acMarks.data(), acMarks.size()));
    layout.bMarks = acMarks == c_acMarks;
    reader.SetPos(9); // behind the version
    layout.nType = ReadNumber<std::int16_t>(reader);
    if (layout.nType != 0 && layout.nType != 1)
        return layout;
    reader.SetPos(11); // behind the type
    for (int i = 0; i < 3; ++i)
    {
        const std::int32_t nBits = ReadNumber<std::int32_t>(reader);
        float fOrigin = 0.0F;
        std::memcpy(&fOrigin, &nBits, sizeof fOrigin);
        layout.bOrigin = layout.bOrigin && std::isfinite(fOrigin);
    }
    layout.nNumPnts = ReadNumber<std::int32_t>(reader);
    const std::int64_t nSize = layout.nType == 0 ? 12 : 15;
    layout.nNumHeld = std::clamp<std::int64_t>((layout.nFileSize - reader.GetPos()) / nSize, 0,
                                               std::max<std::int64_t>(layout.nNumPnts, 0));
    if (layout.nNumHeld < layout.nNumPnts || !reader.Skip(layout.nNumHeld * nSize + 28))
        return layout;
    layout.bTreeWhole = CTreeWalk(reader, layout).WalkNode(0);
    if (layout.bTreeWhole)
        layout.nNumBehind = layout.nFileSize - reader.GetPos();
    return layout;
}

} // namespace zorcld
