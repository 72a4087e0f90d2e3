#ifndef HOST_FILES_OPENBYTEREADER_H
#define HOST_FILES_OPENBYTEREADER_H

#include <formats/CByteReader.h>

namespace zorcld
{

/// @throws CFailure when the file cannot be opened.
CByteReader OpenByteReader(const std::string& sPath);

} // namespace zorcld

#endif
