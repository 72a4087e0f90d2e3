#include <zor4data/CFileFacts.h>

#include <companions/LookAtFile.h>
#include <formats/CByteReader.h>
#include <formats/FindFileKind.h>
#include <formats/OpenRegularFile.h>

#include <array>

namespace
{

enumPntCldFile FindKindOf(std::FILE* pFile)
{
    std::array<char, c_nFileKindBytes> acBytes{};
    const std::size_t nNum = std::fread(acBytes.data(), 1, acBytes.size(), pFile);
    return FindFileKind({acBytes.data(), nNum});
}

CFileLook Look(const zor::String& sPath, enumPntCldFile eType, bool bLosses)
{
    CFileLook look;
    look.bLosses = bLosses;
    look.facts.eType = eType;
    if (CFilePtr pFile = OpenRegularFile(sPath.c_str(), look.cause))
        LookAtFile(sPath, std::move(pFile), look);
    return look;
}

CFileFacts TakeFacts(CFileLook&& look)
{
    if (look.cause.IsRefusal())
    {
        look.facts.eCause = look.cause.eCause;
        look.facts.sCause = std::move(look.cause.sText);
    }
    return std::move(look.facts);
}

} // namespace

CFileFacts FindFileFacts(const zor::String& sPath)
{
    CFileLook look;
    {
        const CFilePtr pFile = OpenRegularFile(sPath.c_str(), look.cause);
        if (pFile == nullptr)
            return TakeFacts(std::move(look));
        look.facts.eType = FindKindOf(pFile.get());
    }
    if (look.facts.eType >= 0)
        return FindFileFacts(sPath, look.facts.eType);
    look.cause = {FileCause_UnknownKind, "its first bytes belong to no known type of file"};
    return TakeFacts(std::move(look));
}

CFileFacts FindFileFacts(const zor::String& sPath, enumPntCldFile eType)
{
    return TakeFacts(Look(sPath, eType, false));
}

std::vector<CFileLoss> FindFileLosses(const zor::String& sPath, enumPntCldFile eType)
{
    const CFileLook look = Look(sPath, eType, true);
    std::vector<CFileLoss> vecLosses;
    if (look.cause.IsRefusal())
        return vecLosses;
    if (!look.cause.empty())
        vecLosses.push_back({"misread", look.cause.sText});
    for (const CFinding& finding : look.vecFindings)
        vecLosses.push_back({finding.pCode, finding.sText});
    for (const CLeftOut& leftOut : look.vecLeftOut)
        vecLosses.push_back({"not-taken", leftOut.sName + " is not taken"});
    return vecLosses;
}
