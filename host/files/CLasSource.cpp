#include <formats/LasHeader.h>
#include <host/files/CByteReader.h>
#include <host/files/IPntSource.h>
#include <host/output/CFailure.h>

#include <algorithm>
#include <cstring>

namespace zorcld
{

namespace
{

/// Where the colour stands in a point, by format; 0: nowhere.
constexpr std::array<std::size_t, 11> c_anPosColor = {0, 0, 20, 28, 0, 28, 0, 30, 30, 0, 30};

template <class T>
T Load(const std::vector<char>& vecBytes, std::size_t nPos)
{
    T value{};
    std::memcpy(&value, vecBytes.data() + nPos, sizeof value);
    return value;
}

/// Points of a LAS file that is not compressed, with the colours of every format that has them.
class CLasSource final : public IPntSource
{
public:
    CLasSource(const CLasHeader& header, CByteReader& reader) : m_header(header), m_reader(reader) {}

    bool HasColor() const override { return m_header.HasColor(); }

    std::int64_t GetNumAnnounced() const override { return m_header.nNumPnts; }

    void ForEach(const TOnPnt& onPnt) override
    {
        m_reader.SetPos(m_header.nPosPnts);
        const std::size_t nPosColor = c_anPosColor.at(static_cast<std::size_t>(m_header.nFormat));
        std::vector<char> vecBytes(static_cast<std::size_t>(m_header.nPntSize));
        const std::int64_t nNumPnts = std::min(m_header.nNumPnts, m_header.CalcNumHeld());
        for (std::int64_t i = 0; i < nNumPnts && m_reader.Read(vecBytes.data(), vecBytes.size()); ++i)
        {
            CSourcePnt pnt;
            const auto coord = [&](std::size_t k)
            {
                return static_cast<double>(Load<std::int32_t>(vecBytes, 4 * k)) * m_header.adScale[k] +
                       m_header.adOffset[k];
            };
            pnt.x = coord(0);
            pnt.y = coord(1);
            pnt.z = coord(2);
            if (nPosColor != 0)
            {
                pnt.r = Load<std::uint16_t>(vecBytes, nPosColor);
                pnt.g = Load<std::uint16_t>(vecBytes, nPosColor + 2);
                pnt.b = Load<std::uint16_t>(vecBytes, nPosColor + 4);
            }
            onPnt(pnt);
        }
    }

private:
    const CLasHeader& m_header;
    CByteReader& m_reader;
};

} // namespace

std::unique_ptr<IPntSource> MakeLasSource(const std::string& sPath, const CLasHeader& header,
                                          const std::string& sCause, CByteReader& reader)
{
    if (!sCause.empty())
        throw CFailure(sPath, sCause);
    return std::make_unique<CLasSource>(header, reader);
}

} // namespace zorcld
