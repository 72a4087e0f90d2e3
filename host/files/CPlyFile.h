#ifndef HOST_FILES_CPLYFILE_H
#define HOST_FILES_CPLYFILE_H

#include <formats/CPlyHeader.h>
#include <formats/CPlyMeaning.h>
#include <formats/CPlySource.h>
#include <formats/CPlyWalk.h>
#include <formats/PlyFacts.h>
#include <host/files/CFileKind.h>
#include <host/files/CInputFile.h>

namespace zorcld
{

/// A PLY file of any format. Whether it is whole is found while it is read: the library would walk over all
/// of its lists by themselves.
class CPlyFile final : public CInputFile
{
public:
    static const CFileKind c_kind;

    CPlyFile(const std::string& sPath, CByteReader&& reader);

    CFileCause FindHeadCause() override { return m_walk.GetCause(); }
    CFileCause FindCause() override;

private:
    CMadeSource TryMakeSource() override { return MakePlySource(m_meaning, m_reader); }
    CFileFacts CalcFileFacts() const override { return FindPlyFacts(m_header); }

    CPlyMeaning m_meaning;
    CPlyHeader m_header;
    CPlyWalk m_walk; // comes along with whatever reads the file
};

} // namespace zorcld

#endif
