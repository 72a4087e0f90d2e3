#include <formats/MakePlyHead.h>

#include <formats/PlyTypes.h>

std::string MakePlyHead(std::int64_t nNumPnts, bool bColor, const std::vector<std::string>& vecComments)
{
    std::string sHead = std::string(c_sPlyFirstLine) + std::string(c_sPlyFormatLine);
    for (const std::string& sComment : vecComments)
        sHead += "comment " + sComment + "\n";
    sHead += "element vertex " + std::to_string(nNumPnts) + "\n";
    for (std::size_t i = 0; i < (bColor ? c_asPlyRoleNames.size() : c_nNumPlyCoords); ++i)
    {
        const CPlyType& type = i < c_nNumPlyCoords ? c_plyCoordType : c_plyByteType;
        sHead += "property " + std::string(type.sName) + " " + std::string(c_asPlyRoleNames[i]) + "\n";
    }
    return sHead + "end_header\n";
}
