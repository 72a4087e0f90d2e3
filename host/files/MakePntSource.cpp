#include <formats/CLasGuard.h>
#include <host/files/FileKinds.h>
#include <host/files/IPntSource.h>
#include <host/files/LoadCloud.h>

namespace zorcld
{

std::unique_ptr<IPntSource> MakePntSource(const CInputOptions& input)
{
    const CFileKind& kind = FindFileKind(input.sPath, input.sType);
    if (kind.eFile == PntCldFile_Ply)
        return MakePlySource(input.sPath);
    if (kind.eFile == PntCldFile_AsciiGrid)
        return MakeGridSource(input.sPath);
    if (kind.eFile != PntCldFile_Las)
        return nullptr;
    CLasGuard guard(input.sPath.c_str());
    if (!guard.Check() || !guard.GetHeader().bCompressed)
        return MakeLasSource(input.sPath);
    return nullptr;
}

} // namespace zorcld
