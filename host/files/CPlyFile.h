#ifndef HOST_FILES_CPLYFILE_H
#define HOST_FILES_CPLYFILE_H

#include <formats/CPlyHeader.h>
#include <formats/CPlyMeaning.h>
#include <formats/CPlyWalk.h>
#include <host/files/CFileKind.h>
#include <host/files/CInputFile.h>

namespace zorcld
{

/// A PLY file of any format.
class CPlyFile final : public CInputFile
{
public:
    static const CFileKind c_kind;

    CPlyFile(const std::string& sPath, CByteReader&& reader);

    std::unique_ptr<IPntSource> MakeSource() override;

private:
    std::string CalcDataCause(std::int64_t nNumRead) override;

    CPlyMeaning m_meaning;
    CPlyHeader m_header;
    CPlyWalk m_walk; // comes along with whatever reads the file
};

} // namespace zorcld

#endif
