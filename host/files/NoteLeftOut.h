#ifndef HOST_FILES_NOTELEFTOUT_H
#define HOST_FILES_NOTELEFTOUT_H

#include <formats/CLeftOut.h>

#include <cstdint>
#include <string>
#include <vector>

namespace zorcld
{

class CClassChoice;
class CConsole;
class CInputFile;

/// Says in one line what of a file has not been written; nothing where that is nothing.
/// @param sOutPath  the file that was written.
void NoteLeftOut(const std::vector<CLeftOut>& vecLeftOut, const std::string& sOutPath,
                 const CConsole& console);

/// The same of a file that was loaded: to count what its points have it is read once more, unless nobody
/// wants notes or nothing was written.
/// @param choice    the classes that were loaded.
/// @param nLoaded   points of the cloud.
/// @param nWritten  of these; where they are fewer, the numbers are told as those of what was read.
void NoteLeftOut(CInputFile& file, const CClassChoice& choice, std::int64_t nLoaded, std::int64_t nWritten,
                 const std::string& sOutPath, const CConsole& console);

} // namespace zorcld

#endif
