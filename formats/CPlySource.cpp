#include <formats/CPlySource.h>

#include <formats/CByteReader.h>
#include <formats/CPlyMeaning.h>
#include <formats/MakePrintable.h>
#include <formats/ParseDouble.h>
#include <formats/PlyValues.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace
{

constexpr std::size_t c_nNumRoles = c_asPlyRoleNames.size();
constexpr std::size_t c_nOther = c_nNumRoles; // of a value that is not wanted

/// Of an item: those of the roles, then one for all that is not wanted.
using TValues = std::array<double, c_nNumRoles + 1>;

class CPlySource final : public IPntSource
{
public:
    CPlySource(const CPlyMeaning& meaning, CByteReader& reader)
        : m_meaning(meaning), m_reader(reader), m_pVertices(meaning.FindVertices())
    {
    }

    /// To be called before all others. @return why the vertices cannot be read; empty: they can.
    std::string Prepare()
    {
        if (m_pVertices == nullptr || m_pVertices->nCount <= 0)
            return "has no vertices";
        std::string sCause = TakeRoles();
        if (sCause.empty())
            sCause = FindWrongType();
        return sCause.empty() ? FindWrongCount() : sCause;
    }

    bool HasColor() const override { return m_bColor; }

    std::int64_t GetNumAnnounced() const override { return m_pVertices->nCount; }

    std::string ForEach(const TOnPnt& onPnt) override
    {
        m_reader.SetPos(m_meaning.GetDataOffset());
        std::string sCause;
        const CPlyMeantElement* pElem = m_meaning.GetElements().data();
        for (; sCause.empty() && pElem <= m_pVertices; ++pElem)
            sCause = ReadElement(*pElem, onPnt);
        return sCause;
    }

    std::string ForEachPlace(const TOnPlaces& onPlaces) override
    {
        const std::int64_t nItemSize = m_pVertices->CalcItemSize();
        if (m_meaning.GetFormat() != PlyFormat_Little || nItemSize <= 0)
            return IPntSource::ForEachPlace(onPlaces);
        m_reader.SetPos(m_meaning.GetDataOffset());
        std::string sCause;
        for (const CPlyMeantElement* pElem = m_meaning.GetElements().data();
             sCause.empty() && pElem < m_pVertices; ++pElem)
            sCause = ReadElement(*pElem, {});
        return sCause.empty() ? ReadVertices(static_cast<std::size_t>(nItemSize), onPlaces) : sCause;
    }

    std::vector<CLeftOut> GetLeftOut() const override
    {
        std::vector<CLeftOut> vecLeftOut;
        for (std::size_t i = 0; i < m_vecRoles.size(); ++i)
            if (m_vecRoles[i] == c_nOther)
                vecLeftOut.push_back(
                    {MakePrintableName(m_pVertices->vecProps[i].sName), m_pVertices->nCount});
        for (const CPlyMeantElement& elem : m_meaning.GetElements())
            if (&elem != m_pVertices && elem.nCount > 0)
                vecLeftOut.push_back({"element " + MakePrintableName(elem.sName), elem.nCount, "item"});
        return vecLeftOut;
    }

private:
    std::string TakeRoles()
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
            return "its vertices have no " + sMissing;
        m_bColor = std::count(anProp.begin() + c_nNumPlyCoords, anProp.end(), vecProps.size()) == 0;
        m_vecRoles.assign(vecProps.size(), c_nOther);
        for (std::size_t i = 0; i < (m_bColor ? c_nNumRoles : c_nNumPlyCoords); ++i)
            m_vecRoles[anProp[i]] = i;
        return {};
    }

    /// Up to the vertices everything has to be read.
    std::string FindWrongType() const
    {
        for (const CPlyMeantElement* pElem = m_meaning.GetElements().data(); pElem <= m_pVertices; ++pElem)
            for (const CPlyMeantProperty& prop : pElem->vecProps)
                if (prop.pType == nullptr && pElem->nCount > 0)
                    return "property type not known: '" + MakePrintableName(prop.sType) + "' of " +
                           MakePrintableName(prop.sName) + " in element " + MakePrintableName(pElem->sName);
        return {};
    }

    /// A count that the data cannot hold is told before they are read.
    std::string FindWrongCount() const
    {
        const std::int64_t nBytes = m_reader.GetSize() - m_meaning.GetDataOffset();
        const std::int64_t nItem = m_pVertices->CalcItemSize();
        const std::int64_t nLeast =
            m_meaning.GetFormat() == PlyFormat_Ascii ? 6 : std::max<std::int64_t>(nItem, 3);
        const std::int64_t nMost = (nBytes + 1) / nLeast;
        if (m_pVertices->nCount <= nMost)
            return {};
        return "announces " + FormatPlyItems(m_pVertices->nCount, m_pVertices->sName, true) +
               ", but its data have room for " + std::to_string(nMost) + " at most";
    }

    bool ReadValue(const CPlyType& type, double& d)
    {
        if (m_meaning.GetFormat() == PlyFormat_Ascii)
        {
            std::string_view sWord;
            bool bWhole = false;
            if (m_reader.ReadWord(sWord))
                d = ParseDouble(sWord, bWhole);
            return bWhole;
        }
        std::array<unsigned char, c_nMaxPlySize> acBytes{};
        if (!m_reader.Read(acBytes.data(), type.nSize))
            return false;
        if (m_meaning.GetFormat() == PlyFormat_Big)
            std::reverse(acBytes.begin(), acBytes.begin() + static_cast<std::ptrdiff_t>(type.nSize));
        d = LoadPlyValue(type, acBytes.data());
        return true;
    }

    bool SkipList(const CPlyMeantProperty& prop)
    {
        double dCount = 0.0;
        if (!ReadValue(*prop.pCount, dCount) || !(dCount >= 0.0 && dCount < 4294967296.0))
            return false;
        const auto nCount = static_cast<std::int64_t>(dCount);
        if (m_meaning.GetFormat() != PlyFormat_Ascii)
            return m_reader.Skip(nCount * static_cast<std::int64_t>(prop.pType->nSize));
        double d = 0.0;
        for (std::int64_t i = 0; i < nCount; ++i)
            if (!ReadValue(*prop.pType, d))
                return false;
        return true;
    }

    bool ReadItem(const CPlyMeantElement& elem, TValues& adValues)
    {
        for (std::size_t i = 0; i < elem.vecProps.size(); ++i)
        {
            const CPlyMeantProperty& prop = elem.vecProps[i];
            const std::size_t nRole = &elem == m_pVertices ? m_vecRoles[i] : c_nOther;
            if (!(prop.bList ? SkipList(prop) : ReadValue(*prop.pType, adValues[nRole])))
                return false;
            if (nRole >= c_nNumPlyCoords && nRole < c_nOther)
                adValues[nRole] = PlyColorFromValue(adValues[nRole], *prop.pType);
        }
        return true;
    }

    std::string TellCutOff(const CPlyMeantElement& elem, std::int64_t nNumRead) const
    {
        return "truncated or damaged after " + std::to_string(nNumRead) + " of " +
               FormatPlyItems(elem.nCount, elem.sName, &elem == m_pVertices);
    }

    std::vector<CPlyColumn> FindColumns() const
    {
        std::vector<CPlyColumn> vecColumns;
        std::size_t nPos = 0;
        for (std::size_t i = 0; i < m_vecRoles.size(); ++i)
        {
            const CPlyType& type = *m_pVertices->vecProps[i].pType;
            if (m_vecRoles[i] != c_nOther)
                vecColumns.push_back({&type, nPos, m_vecRoles[i]});
            nPos += type.nSize;
        }
        return vecColumns;
    }

    /// Vertices of one size, property by property.
    std::string ReadVertices(std::size_t nItemSize, const TOnPlaces& onPlaces)
    {
        const std::vector<CPlyColumn> vecColumns = FindColumns();
        const std::size_t nAtOnce = CalcNumAtOnce(nItemSize);
        std::vector<unsigned char> vecBytes(nAtOnce * nItemSize);
        std::vector<CSourcePnt> vecPnts(nAtOnce);
        for (std::int64_t nRead = 0; nRead < m_pVertices->nCount;)
        {
            const std::size_t nWanted =
                std::min(static_cast<std::size_t>(m_pVertices->nCount - nRead), nAtOnce);
            const std::size_t nNum = m_reader.ReadUpTo(vecBytes.data(), nWanted * nItemSize) / nItemSize;
            for (const CPlyColumn& column : vecColumns)
                TakePlyColumn(column, vecBytes.data(), nItemSize, vecPnts.data(), nNum);
            if (nNum > 0)
                onPlaces(vecPnts.data(), nNum);
            nRead += static_cast<std::int64_t>(nNum);
            if (nNum < nWanted)
                return TellCutOff(*m_pVertices, nRead);
        }
        return {};
    }

    std::string ReadElement(const CPlyMeantElement& elem, const TOnPnt& onPnt)
    {
        const auto channel = [](double d) { return static_cast<std::uint16_t>(d); };
        TValues adValues{};
        for (std::int64_t i = 0; i < elem.nCount && !elem.vecProps.empty(); ++i)
        {
            if (!ReadItem(elem, adValues))
                return TellCutOff(elem, i);
            if (&elem == m_pVertices)
                onPnt({adValues[0], adValues[1], adValues[2], channel(adValues[3]), channel(adValues[4]),
                       channel(adValues[5])});
        }
        return {};
    }

    const CPlyMeaning& m_meaning;
    CByteReader& m_reader;
    const CPlyMeantElement* m_pVertices;
    std::vector<std::size_t> m_vecRoles; // of each property of the vertices: its place in TValues
    bool m_bColor = false;
};

} // namespace

CMadeSource MakePlySource(const CPlyMeaning& meaning, CByteReader& reader)
{
    if (!meaning.GetCause().empty())
        return {nullptr, meaning.GetCause()};
    auto pSource = std::make_unique<CPlySource>(meaning, reader);
    std::string sCause = pSource->Prepare();
    if (!sCause.empty())
        return {nullptr, std::move(sCause)};
    return {std::move(pSource), {}};
}
