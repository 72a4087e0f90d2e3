#ifndef SUPPORT_CCLDSTATE_H
#define SUPPORT_CCLDSTATE_H

#include <tests/io/CMemFile.h>
#include <zor4data/CPntArrays.h>
#include <zor4data/CPntCld.h>
#include <zor4data/CRootCube.h>

#include <fstream>
#include <iterator>
#include <string>

/// All that a cloud holds, byte for byte: its own fields and those of its stores, points, marks and octree.
/// Two states are equal when nothing has been changed in between.
class CCldState
{
public:
    explicit CCldState(const CPntCld& cld)
        : m_sFields(TakeFields(cld)), m_sPath(cld.GetFilePath().c_str()), m_nVersion(cld.GetVersion()),
          m_bModified(cld.IsModified())
    {
        const CPntArrays arrays = GetPntArrays(cld);
        m_sPnts = TakeBytes(arrays.pPnts, static_cast<std::size_t>(arrays.nNumPnts * arrays.nStride));
        const std::size_t nNumMarks =
            arrays.pSelBits == nullptr ? 0 : static_cast<std::size_t>(arrays.nNumPnts / 8 + 1);
        m_sMarks = TakeBytes(arrays.pSelBits, nNumMarks) + TakeBytes(arrays.pDelBits, nNumMarks);
        m_sFile = TakeFile(cld);
    }

    bool operator==(const CCldState& other) const { return m_sFields == other.m_sFields && HasSame(other); }

    /// The same as a host sees it: addresses may differ.
    bool HasSame(const CCldState& other) const
    {
        return m_sPath == other.m_sPath && m_nVersion == other.m_nVersion &&
               m_bModified == other.m_bModified && m_sPnts == other.m_sPnts && m_sMarks == other.m_sMarks &&
               m_sFile == other.m_sFile;
    }

private:
    static std::string TakeBytes(const void* p, std::size_t nNumBytes)
    {
        return nNumBytes == 0 ? std::string() : std::string(static_cast<const char*>(p), nNumBytes);
    }

    /// The object as it lies in memory, the addresses of what it owns among it.
    static std::string TakeFields(const CPntCld& cld) { return TakeBytes(&cld, sizeof cld); }

    /// Points and octree as they are saved. A copy does it, which removes points marked deleted for itself.
    static std::string TakeFile(const CPntCld& cld)
    {
        CPntCld copy(cld);
        const CMemFile file;
        copy.WriteToFile(file.GetPath(), 0);
        std::ifstream stream(file.GetPath(), std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(stream), {});
    }

    std::string m_sFields;
    std::string m_sPath;
    int m_nVersion;
    bool m_bModified;
    std::string m_sPnts;
    std::string m_sMarks;
    std::string m_sFile;
};

#endif
