#ifndef CLOUD_CCLDSTORES_H
#define CLOUD_CCLDSTORES_H

#include <cloud/ForStore.h>
#include <zor4data/CPntCld.h>

#include <vector>

/// The way of the companions to a cloud's stores: a friend of the class, not installed.
struct CCldStores
{
    /// Runs `operation` on the live store, which it may read. @param other  the result for a cloud without
    /// point type.
    template <class Result, class Operation>
    static Result Ask(const CPntCld& cld, Result other, Operation operation)
    {
        return ForStore(cld.m_eType, cld.m_cld, cld.m_cldColor, other, operation);
    }

    /// Loads a native file as `ReadFromFile` does, with progress.
    static bool LoadNative(CPntCld& cld, IDlgProgress* pProgress, const zor::String& sPath)
    {
        cld.m_sFilePath = sPath; // set first, since the copy can fail
        cld.m_eFileType = PntCldFile_Native;
        return cld.ReadFromFile(sPath, pProgress);
    }

    /// @return what `Morph` keeps, ascending.
    static std::vector<int> FindGround(const CPntCld& cld, IPclProgressListener* pListener);

    /// Reduces the live store to the listed points.
    static void KeepPnts(CPntCld& cld, const std::vector<int>& vecIndices)
    {
        ForStore(cld.m_eType, cld.m_cld, cld.m_cldColor, [&](auto& store) { store.KeepPnts(vecIndices); });
    }

    /// Writes what `WriteToFile` writes.
    static void Write(CPntCld& cld, ofpstream& stream) { cld.WriteToFile(stream); }
};

#endif
