#include <formats/ParseDouble.h>
#include <host/files/CByteReader.h>
#include <host/files/IPntSource.h>
#include <host/files/PlyLayout.h>
#include <host/output/CFailure.h>

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>

namespace zorcld
{

namespace
{

/// In the order of the values of a vertex that are wanted.
constexpr std::array<const char*, 6> c_names = {"x", "y", "z", "red", "green", "blue"};
constexpr std::array<const char*, 3> c_otherColors = {"diffuse_red", "diffuse_green", "diffuse_blue"};
constexpr int c_nOther = 6;

template <class T>
double Load(const unsigned char* pBytes)
{
    T value{};
    std::memcpy(&value, pBytes, sizeof value);
    return static_cast<double>(value);
}

/// @param pBytes  in this machine's order, which is the little-endian one.
double LoadValue(const CPlyType& type, const unsigned char* pBytes)
{
    const bool bSigned = type.cClass == 'i';
    if (type.nSize == 1)
        return bSigned ? Load<std::int8_t>(pBytes) : Load<std::uint8_t>(pBytes);
    if (type.nSize == 2)
        return bSigned ? Load<std::int16_t>(pBytes) : Load<std::uint16_t>(pBytes);
    if (type.cClass == 'f')
        return type.nSize == 4 ? Load<float>(pBytes) : Load<double>(pBytes);
    if (type.nSize == 4)
        return bSigned ? Load<std::int32_t>(pBytes) : Load<std::uint32_t>(pBytes);
    return bSigned ? Load<std::int64_t>(pBytes) : Load<std::uint64_t>(pBytes);
}

/// Floating colours are shares of 1, whole ones are taken as they are.
std::uint16_t ToColor(double d, const CPlyType& type)
{
    const double dMax = type.cClass == 'f' ? 1.0 : 65535.0;
    if (!(d > 0.0)) // true for not-a-number
        return 0;
    return static_cast<std::uint16_t>(std::lround(std::min(d, dMax) * (type.cClass == 'f' ? 255.0 : 1.0)));
}

class CPlySource final : public IPntSource
{
public:
    CPlySource(const std::string& sPath, const CPlyLayout& layout, CByteReader& reader)
        : m_sPath(sPath), m_layout(layout), m_reader(reader)
    {
        m_pVertices = m_layout.FindVertices();
        if (m_pVertices == nullptr || m_pVertices->nCount <= 0)
            throw CFailure(sPath, "has no vertices");
        TakeRoles();
        CheckTypes();
        CheckCount(reader.GetSize() - m_layout.nPosData);
    }

    bool HasColor() const override { return m_bColor; }

    std::int64_t GetNumAnnounced() const override { return m_pVertices->nCount; }

    void ForEach(const TOnPnt& onPnt) override
    {
        m_reader.SetPos(m_layout.nPosData);
        for (const CPlyElem& elem : m_layout.vecElems)
        {
            ReadElement(m_reader, elem, onPnt);
            if (&elem == m_pVertices)
                return;
        }
    }

private:
    void TakeRoles()
    {
        std::string sMissing;
        const auto& vecProps = m_pVertices->vecProps;
        const auto find = [&](std::string_view sName)
        {
            const auto found =
                std::find_if(vecProps.begin(), vecProps.end(),
                             [&](const CPlyProp& prop) { return prop.sName == sName && !prop.bList; });
            return static_cast<std::size_t>(found - vecProps.begin());
        };
        std::array<std::size_t, 6> anProp{};
        for (std::size_t i = 0; i < anProp.size(); ++i)
        {
            anProp[i] = find(c_names[i]);
            if (i >= 3 && anProp[i] == vecProps.size())
                anProp[i] = find(c_otherColors[i - 3]);
            if (i < 3 && anProp[i] == vecProps.size())
                sMissing += (sMissing.empty() ? "" : ", ") + std::string(c_names[i]);
        }
        if (!sMissing.empty())
            throw CFailure(m_sPath, fmt::format("its vertices have no {}", sMissing));
        m_bColor = std::count(anProp.begin() + 3, anProp.end(), vecProps.size()) == 0;
        m_vecRoles.assign(vecProps.size(), c_nOther);
        for (std::size_t i = 0; i < (m_bColor ? 6U : 3U); ++i)
            m_vecRoles[anProp[i]] = static_cast<int>(i);
    }

    /// Up to the vertices everything has to be read.
    void CheckTypes() const
    {
        for (const CPlyElem& elem : m_layout.vecElems)
        {
            for (const CPlyProp& prop : elem.vecProps)
                if (prop.pType == nullptr && elem.nCount > 0)
                    throw CFailure(m_sPath, fmt::format("property type not known: '{}' of {} in element {}",
                                                        prop.sType, prop.sName, elem.sName));
            if (&elem == m_pVertices)
                return;
        }
    }

    /// A count that the data cannot hold is told before they are read.
    void CheckCount(std::int64_t nBytes) const
    {
        const std::int64_t nItem = m_pVertices->CalcItemSize();
        const std::int64_t nLeast =
            m_layout.eFormat == PlyFormat_Ascii ? 6 : std::max<std::int64_t>(nItem, 3);
        if (m_pVertices->nCount > (nBytes + 1) / nLeast)
            throw CFailure(m_sPath,
                           fmt::format("announces {} vertices, but its data have room for {} at most",
                                       m_pVertices->nCount, (nBytes + 1) / nLeast));
    }

    bool ReadValue(CByteReader& reader, const CPlyType& type, double& d) const
    {
        if (m_layout.eFormat == PlyFormat_Ascii)
        {
            std::string_view sWord;
            bool bWhole = false;
            if (reader.ReadWord(sWord))
                d = ParseDouble(sWord, bWhole);
            return bWhole;
        }
        std::array<unsigned char, 8> acBytes{};
        if (!reader.Read(acBytes.data(), type.nSize))
            return false;
        if (m_layout.eFormat == PlyFormat_Big)
            std::reverse(acBytes.begin(), acBytes.begin() + static_cast<std::ptrdiff_t>(type.nSize));
        d = LoadValue(type, acBytes.data());
        return true;
    }

    bool SkipList(CByteReader& reader, const CPlyProp& prop) const
    {
        double dCount = 0.0;
        if (!ReadValue(reader, *prop.pCount, dCount) || !(dCount >= 0.0 && dCount < 4294967296.0))
            return false;
        const auto nCount = static_cast<std::int64_t>(dCount);
        if (m_layout.eFormat != PlyFormat_Ascii)
            return reader.Skip(nCount * static_cast<std::int64_t>(prop.pType->nSize));
        double d = 0.0;
        for (std::int64_t i = 0; i < nCount; ++i)
            if (!ReadValue(reader, *prop.pType, d))
                return false;
        return true;
    }

    bool ReadItem(CByteReader& reader, const CPlyElem& elem, std::array<double, 7>& adValues) const
    {
        for (std::size_t i = 0; i < elem.vecProps.size(); ++i)
        {
            const CPlyProp& prop = elem.vecProps[i];
            const int nRole = &elem == m_pVertices ? m_vecRoles[i] : c_nOther;
            if (!(prop.bList ? SkipList(reader, prop)
                             : ReadValue(reader, *prop.pType, adValues[static_cast<std::size_t>(nRole)])))
                return false;
            if (nRole >= 3 && nRole < c_nOther)
                adValues[static_cast<std::size_t>(nRole)] =
                    ToColor(adValues[static_cast<std::size_t>(nRole)], *prop.pType);
        }
        return true;
    }

    void ReadElement(CByteReader& reader, const CPlyElem& elem, const TOnPnt& onPnt) const
    {
        const auto channel = [](double d) { return static_cast<std::uint16_t>(d); };
        std::array<double, 7> adValues{};
        for (std::int64_t i = 0; i < elem.nCount && !elem.vecProps.empty(); ++i)
        {
            if (!ReadItem(reader, elem, adValues))
                throw CFailure(m_sPath, fmt::format("truncated or damaged after {} of {} {}", i, elem.nCount,
                                                    &elem == m_pVertices ? "vertices"
                                                                         : "items of element " + elem.sName));
            if (&elem == m_pVertices)
                onPnt({adValues[0], adValues[1], adValues[2], channel(adValues[3]), channel(adValues[4]),
                       channel(adValues[5])});
        }
    }

    std::string m_sPath;
    const CPlyLayout& m_layout;
    CByteReader& m_reader;
    const CPlyElem* m_pVertices = nullptr;
    std::vector<int> m_vecRoles; // of each property of the vertices: place in c_names, or c_nOther
    bool m_bColor = false;
};

} // namespace

std::unique_ptr<IPntSource> MakePlySource(const std::string& sPath, const CPlyLayout& layout,
                                          const std::string& sCause, CByteReader& reader)
{
    if (!sCause.empty())
        throw CFailure(sPath, sCause);
    return std::make_unique<CPlySource>(sPath, layout, reader);
}

} // namespace zorcld
