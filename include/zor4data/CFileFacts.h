#ifndef ZOR4DATA_CFILEFACTS_H
#define ZOR4DATA_CFILEFACTS_H

#include <zor0lang/String.h>
#include <zor3geom/RECT_3D.h>
#include <zor4data/Export.h>
#include <zor4data/enumFileCause.h>
#include <zor4data/enumPntCldFile.h>

#include <cstdint>
#include <string>
#include <vector>

/// What a file says of itself before it is loaded, and why it would not load.
///
/// `eCause` is FileCause_None exactly where `CPntCld::ReadFromFile` with this kind returns true, but for what
/// cannot be known without loading:
///
/// - whether memory suffices. A LAS file that announces more points than it can hold is refused where they
///   find no room and loads, short of them, where they do; std::bad_alloc of any other kind is no property of
///   the file.
/// - pipes and devices: they could be read once only, and are not looked into (FileCause_NotRegular),
///   though a native file may come through one.
/// - a file that changes meanwhile, or a disk that fails.
///
/// A file that loads may still load badly, or hold nothing: `FindFileLosses` tells.
struct CFileFacts
{
    enumPntCldFile eType = static_cast<enumPntCldFile>(-1); ///< by content, or as given; -1: not known
    enumFileCause eCause = FileCause_None; ///< FileCause_None: nothing found that would keep it from loading
    std::string sCause;                    ///< one line of English without path and full stop; empty: none
    std::int64_t nAnnounced = -1;          ///< points; -1: it does not say, as no ASCII grid does
    bool bColor = false;                   ///< it would be loaded with colour
    bool bBounds = false;                  ///< its head tells bounds (native, LAS), which may be untrue
    zor::geom::RECT_3D bounds;             ///< coordinate units; undefined without bBounds
};

/// Something that goes wrong or is lost when a file is loaded.
struct CFileLoss
{
    std::string sCode; ///< short and lasting, for programs: "ply-coordinates"
    std::string sText; ///< one line of English without path and full stop
};

/// Tells the kind of a file by its first bytes, and looks at it as such. The file's name does not matter.
///
/// Cost: its head; of a PLY file with lists all of them, of an ASCII grid what
/// stands before the first height, of a LAZ file the table of chunks. Points are not read. Memory: a few MiB
/// and a few times the file's head. Throws std::bad_alloc only.
ZOR4DATA_API CFileFacts FindFileFacts(const zor::String& sPath);

/// Looks at a file as `ReadFromFile` would with this kind. Any other value: FileCause_UnknownKind.
ZOR4DATA_API CFileFacts FindFileFacts(const zor::String& sPath, enumPntCldFile eType);

/// What will be lost, or come otherwise than the file means it, when it is loaded as this kind: what its head
/// tells of it. What only the points tell (those out of reach, duplicates, colours all 0) is not among it.
///
/// @return a line each; none for a file that would not load.
///
/// Cost: that of `FindFileFacts`; of a native file the octree, too.
ZOR4DATA_API std::vector<CFileLoss> FindFileLosses(const zor::String& sPath, enumPntCldFile eType);

#endif
