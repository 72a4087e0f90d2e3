#ifndef ZOR4DATA_SAVECLOUD_H
#define ZOR4DATA_SAVECLOUD_H

#include <zor0lang/String.h>
#include <zor4data/Export.h>
#include <zor4data/enumFileCause.h>

#include <functional>

class CPntCld;

/// Is told the path of a file while it has its temporary name: when it is there, before anything is written,
/// and an empty path when it has its name, is gone, or was never made. No second call where an exception
/// leaves.
using TOnTempFile = std::function<void(const zor::String& sTempPath)>;

/// Saves the cloud as a native file that appears whole or not at all.
///
/// What `CPntCld::WriteToFile` writes goes to a file of another name in the same folder; its length is
/// compared with what was written, it is brought to the disk, and only then takes the place of a file that is
/// there, whose rights it gets. Whatever fails, an older file stays as it was, and nothing else is left. A
/// process that is killed leaves a file whose name ends in .zorcld- and six characters.
///
/// @param cld    what is saved.
/// @param sPath  where the file is to be. A symbolic link is followed, and stays.
/// @return FileCause_None: the file is there. Else why not (`enumFileCause.h`), and errno says what the
///         system said, 0 where it said nothing: FileCause_Directory, _NotRegular, and _NotCreated to
///         _NothingToSave.
///
/// A cloud without an octree is not saved: its points would be missing in the file. Whatever fails, the cloud
/// stays as it was, and so it does when it is saved: the flag `IsModified` is the host's to clear. Points
/// marked deleted would be removed first, as by `WriteToFile`, but no member of the class leaves any. Throws
/// std::bad_alloc; the same holds then.
/// Cost: that of WriteToFile, and the disk's.
ZOR4DATA_API enumFileCause SaveCloud(CPntCld& cld, const zor::String& sPath);

/// The same for a host that removes the temporary file itself when it is ended by a signal.
/// @param cld         what is saved.
/// @param sPath       where the file is to be.
/// @param onTempFile  may be empty. What it throws passes through; the temporary file is then removed.
ZOR4DATA_API enumFileCause SaveCloud(CPntCld& cld, const zor::String& sPath, const TOnTempFile& onTempFile);

#endif
