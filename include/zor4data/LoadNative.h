#ifndef ZOR4DATA_LOADNATIVE_H
#define ZOR4DATA_LOADNATIVE_H

#include <zor0lang/String.h>
#include <zor4data/Export.h>

class CPntCld;
class IDlgProgress;

/// Loads a native file as `CPntCld::ReadFromFile` does, and tells how far it has come, so that a host can
/// show it and cancel.
///
/// @param cld        an empty one, to be filled.
/// @param pProgress  receives percent of the file's bytes, 0 to 100 and never falling: once before the
///                   points, and then at least every 64 MiB; null: no calls.
/// @param sPath      recorded in the cloud, whatever the outcome.
/// @return as ReadFromFile: false where the file cannot be opened, or names no point type. A cloud that has
///         points or an octree takes nothing from the file, and there is no call but the first.
///
/// An exception that leaves `SetPos` passes through: points, marks, octree, type and version of the cloud are
/// as before; the kind and the path of the file are recorded. Throws std::bad_alloc; the same holds then.
/// Cost: that of ReadFromFile.
ZOR4DATA_API bool LoadNative(CPntCld& cld, IDlgProgress* pProgress, const zor::String& sPath);

#endif
