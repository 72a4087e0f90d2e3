#include <zor4data/CPntCld.h>

#include <cloud/ForStore.h>
#include <io/ReadForeign.h>
#include <io/native/ReadNative.h>
#include <io/native/WriteNative.h>
#include <io/native/ifpstream.h>
#include <io/native/ofpstream.h>

bool CPntCld::ReadFromFile(IDlgProgress* pProgress, enumPntCldFile eType, const zor::String& sPath)
{
    m_sFilePath = sPath; // set first, since the copy can fail
    m_eFileType = eType;
    // KEPT: a native file tells no progress here (ReadFromFile_OfANativeFileTellsNoProgress_Kept).
    return eType == PntCldFile_Native ? ReadFromFile(sPath) : ReadForeign(*this, pProgress, eType, sPath);
}

bool CPntCld::ReadFromFile(const zor::String& sPath, IDlgProgress* pProgress)
{
    ifpstream stream(sPath);
    if (stream.IsFailed())
        return false;
    stream.SetProgress(pProgress);
    const CNativeHeader header = ReadNativeHeader(stream);
    const auto eType = static_cast<enumPntCldType>(header.nType);
    // KEPT: the result does not tell whether the store took the points: a loaded one takes none, and a file
    // may have none (ReadFromFile_IntoALoadedStore_Kept).
    const bool bIsType = ForStore(eType, m_cld, m_cldColor, false,
                                  [&](auto& store)
                                  {
                                      ReadNative(stream, header, store);
                                      store.m_nVersion = header.nVersion;
                                      return true;
                                  });
    // KEPT: the type stays as read, even one that does not exist. It is set last, should memory run out
    // (ReadFromFile_UnknownTypeStays_Kept).
    m_eType = eType;
    return bIsType;
}

bool CPntCld::WriteToFile(const zor::String& sPath, short nVersion)
{
    ofpstream stream(sPath, "cld", nVersion);
    return !stream.IsFailed() && WriteToFile(stream);
}

bool CPntCld::WriteToFile(ofpstream& stream)
{
    stream.WriteNumber(static_cast<std::int32_t>(GetVersion()));
    stream.WriteNumber(static_cast<std::int16_t>(m_eType));
    return ForStore(m_eType, m_cld, m_cldColor, false,
                    [&](auto& store)
                    {
                        // KEPT: a store that was never built is saved as a file without points, and the
                        // result is true (WriteToFile_WithoutATree_Kept).
                        if (store.m_pPnts != nullptr && store.m_pTree != nullptr)
                        {
                            store.PackDelPnts();
                            WriteNative(stream, store);
                        }
                        return true;
                    });
}
