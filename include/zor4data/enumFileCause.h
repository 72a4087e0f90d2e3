#ifndef ZOR4DATA_ENUMFILECAUSE_H
#define ZOR4DATA_ENUMFILECAUSE_H

#include <cstdint>

/// Why a file is not loaded, or not saved. Numbers stay what they are for good; new ones come behind the last
/// of their kind.
enum enumFileCause : std::int32_t
{
    FileCause_None = 0, ///< loading: nothing found that would keep it from it; saving: it is there, whole

    FileCause_Directory = 3,  ///< it is a directory
    FileCause_NotRegular = 4, ///< it is a pipe, a device or the like

    FileCause_NotCreated = 120,    ///< no file can be made in its folder
    FileCause_NotWritten = 121,    ///< not every byte arrived: the disk is full, or it would grow too large
    FileCause_NotSynced = 122,     ///< it could not be brought to the disk
    FileCause_NotRenamed = 123,    ///< it could not be given its name
    FileCause_LinkNowhere = 124,   ///< it is a symbolic link that leads nowhere, or in a circle
    FileCause_NothingToSave = 125, ///< the cloud has no point type, or no octree
};

#endif
