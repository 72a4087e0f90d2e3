#include <formats/PlyFindings.h>

#include <formats/CPlyMeaning.h>
#include <formats/CountOf.h>
#include <formats/MakePrintable.h>

namespace
{

std::string FormatReading(const CPlyMeantProperty& prop, const CPlyType& read)
{
    return "declared '" + MakePrintableName(prop.sType) + "' but read as '" + std::string(read.sName) +
           "': they come out wrong";
}

void FindWrongCoords(const CPlyMeantElement& vertices, std::vector<CFinding>& vecFindings)
{
    for (std::size_t i = 0; i < c_nNumPlyCoords; ++i)
    {
        const CPlyMeantProperty* const pProp = vertices.FindProp(c_asPlyRoleNames[i]);
        if (pProp == nullptr || pProp->bList || pProp->pType == &c_plyCoordType)
            continue;
        vecFindings.push_back(
            {"ply-coordinates", "coordinates are " + FormatReading(*pProp, c_plyCoordType), true, ""});
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
            vecFindings.push_back({"ply-sized-types",
                                   "type '" + prop.sType + "' of " + MakePrintableName(prop.sName) +
                                       " is read as '" + std::string(pRead->sName) + "' of " +
                                       CountOf(static_cast<std::int64_t>(pRead->nSize), "byte") +
                                       ", but has " + std::to_string(prop.pType->nSize) +
                                       ": what follows comes out wrong",
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
             "its vertices have " + sPresent + ", but not " + sMissing + ": colour is not taken", false, ""});
    else if (pWrong != nullptr)
        vecFindings.push_back(
            {"ply-color-type", "colours are " + FormatReading(*pWrong, c_plyByteType), true, ""});
    if (vertices.FindProp(c_asPlyOtherColors[0]) != nullptr && sPresent.empty())
        vecFindings.push_back(
            {"ply-color-name",
             "its colours are named " + std::string(c_asPlyOtherColors[0]) + " and so on: they are not taken",
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
