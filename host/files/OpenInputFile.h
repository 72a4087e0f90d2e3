#ifndef HOST_FILES_OPENINPUTFILE_H
#define HOST_FILES_OPENINPUTFILE_H

#include <host/files/CInputFile.h>

#include <memory>
#include <vector>

namespace zorcld
{

struct CInputOptions;

/// All kinds, those with certain first bytes before those without. A new kind is a class and a line here.
const std::vector<const CFileKind*>& GetFileKinds();

/// Opens the file, finds out its kind (as told, else from the first bytes, then from the extension) and
/// parses its head.
/// @throws CFailure when the file cannot be opened for reading or its kind is not known.
std::unique_ptr<CInputFile> OpenInputFile(const CInputOptions& input);

} // namespace zorcld

#endif
