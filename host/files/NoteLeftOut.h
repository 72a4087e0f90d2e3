#ifndef HOST_FILES_NOTELEFTOUT_H
#define HOST_FILES_NOTELEFTOUT_H

#include <formats/CLeftOut.h>

#include <string>
#include <vector>

namespace zorcld
{

class CConsole;
class CInputFile;

/// Says in one line what of a file has not been written; nothing where that is nothing.
/// @param sOutPath  the file that was written.
void NoteLeftOut(const std::vector<CLeftOut>& vecLeftOut, const std::string& sOutPath,
                 const CConsole& console);

/// The same of a file that was loaded: to count what its points have it is read once more, unless nobody
/// wants notes.
void NoteLeftOut(CInputFile& file, const std::string& sOutPath, const CConsole& console);

} // namespace zorcld

#endif
