#include <host/files/CPlySource.h>

#include <formats/CByteReader.h>
#include <formats/CPlyMeaning.h>
#include <formats/LittleEndian.h>
#include <formats/ParseDouble.h>
#include <host/output/CFailure.h>

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace zorcld
{

namespace
{

constexpr std::size_t c_nNumRoles = c_asPlyRoleNames.size();
constexpr std::size_t c_nOther = c_nNumRoles; // of a value that is not wanted

template <class T>
double Load(const unsigned char* pBytes)
{
    return static_cast<double>(LittleEndian::Get<T>(pBytes));
}

/// @param pBytes  in this machine's order, which is the little-endian one.
double LoadValue(const CPlyType& type, const unsigned char* pBytes)
{
    const bool bSigned = type.eNumber == PlyNumber_Signed;
    if (type.nSize == 1)
        return bSigned ? Load<std::int8_t>(pBytes) : Load<std::uint8_t>(pBytes);
    if (type.nSize == 2)
        return bSigned ? Load<std::int16_t>(pBytes) : Load<std::uint16_t>(pBytes);
    if (type.eNumber == PlyNumber_Floating)
        return type.nSize == 4 ? Load<float>(pBytes) : Load<double>(pBytes);
    if (type.nSize == 4)
        return bSigned ? Load<std::int32_t>(pBytes) : Load<std::uint32_t>(pBytes);
    return bSigned ? Load<std::int64_t>(pBytes) : Load<std::uint64_t>(pBytes);
}

/// Floating colours are shares of 1, whole ones are taken as they are.
std::uint16_t ToColor(double d, const CPlyType& type)
{
    const double dMax = type.eNumber == PlyNumber_Floating ? 1.0 : 65535.0;
    if (!(d > 0.0)) // true for not-a-number
        return 0;
    return static_cast<std::uint16_t>(
        std::lround(std::min(d, dMax) * (type.eNumber == PlyNumber_Floating ? 255.0 : 1.0)));
}

/// Of an item: those of the roles, then one for all that is not wanted.
using TValues = std::array<double, c_nNumRoles + 1>;

class CPlySource final : public IPntSource
{
public:
    CPlySource(const std::string& sPath, const CPlyMeaning& meaning, CByteReader& reader)
        : m_sPath(sPath), m_meaning(meaning), m_reader(reader)
    {
        m_pVertices = m_meaning.FindVertices();
        if (m_pVertices == nullptr || m_pVertices->nCount <= 0)
            throw CFailure(sPath, "has no vertices");
        TakeRoles();
        CheckTypes();
        CheckCount(reader.GetSize() - m_meaning.GetDataOffset());
    }

    bool HasColor() const override { return m_bColor; }

    std::int64_t GetNumAnnounced() const override { return m_pVertices->nCount; }

    void ForEach(const TOnPnt& onPnt) override
    {
        m_reader.SetPos(m_meaning.GetDataOffset());
        for (const CPlyMeantElement& elem : m_meaning.GetElements())
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
            const auto found = std::find_if(vecProps.begin(), vecProps.end(),
                                            [&](const CPlyMeantProperty& prop)
                                            { return prop.sName == sName && !prop.bList; });
            return static_cast<std::size_t>(found - vecProps.begin());
        };
        std::array<std::size_t, c_nNumRoles> anProp{};
        for (std::size_t i = 0; i < anProp.size(); ++i)
        {
            anProp[i] = find(c_asPlyRoleNames[i]);
            if (i >= c_nNumPlyCoords && anProp[i] == vecProps.size())
                anProp[i] = find(c_asPlyOtherColors[i - c_nNumPlyCoords]);
            if (i < c_nNumPlyCoords && anProp[i] == vecProps.size())
                sMissing += (sMissing.empty() ? "" : ", ") + std::string(c_asPlyRoleNames[i]);
        }
        if (!sMissing.empty())
            throw CFailure(m_sPath, fmt::format("its vertices have no {}", sMissing));
        m_bColor = std::count(anProp.begin() + c_nNumPlyCoords, anProp.end(), vecProps.size()) == 0;
        m_vecRoles.assign(vecProps.size(), c_nOther);
        for (std::size_t i = 0; i < (m_bColor ? c_nNumRoles : c_nNumPlyCoords); ++i)
            m_vecRoles[anProp[i]] = i;
    }

    /// Up to the vertices everything has to be read.
    void CheckTypes() const
    {
        for (const CPlyMeantElement& elem : m_meaning.GetElements())
        {
            for (const CPlyMeantProperty& prop : elem.vecProps)
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
            m_meaning.GetFormat() == PlyFormat_Ascii ? 6 : std::max<std::int64_t>(nItem, 3);
        if (m_pVertices->nCount > (nBytes + 1) / nLeast)
            throw CFailure(m_sPath,
                           fmt::format("announces {} vertices, but its data have room for {} at most",
                                       m_pVertices->nCount, (nBytes + 1) / nLeast));
    }

    bool ReadValue(CByteReader& reader, const CPlyType& type, double& d) const
    {
        if (m_meaning.GetFormat() == PlyFormat_Ascii)
        {
            std::string_view sWord;
            bool bWhole = false;
            if (reader.ReadWord(sWord))
                d = ParseDouble(sWord, bWhole);
            return bWhole;
        }
        std::array<unsigned char, c_nMaxPlySize> acBytes{};
        if (!reader.Read(acBytes.data(), type.nSize))
            return false;
        if (m_meaning.GetFormat() == PlyFormat_Big)
            std::reverse(acBytes.begin(), acBytes.begin() + static_cast<std::ptrdiff_t>(type.nSize));
        d = LoadValue(type, acBytes.data());
        return true;
    }

    bool SkipList(CByteReader& reader, const CPlyMeantProperty& prop) const
    {
        double dCount = 0.0;
        if (!ReadValue(reader, *prop.pCount, dCount) || !(dCount >= 0.0 && dCount < 4294967296.0))
            return false;
        const auto nCount = static_cast<std::int64_t>(dCount);
        if (m_meaning.GetFormat() != PlyFormat_Ascii)
            return reader.Skip(nCount * static_cast<std::int64_t>(prop.pType->nSize));
        double d = 0.0;
        for (std::int64_t i = 0; i < nCount; ++i)
            if (!ReadValue(reader, *prop.pType, d))
                return false;
        return true;
    }

    bool ReadItem(CByteReader& reader, const CPlyMeantElement& elem, TValues& adValues) const
    {
        for (std::size_t i = 0; i < elem.vecProps.size(); ++i)
        {
            const CPlyMeantProperty& prop = elem.vecProps[i];
            const std::size_t nRole = &elem == m_pVertices ? m_vecRoles[i] : c_nOther;
            if (!(prop.bList ? SkipList(reader, prop) : ReadValue(reader, *prop.pType, adValues[nRole])))
                return false;
            if (nRole >= c_nNumPlyCoords && nRole < c_nOther)
                adValues[nRole] = ToColor(adValues[nRole], *prop.pType);
        }
        return true;
    }

    void ReadElement(CByteReader& reader, const CPlyMeantElement& elem, const TOnPnt& onPnt) const
    {
        const auto channel = [](double d) { return static_cast<std::uint16_t>(d); };
        TValues adValues{};
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
    const CPlyMeaning& m_meaning;
    CByteReader& m_reader;
    const CPlyMeantElement* m_pVertices = nullptr;
    std::vector<std::size_t> m_vecRoles; // of each property of the vertices: its place in TValues
    bool m_bColor = false;
};

} // namespace

std::unique_ptr<IPntSource> MakePlySource(const std::string& sPath, const CPlyMeaning& meaning,
                                          CByteReader& reader)
{
    if (!meaning.GetCause().empty())
        throw CFailure(sPath, meaning.GetCause());
    return std::make_unique<CPlySource>(sPath, meaning, reader);
}

} // namespace zorcld
