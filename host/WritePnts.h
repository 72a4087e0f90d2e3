#ifndef HOST_WRITEPNTS_H
#define HOST_WRITEPNTS_H

#include <host/PntWriter.h>

class CConsole;
class CPntCld;
struct CQuery;

/// Writes what the query delivers, not yet committed; the writer's note goes to the console.
/// @throws CFailure
void WritePnts(const CPntCld& cloud, const CQuery& query, const TMakePntWriter& makeWriter, COutFile& out,
               const CConsole& console);

#endif
