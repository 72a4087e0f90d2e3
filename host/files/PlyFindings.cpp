#include <host/files/PlyFindings.h>

#include <formats/CPlyMeaning.h>

#include <fmt/format.h>

namespace zorcld
{

namespace
{

void FindWrongCoords(const CPlyMeantElement& vertices, std::vector<CFinding>& vecFindings)
{
    for (std::size_t i = 0; i < c_nNumPlyCoords; ++i)
    {
        const CPlyMeantProperty* const pProp = vertices.FindProp(c_asPlyRoleNames[i]);
        if (pProp == nullptr || pProp->bList || pProp->pType == &c_plyCoordType)
            continue;
        vecFindings.push_back(
            {"ply-coordinates",
             fmt::format("coordinates are declared '{}' but read as '{}': they come out wrong", pProp->sType,
                         c_plyCoordType.sName),
             true, ""});
        return;
    }
}

/// A type that is read with another size puts everything behind it in the wrong place.
void FindWrongSizes(const std::vector<CPlyMeantElement>& vecElems, std::vector<CFinding>& vecFindings)
{
    for (const CPlyMeantElement& elem : vecElems)
    {
        for (const CPlyMeantProperty& prop : elem.vecProps)
        {
            const CPlyType* const pRead = prop.FindTaken();
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

void FindWrongColors(const CPlyMeantElement& vertices, std::vector<CFinding>& vecFindings)
{
    std::string sPresent;
    std::string sMissing;
    const CPlyMeantProperty* pWrong = nullptr;
    for (std::size_t i = c_nNumPlyCoords; i < c_asPlyRoleNames.size(); ++i)
    {
        const CPlyMeantProperty* const pProp = vertices.FindProp(c_asPlyRoleNames[i]);
        std::string& sNames = pProp == nullptr ? sMissing : sPresent;
        sNames += (sNames.empty() ? "" : " and ") + std::string(c_asPlyRoleNames[i]);
        if (pProp != nullptr && pProp->pType != &c_plyByteType)
            pWrong = pProp;
    }
    if (!sPresent.empty() && !sMissing.empty())
        vecFindings.push_back(
            {"ply-color-missing",
             fmt::format("its vertices have {}, but not {}: colour is not taken", sPresent, sMissing), false,
             ""});
    else if (pWrong != nullptr)
        vecFindings.push_back({"ply-color-type",
                               fmt::format("colours are declared '{}' but read as '{}': they come out wrong",
                                           pWrong->sType, c_plyByteType.sName),
                               true, ""});
    if (vertices.FindProp(c_asPlyOtherColors[0]) != nullptr && sPresent.empty())
        vecFindings.push_back(
            {"ply-color-name",
             fmt::format("its colours are named {} and so on: they are not taken", c_asPlyOtherColors[0]),
             true, ""});
}

} // namespace

std::vector<CFinding> FindPlyFindings(const CPlyMeaning& meaning)
{
    std::vector<CFinding> vecFindings;
    if (meaning.GetFormat() != PlyFormat_Little)
        return vecFindings;
    if (const CPlyMeantElement* const pVertices = meaning.FindVertices())
    {
        FindWrongCoords(*pVertices, vecFindings);
        FindWrongColors(*pVertices, vecFindings);
    }
    FindWrongSizes(meaning.GetElements(), vecFindings);
    return vecFindings;
}

} // namespace zorcld
