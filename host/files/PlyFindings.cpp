#include <host/files/PlyFindings.h>
#include <host/files/PlyLayout.h>

#include <fmt/format.h>

#include <algorithm>
#include <array>

namespace zorcld
{

namespace
{

struct CPrefix
{
    std::string_view sName;
    std::size_t nSize;
};

/// In the order in which the library tries them.
constexpr std::array<CPrefix, 8> c_prefixes = {{{"char", 1},
                                                {"uchar", 1},
                                                {"short", 2},
                                                {"ushort", 2},
                                                {"int", 4},
                                                {"uint", 4},
                                                {"float", 4},
                                                {"double", 8}}};

/// As what the library reads a type; null: not at all.
const CPrefix* FindRead(const std::string& sType)
{
    const auto found = std::find_if(c_prefixes.begin(), c_prefixes.end(),
                                    [&](const CPrefix& prefix) { return sType.rfind(prefix.sName, 0) == 0; });
    return found == c_prefixes.end() ? nullptr : &*found;
}

void FindWrongCoords(const CPlyElem& vertices, std::vector<CFinding>& vecFindings)
{
    for (const char* pName : {"x", "y", "z"})
    {
        const CPlyProp* const pProp = vertices.FindProp(pName);
        if (pProp == nullptr || pProp->bList || pProp->sType == "float" || pProp->sType == "float32")
            continue;
        vecFindings.push_back(
            {"ply-coordinates",
             fmt::format("coordinates are declared '{}' but read as 'float': they come out wrong",
                         pProp->sType),
             true, ""});
        return;
    }
}

/// A type that is read with another size puts everything behind it in the wrong place.
void FindWrongSizes(const std::vector<CPlyElem>& vecElems, std::vector<CFinding>& vecFindings)
{
    for (const CPlyElem& elem : vecElems)
    {
        for (const CPlyProp& prop : elem.vecProps)
        {
            const CPrefix* const pRead = FindRead(prop.sType);
            if (pRead == nullptr || prop.pType == nullptr || prop.pType->nSize == pRead->nSize)
                continue;
            vecFindings.push_back(
                {"ply-sized-types",
                 fmt::format("type '{}' of {} is read as '{}' of {} bytes, but has {}: what follows comes "
                             "out wrong",
                             prop.sType, prop.sName, pRead->sName, pRead->nSize, prop.pType->nSize),
                 true, ""});
            return;
        }
    }
}

void FindWrongColors(const CPlyElem& vertices, std::vector<CFinding>& vecFindings)
{
    std::string sPresent;
    std::string sMissing;
    const CPlyProp* pWrong = nullptr;
    for (const char* pName : {"red", "green", "blue"})
    {
        const CPlyProp* const pProp = vertices.FindProp(pName);
        std::string& sNames = pProp == nullptr ? sMissing : sPresent;
        sNames += (sNames.empty() ? "" : " and ") + std::string(pName);
        if (pProp != nullptr && pProp->sType != "uchar" && pProp->sType != "uint8")
            pWrong = pProp;
    }
    if (!sPresent.empty() && !sMissing.empty())
        vecFindings.push_back(
            {"ply-color-missing",
             fmt::format("its vertices have {}, but not {}: colour is not taken", sPresent, sMissing), false,
             ""});
    else if (pWrong != nullptr)
        vecFindings.push_back(
            {"ply-color-type",
             fmt::format("colours are declared '{}' but read as 'uchar': they come out wrong", pWrong->sType),
             true, ""});
    if (vertices.FindProp("diffuse_red") != nullptr && sPresent.empty())
        vecFindings.push_back(
            {"ply-color-name", "its colours are named diffuse_red and so on: they are not taken", true, ""});
}

} // namespace

std::vector<CFinding> FindPlyFindings(const CPlyLayout& layout)
{
    std::vector<CFinding> vecFindings;
    if (layout.eFormat != PlyFormat_Little)
        return vecFindings;
    if (const CPlyElem* const pVertices = layout.FindVertices())
    {
        FindWrongCoords(*pVertices, vecFindings);
        FindWrongColors(*pVertices, vecFindings);
    }
    FindWrongSizes(layout.vecElems, vecFindings);
    return vecFindings;
}

} // namespace zorcld
