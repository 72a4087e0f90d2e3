#ifndef HOST_FILES_CCLOUDSOURCE_H
#define HOST_FILES_CCLOUDSOURCE_H

#include <host/files/IPntSource.h>

namespace zorcld
{

class CConsole;
class CInputFile;

/// Loads the file through the library: coordinates come to 1/10000 and points at one x and y may come once.
/// @throws CFailure with the cause when it cannot be read, or when points of it were moved.
std::unique_ptr<IPntSource> MakeCloudSource(CInputFile& file, const CConsole& console);

} // namespace zorcld

#endif
