#ifndef ZOR4DATA_FINDINDICES_H
#define ZOR4DATA_FINDINDICES_H

#include <zor3geom/PLANE_3D.h>
#include <zor3geom/PNT_2D.h>
#include <zor3geom/TMultiPartPolygon.h>
#include <zor4data/Export.h>

#include <vector>

class CPntCld;
class IPntIndexListener;

/// The queries of a cloud for hosts that hold its arrays (`GetPntArrays`) and need no records: each delivers
/// the indices of the points that the query of the class delivers, in the same order, and nothing else. The
/// colour listener is not called.
///
/// @param cld        asked for its points.
/// @param pListener  receives the indices, in an array that is reused after each call. Null: nobody does.
/// @param nBatch     indices per OnIndices call, the last may be shorter; below 1 counts as 1.
///
/// All other arguments, and what happens without an octree, as the query named; a cloud without point type:
/// no call. Throws std::bad_alloc only; what the listener throws passes through. Several threads may ask at
/// once. Cost: that of the query less its records; subtrees taken whole cost 4 bytes of writing a point.

/// `CPntCld::GetPnts`: every live point, ascending.
ZOR4DATA_API void FindIndices(const CPntCld& cld, IPntIndexListener* pListener, int nBatch);

/// `CPntCld::GetPnts_Lod`
ZOR4DATA_API void FindIndices_Lod(const CPntCld& cld, IPntIndexListener* pListener, double dLod, int nBatch);

/// `CPntCld::GetPnts_Clip`
ZOR4DATA_API void FindIndices_Clip(const CPntCld& cld, IPntIndexListener* pListener,
                                   const std::vector<zor::geom::PLANE_3D>& vecPlanes, int nBatch);

/// `CPntCld::GetPnts_LodClip`
ZOR4DATA_API void FindIndices_LodClip(const CPntCld& cld, IPntIndexListener* pListener, double dLod,
                                      const std::vector<zor::geom::PLANE_3D>& vecPlanes, int nBatch);

/// `CPntCld::GetPnts2D`
ZOR4DATA_API void FindIndices2D(const CPntCld& cld, IPntIndexListener* pListener, double xmin, double ymin,
                                double xmax, double ymax, int nBatch);

/// `CPntCld::FindPnts2D_NearLine`
ZOR4DATA_API void FindIndices2D_NearLine(const CPntCld& cld, IPntIndexListener* pListener,
                                         const zor::geom::PNT_2D& p1, const zor::geom::PNT_2D& p2,
                                         double dist, bool bStart, bool bEnd, int nBatch);

/// `FindPntsInPolygons`
ZOR4DATA_API void FindIndicesInPolygons(const CPntCld& cld, IPntIndexListener* pListener,
                                        const std::vector<zor::geom::TMultiPartPolygon>& polygons,
                                        bool bOutside, int nBatch);

#endif
