#ifndef HOST_FILES_CNATIVEFILE_H
#define HOST_FILES_CNATIVEFILE_H

#include <formats/NativeFacts.h>
#include <host/files/CFileKind.h>
#include <host/files/CInputFile.h>

namespace zorcld
{

/// A native cloud file.
class CNativeFile final : public CInputFile
{
public:
    static const CFileKind c_kind;

    CNativeFile(const std::string& sPath, CByteReader&& reader);

    bool IsPlaceTaken() const override { return true; }

    void FindByReading(std::vector<CFinding>& vecFindings) override;

    /// Builds the octree anew where the one of the file misses points, or looks for them elsewhere.
    void Mend(CPntCld& cloud) override;

private:
    bool HasWrongBox();

    /// @return how many of the points are none, but bytes of the octree.
    std::int64_t CountFalsePnts();

    CMadeSource TryMakeSource() override { return {}; }

    CNativeFacts m_native;
};

} // namespace zorcld

#endif
