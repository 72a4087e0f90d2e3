#include <host/files/OpenInputFile.h>

#include <formats/FindFileKind.h>
#include <formats/OpenRegularFile.h>
#include <host/files/CFileKind.h>
#include <host/files/CGridFile.h>
#include <host/files/CInputOptions.h>
#include <host/files/CLasFile.h>
#include <host/files/CNativeFile.h>
#include <host/files/CPlyFile.h>
#include <host/output/CFailure.h>
#include <host/output/GetExtension.h>

#include <algorithm>

namespace zorcld
{

namespace
{

std::string ReadFirstBytes(CByteReader& reader)
{
    std::string sBytes;
    for (int c = 0; sBytes.size() < c_nFileKindBytes && (c = reader.Get()) >= 0;)
        sBytes += static_cast<char>(c);
    reader.SetPos(0);
    return sBytes;
}

const CFileKind& ChooseFileKind(const CInputOptions& input, const std::string& sFirstBytes)
{
    const enumPntCldFile eContent = FindFileKind(sFirstBytes);
    std::string sExtension = GetExtension(input.sPath);
    sExtension.erase(0, 1); // the dot
    for (const CFileKind* pKind : GetFileKinds())
        if (!input.sType.empty() ? input.sType == pKind->pName : pKind->eFile == eContent)
            return *pKind;
    for (const CFileKind* pKind : GetFileKinds())
        if (std::count(pKind->vecExtensions.begin(), pKind->vecExtensions.end(), sExtension) != 0)
            return *pKind;
    throw CFailure(input.sPath,
                   "its first bytes and its extension belong to no known type of file (--type tells it)");
}

} // namespace

const std::vector<const CFileKind*>& GetFileKinds()
{
    static const std::vector<const CFileKind*> c_kinds = {&CNativeFile::c_kind, &CPlyFile::c_kind,
                                                          &CLasFile::c_kind, &CGridFile::c_kind};
    return c_kinds;
}

std::unique_ptr<CInputFile> OpenInputFile(const CInputOptions& input)
{
    CFileCause cause;
    CFilePtr pStream = OpenRegularFile(input.sPath.c_str(), cause);
    if (pStream == nullptr)
        throw CFailure(input.sPath, cause);
    CByteReader reader(std::move(pStream));
    const std::string sFirstBytes = ReadFirstBytes(reader);
    std::unique_ptr<CInputFile> pFile =
        ChooseFileKind(input, sFirstBytes).pMakeFile(input.sPath, std::move(reader));
    pFile->SetToldType(input.sType);
    return pFile;
}

} // namespace zorcld
