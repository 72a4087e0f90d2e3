#ifndef HOST_QUERY_WRITEPNTS_H
#define HOST_QUERY_WRITEPNTS_H

#include <host/output/PntWriter.h>

class CPntCld;

namespace zorcld
{

class CConsole;
struct CQuery;

/// Writes what the query delivers, not yet committed; the writer's note goes to the console.
/// @return how many points that were.
/// @throws CFailure
std::int64_t WritePnts(const CPntCld& cloud, const CQuery& query, const TMakePntWriter& makeWriter,
                       COutFile& out, const CConsole& console);

} // namespace zorcld

#endif
