#include <formats/PlyFacts.h>

#include <formats/CPlyHeader.h>

#include <algorithm>

namespace
{

bool HasColors(const CPlyHeader& header, const CPlyElement& vertices)
{
    const CPlyProperty* const pProps = header.GetProperties(vertices);
    const auto hasRole = [&](enumPlyRole eRole)
    {
        return std::any_of(pProps, pProps + vertices.nNumProps,
                           [&](const CPlyProperty& prop) { return prop.eRole == eRole; });
    };
    return hasRole(PlyRole_Red) && hasRole(PlyRole_Green) && hasRole(PlyRole_Blue);
}

} // namespace

CFileFacts FindPlyFacts(const CPlyHeader& header)
{
    CFileFacts facts;
    facts.eType = PntCldFile_Ply;
    const CPlyElement* const pVertices = header.FindVertices();
    if (pVertices == nullptr || !header.HasCoords(*pVertices)) // it holds no points
        return facts;
    facts.nAnnounced = pVertices->nAnnounced;
    facts.bColor = HasColors(header, *pVertices);
    return facts;
}
