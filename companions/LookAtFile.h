#ifndef COMPANIONS_LOOKATFILE_H
#define COMPANIONS_LOOKATFILE_H

#include <formats/CFileCause.h>
#include <formats/CFilePtr.h>
#include <formats/CFinding.h>
#include <formats/CLeftOut.h>
#include <zor4data/CFileFacts.h>

#include <vector>

/// What has been found in a file.
struct CFileLook
{
    bool bLosses = false;              ///< are losses asked for? They may take longer
    CFileFacts facts;                  ///< but for the cause
    CFileCause cause;                  ///< one that is no refusal is a loss
    std::vector<CFinding> vecFindings; ///< of a file that is not refused
    std::vector<CLeftOut> vecLeftOut;  ///< likewise
};

/// Looks at a file as the library's reader of its kind would.
///
/// @param pFile  the file, at its start; not null.
/// @param look   names the kind; receives the rest.
void LookAtFile(const zor::String& sPath, CFilePtr pFile, CFileLook& look);

#endif
