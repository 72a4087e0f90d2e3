#ifndef HOST_QUERY_CALCLARGESTSHARE_H
#define HOST_QUERY_CALCLARGESTSHARE_H

class CPntCld;

namespace zorcld
{

/// The share of a cloud's points that hang together in the largest part, seen from above: from each to the
/// next it is at most `dDistance`. An outline at that distance goes around no larger share, since the library
/// joins fewer points.
///
/// Of places with hundreds of points some are left out, so that it may be told too small where dense places
/// are just within reach of each other. Memory: 24 bytes a point.
double CalcLargestShare(const CPntCld& cloud, double dDistance);

} // namespace zorcld

#endif
