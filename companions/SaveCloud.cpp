#include <zor4data/SaveCloud.h>

#include <cloud/CCldStores.h>
#include <formats/CPlacedFile.h>
#include <io/native/ofpstream.h>

#include <cerrno>
#include <string>

namespace
{

bool HasTree(const CPntCld& cld)
{
    return CCldStores::Ask(
        cld, false, [](const auto& store) { return store.m_pPnts != nullptr && store.m_pTree != nullptr; });
}

/// @return FileCause_None, or why not, with errno.
enumFileCause Write(CPntCld& cld, const CPlacedFile& file)
{
    ofpstream stream(zor::String(file.GetPath().c_str()), "cld", 1);
    if (stream.IsFailed())
        return FileCause_NotCreated;
    CCldStores::Write(cld, stream);
    stream.Flush();
    errno = stream.GetError();
    if (errno != 0 || file.FindSize() != static_cast<std::int64_t>(stream.GetNumBytes()))
        return FileCause_NotWritten;
    return FileCause_None;
}

enumFileCause Save(CPntCld& cld, const zor::String& sPath, const TOnTempFile& onTempFile)
{
    errno = 0;
    if (!HasTree(cld))
        return FileCause_NothingToSave;
    if (CPlacedFile::IsDevice(sPath.c_str()))
        return FileCause_NotRegular; // what is written there cannot be compared
    CPlacedFile file(sPath.c_str());
    if (file.GetCause() != FileCause_None)
        return file.GetCause();
    if (onTempFile)
        onTempFile(zor::String(file.GetPath().c_str()));
    const enumFileCause eWritten = Write(cld, file);
    return eWritten == FileCause_None ? file.Place() : eWritten;
}

} // namespace

enumFileCause SaveCloud(CPntCld& cld, const zor::String& sPath)
{
    return SaveCloud(cld, sPath, TOnTempFile());
}

enumFileCause SaveCloud(CPntCld& cld, const zor::String& sPath, const TOnTempFile& onTempFile)
{
    const enumFileCause eCause = Save(cld, sPath, onTempFile);
    const int nError = errno;
    if (onTempFile)
        onTempFile(zor::String());
    errno = nError;
    return eCause;
}
