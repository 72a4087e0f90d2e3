#ifndef ZOR4DATA_ENUMFILECAUSE_H
#define ZOR4DATA_ENUMFILECAUSE_H

#include <cstdint>

/// Why a file is not loaded, or not saved. Numbers stay what they are for good; new ones come behind the last
/// of their kind.
enum enumFileCause : std::int32_t
{
    FileCause_None = 0, ///< loading: nothing found that would keep it from it; saving: it is there, whole

    FileCause_NotFound = 1,    ///< there is no file of that name
    FileCause_NotOpened = 2,   ///< it is there, but cannot be opened or looked up
    FileCause_Directory = 3,   ///< it is a directory
    FileCause_NotRegular = 4,  ///< it is a pipe, a device or the like, which is not looked into
    FileCause_Empty = 5,       ///< it has no bytes
    FileCause_UnknownKind = 6, ///< its first bytes, or the given number, belong to no kind of file
    FileCause_NoReader = 7,    ///< the library was built without what reads its kind (LAS)

    FileCause_NativeTooShort = 20, ///< it ends within its first five bytes
    FileCause_NativeType = 21,     ///< its point type is neither 0 nor 1

    FileCause_PlyFirstLine = 40,    ///< its first line is not 'ply'
    FileCause_PlyAscii = 41,        ///< its format is ascii
    FileCause_PlyBigEndian = 42,    ///< its format is binary_big_endian
    FileCause_PlyFormat = 43,       ///< its second line is another one than 'format binary_little_endian 1.0'
    FileCause_PlyNoEnd = 44,        ///< its header has no line 'end_header'
    FileCause_PlyNoElements = 45,   ///< no element has a count above 0
    FileCause_PlyNoCoords = 46,     ///< its vertices lack x, y or z
    FileCause_PlyPropertyType = 47, ///< an element has a property of a type that is not known
    FileCause_PlyCutOff = 48,       ///< its data end before the items that it announces

    FileCause_GridCounts = 60,       ///< its header gives no rows and columns above 0
    FileCause_GridCellSize = 61,     ///< its header gives no cell size above 0
    FileCause_GridCellWidth = 62,    ///< its header gives width and height of cells apart from each other
    FileCause_GridKey = 63,          ///< its header has a key in another spelling than the two accepted
    FileCause_GridTab = 64,          ///< a tab separates key and value in its header
    FileCause_GridPlace = 65,        ///< its header gives neither corner nor centre
    FileCause_GridPlaceNumber = 66,  ///< its header gives a corner or a centre that is not a number
    FileCause_GridPlaceMixed = 67,   ///< its header gives a corner on one axis, a centre on the other
    FileCause_GridNoData = 68,       ///< its header has no no-data value
    FileCause_GridNoDataNumber = 69, ///< its no-data value is not a number, or too large
    FileCause_GridLine = 70,         ///< its header has a line that is no key with a value
    FileCause_GridNoCells = 71,      ///< no cell holds a height

    FileCause_LasFirstBytes = 80, ///< it does not begin with LASF
    FileCause_LasCutOff = 81,     ///< it ends within its header
    FileCause_LasHeaderSize = 82, ///< its header has fewer bytes than its version has
    FileCause_LasPntsBehind = 83, ///< its points begin behind its end
    FileCause_LasPntsBefore = 84, ///< its points begin within its header
    FileCause_LasFormat = 85,     ///< its point format is not known
    FileCause_LasNotSaidHow = 86, ///< it is marked as compressed, but does not say how
    FileCause_LasNotMarked = 87,  ///< it says how it is compressed, but is not marked as compressed
    FileCause_LasSaidTwice = 88,  ///< it says twice how it is compressed
    FileCause_LazRecord = 89,     ///< what it says of its compression is damaged
    FileCause_LazCompressor = 90, ///< it is compressed in an unknown way
    FileCause_LazItems = 91,      ///< the parts of its points are unknown, or do not make up a point
    FileCause_LazPnts = 92,       ///< its compressed points are damaged
    FileCause_LazNoTable = 93, ///< the table of its compressed points is missing, and cannot be done without
    FileCause_LasUnsafe = 94,  ///< it is not handed to LASlib, which does not cope with its damage

    FileCause_NotCreated = 120,    ///< no file can be made in its folder
    FileCause_NotWritten = 121,    ///< not every byte arrived: the disk is full, or it would grow too large
    FileCause_NotSynced = 122,     ///< it could not be brought to the disk
    FileCause_NotRenamed = 123,    ///< it could not be given its name
    FileCause_LinkNowhere = 124,   ///< it is a symbolic link that leads nowhere, or in a circle
    FileCause_NothingToSave = 125, ///< the cloud has no point type, or no octree
};

#endif
