#ifndef ZOR4DATA_CPNTCLD_H
#define ZOR4DATA_CPNTCLD_H

#include <cloud/COcTree.h>
#include <octree/CTruncPnt.h>
#include <octree/CTruncPnt_Color.h>
#include <zor0lang/String.h>
#include <zor3geom/PLANE_3D.h>
#include <zor3geom/PNT_2D.h>
#include <zor3geom/PNT_3D.h>
#include <zor3geom/RECT_3D.h>
#include <zor4data/CCldCadPnt.h>
#include <zor4data/Export.h>
#include <zor4data/ICldColorListener.h>
#include <zor4data/IDlgProgress.h>
#include <zor4data/IPclProgressListener.h>
#include <zor4data/IPntCldListener.h>
#include <zor4data/IPntCldReadListener.h>
#include <zor4data/enumPntCldFile.h>
#include <zor4data/enumPntCldType.h>

#include <vector>

class ofpstream;

/// One cloud of measured points in memory.
///
/// Coordinates are kept to 1/10000 of the coordinate unit as offsets from the first point (rounded to
/// float): they reach ±214748.3647 units from it and saturate beyond. A point takes 12 bytes, with colour
/// 16, and two bits for its marks; the octree takes about 3.5 bytes a point more.
///
/// To fill a cloud: `ReadFromFile`; or `OnReadType`, `Init(n)`, n times `AddPnt`, then `ComputeTree` or, to
/// drop points stacked at one plan position as well, `OnReadEnd`. To ask it: the `GetPnts` family. An index
/// is a position in the current array: every build of the octree, every deletion and every compaction
/// changes it. Indices are not checked: 0 ≤ index < GetNumPnts().
///
/// Until `OnReadType` has been given one of the two point types every operation is inert: it does nothing
/// and returns false, 0, or -1 where said. The same holds for any other value given to it.
///
/// Copies share points, marks and octree. A change made in place (a selection, a rebuilt octree) is seen by
/// all copies; a compaction or a new filling gives the copy that makes it arrays of its own. So a deletion
/// holds for that copy alone: the others go on counting and delivering its points.
///
/// Nothing here prints, starts a thread, or throws on its own account; std::bad_alloc passes through, and
/// leaves the cloud as it was but for the order of its points where the octree was being built.
///
/// A host cancels with an exception out of one of its listeners. It passes through; nothing leaks. Const
/// members and `Morph` leave the cloud exactly as it was. After a broken-off `ReadFromFile` it holds what had
/// come: the type, the announced count, the points stored until then, and no octree.
///
/// Const members, and functions beside the class that take it as const, may run on several threads at once
/// as long as nothing changes the cloud or a copy of it; they call their listeners on these threads, the
/// colour listener too. REQUIRES: while a query runs, its listeners do not change the cloud or a copy of it.
/// Delivery needs a colour listener: without one, points come with the colour they hold.
///
/// A host may derive to watch or filter files being read (no native ones): `ReadFromFile` calls the object's
/// slots. Points announced count, stored or not: a filter gathers, then announces and stores in `OnReadEnd`.
class ZOR4DATA_API CPntCld : public IPntCldReadListener
{
public:
    /// @param pColorListener  asked for the colour of every delivered point; kept, not owned.
    explicit CPntCld(ICldColorListener* pColorListener);

    CPntCld(const CPntCld& other);            ///< shares points, marks and octree
    CPntCld& operator=(const CPntCld& other); ///< shares points, marks and octree
    virtual ~CPntCld();

    // --- filling -------------------------------------------------------------------------------

    /// Chooses the point type; the value is not checked.
    void OnReadType(enumPntCldType eType) override;

    /// Makes room for `nNumPnts` points (below 1: none).
    /// @return false, and nothing changes, when the cloud already has its array: `Clear` it first.
    bool Init(int nNumPnts);

    /// `Init` with its result dropped.
    void OnReadNumPnts(int nNumPnts) override;

    /// Stores a point, coordinate units; on a cloud with colour it becomes green (0, 255, 0). The first
    /// one sets the origin. The octree does not know it until `ComputeTree`.
    /// @return false when all points announced to `Init` have been stored, or after a compaction.
    bool AddPnt(double x, double y, double z);

    /// Stores a point with colour, 0 to 255 a channel; on a cloud without colour the colour is dropped.
    bool AddPnt(double x, double y, double z, unsigned char r, unsigned char g, unsigned char b);

    /// Stores a point of a file. Ignored when the cloud is one with colour.
    void OnReadPnt(double x, double y, double z) override;

    /// Stores a point of a file. Ignored when the cloud is one without colour.
    void OnReadPnt(double x, double y, double z, unsigned char r, unsigned char g, unsigned char b) override;

    /// Builds the octree and removes duplicates: of the points of one leaf that share x and y to
    /// 1/10000, whatever their heights, the first stays.
    void OnReadEnd() override;

    /// Builds the octree, reordering the points. A slot announced to `Init` and not filled counts as a
    /// point at the origin.
    /// @return false when there is no point; the cloud then has an octree without points.
    bool ComputeTree();

    /// Loads a file. The cloud is not cleared first.
    ///
    /// @param pProgress  receives percent, one call a point and before it; null, a grid, or a native file: no
    ///                   calls. `LoadNative` (a header of its own) loads a native file with progress.
    /// @param eType      kind of the file; any other value: false.
    /// @param sPath      recorded together with the kind before anything else, whatever the outcome.
    /// @return false when there is no reader for the kind, or the file is missing, is not of the kind, or
    ///         ends early; the cloud then holds the points delivered until then and no octree. A native file,
    ///         which comes with its octree, is not checked: true means that it could be opened and names a
    ///         point type. What is damaged in it is left out, and a cloud that has points or an octree takes
    ///         nothing from it.
    bool ReadFromFile(IDlgProgress* pProgress, enumPntCldFile eType, const zor::String& sPath);

    /// Saves the cloud as a native file: points and octree as they are, no selection. Points marked
    /// deleted are removed from the cloud first. A file that exists is emptied before anything is written.
    ///
    /// @param sPath     where the file is to be.
    /// @param nVersion  not written; the file carries `GetVersion`.
    /// @return false when the file could not be opened, or the cloud has no point type. True in all other
    ///         cases: a full disk is not noticed, and a cloud without an octree leaves a file of 11 bytes,
    ///         which loads as no points. `SaveCloud` (a header of its own) tells.
    bool WriteToFile(const zor::String& sPath, short nVersion);

    /// Gives up points and octree. Selection, origin, flags and version stay until the next `Init`.
    void Clear();

    // --- access --------------------------------------------------------------------------------

    /// @return points not marked deleted, counting slots announced and not yet filled; cost: up to one
    ///         pass over the deletion marks.
    int GetNumPnts() const;

    /// Coordinates of point `nIndex`, coordinate units.
    void GetPnt(int nIndex, zor::geom::PNT_3D& pnt) const;

    /// Stored colour of point `nIndex`, 0 to 255 a channel.
    /// @return false, and nothing is written, on a cloud without colour.
    bool GetPntColor(int nIndex, unsigned char& r, unsigned char& g, unsigned char& b) const;

    /// Bounding box of the points at the last build of the octree, coordinate units; exact to 2/10000. A side
    /// longer than 214748 units is given as 214748 units around its middle, and the octree's cubes are made
    /// for that.
    /// @return false, and nothing is written, without an octree.
    bool GetBdry(zor::geom::RECT_3D& rect) const;

    bool IsWithColor() const; ///< whether every point has a colour of its own

    /// @return null for a cloud without point type.
    ICldColorListener* GetColorListener() const;

    /// @return kind given to the last `ReadFromFile`, -1 before it.
    enumPntCldFile GetFileType() const;

    /// @return path given to the last `ReadFromFile`, empty before it.
    zor::String GetFilePath() const;

    bool IsModified() const; ///< set by what removes points, and by the host

    /// Only the host clears the flag, after saving for example.
    void SetModified(bool bModified);

    /// @return how often the flag went from false to true, counted from the number given to `SetVersion` if
    ///         any; -1 for a cloud without point type.
    int GetVersion() const;
    void SetVersion(int nVersion); ///< the number to count on from

    // --- selection -----------------------------------------------------------------------------

    /// Selects point `nIndex`; with `bToggle` a selected one is unselected instead.
    void SelPnt(int nIndex, bool bToggle);

    void UnSelPnts(); ///< unselects every point

    /// Removes the selected points; other copies keep them. Those left keep their order; indices close up,
    /// and the cloud takes no further points.
    void DelSelPnts();

    // --- queries: one SetZRange to the colour listener, then OnPnts to the host's listener -------

    /// Delivers every point not marked deleted, in index order.
    ///
    /// @param pListener  receives the points; not null. The array it is given is reused after each call.
    /// @param nBatch     records per OnPnts call, the last may be shorter; below 1 counts as 1.
    void GetPnts(IPntCldListener* pListener, int nBatch) const;
    void GetPnts(IPntCldListener* pListener) const; ///< one record a call

    /// Delivers a thinned cloud: about one point per octree cube of edge `dLod`, and all points of the
    /// leaves above that size.
    ///
    /// @param pListener  as for `GetPnts`.
    /// @param dLod       spacing, coordinate units. Not above 0, not-a-number, or larger than the cloud:
    ///                   every point.
    /// @param nBatch     as for `GetPnts`.
    ///
    /// Order: octant by octant, not index order. Without an octree nothing is delivered.
    /// Cost: linear in the points delivered.
    void GetPnts_Lod(IPntCldListener* pListener, double dLod, int nBatch) const;
    void GetPnts_Lod(IPntCldListener* pListener, double dLod) const; ///< one record a call

    /// Delivers every point that is in front of none of the planes.
    ///
    /// @param pListener  as for `GetPnts`.
    /// @param vecPlanes  coordinate units, normals pointing out of the kept volume; a point on a plane
    ///                   is kept. Empty: every point.
    /// @param nBatch     as for `GetPnts`.
    ///
    /// Order: leaf by leaf, octants 0 to 7, not index order. Without an octree nothing is delivered. In a
    /// cloud wider than 214748 units the octree's cubes do not reach all points: a point outside its cube is
    /// delivered or left out together with it.
    /// Cost: whole subtrees are dropped or taken untested.
    void GetPnts_Clip(IPntCldListener* pListener, const std::vector<zor::geom::PLANE_3D>& vecPlanes,
                      int nBatch) const;

    /// One record a call.
    void GetPnts_Clip(IPntCldListener* pListener, const std::vector<zor::geom::PLANE_3D>& vecPlanes) const;

    /// Delivers a thinned cloud, clipped. A cube of the wanted size gives its point even where only its
    /// parent reaches into the kept volume, and a leaf that gives one point gives it untested. With `dLod`
    /// larger than the cloud each leaf gives one point; not above 0 or not-a-number: the same as
    /// `GetPnts_Clip`.
    void GetPnts_LodClip(IPntCldListener* pListener, double dLod,
                         const std::vector<zor::geom::PLANE_3D>& vecPlanes, int nBatch) const;

    // --- queries in plan view: heights are not looked at; one record a call ----------------------

    /// Delivers the points with xmin ≤ x ≤ xmax and ymin ≤ y ≤ ymax, coordinate units; none when a minimum is
    /// above its maximum. Order and cost as `GetPnts_Clip`. Points have steps of 1/10000, and the comparison
    /// rounds: to include a point by its own coordinates, or by `GetBdry`, leave half a step of room.
    void GetPnts2D(IPntCldListener* pListener, double xmin, double ymin, double xmax, double ymax) const;

    /// @return the number of points that `GetPnts2D` would deliver. The colour listener is asked for each.
    int GetNumPnts2D(double xmin, double ymin, double xmax, double ymax) const;

    /// Delivers the points along the segment from p1 to p2: first the one exactly at p1, when `bStart`,
    /// then those of the corridor, then the one exactly at p2, when `bEnd`. A point at an end that lies
    /// in the corridor too comes twice.
    ///
    /// @param pListener  receives the points, one a call; not null.
    /// @param p1         start of the segment, coordinate units.
    /// @param p2         its end.
    /// @param dist       how far the corridor reaches to either side, coordinate units; it ends square
    ///                   at p1 and p2. Not above 0, or p1 equal to p2: no corridor. On its edges
    ///                   rounding decides.
    /// @param bStart     whether the point at the start is delivered, too.
    /// @param bEnd       whether the point at the end is.
    ///
    /// "Exactly": the same x and y in units of 1/10000, counted from the cloud's origin and truncated; of
    /// several such points, one. Coordinates that the cloud gave back may lie just below their unit: to find
    /// their point again, add half a unit away from the origin, or give what was stored. The colour listener
    /// is told the height range once, and again when there is a corridor.
    void FindPnts2D_NearLine(IPntCldListener* pListener, const zor::geom::PNT_2D& p1,
                             const zor::geom::PNT_2D& p2, double dist, bool bStart, bool bEnd) const;

    /// Delivers all points of the octree squares wholly inside a contour and, of the leaves under squares
    /// that straddle it, the points outside it.
    ///
    /// @param pListener  receives the points, one a call; not null.
    /// @param contour    ring, closing edge implied, either way round, coordinate units. Where it crosses
    ///                   itself the odd-even rule says what is inside. Fewer than three points, no area, or a
    ///                   coordinate that is not finite: it holds nothing. Coordinates up to 1e150.
    ///
    /// A square without area, the root of a cloud whose points all lie within two units of 1/10000, counts as
    /// inside whatever the contour. Without an octree there is no call at all, not even of SetZRange.
    void FindPnts2D_IntCnt(IPntCldListener* pListener, const std::vector<zor::geom::PNT_2D>& contour) const;

    /// Delivers the points inside a contour, those on it included. With holes, only the octree squares
    /// wholly inside the contour and outside all holes deliver their points; leaves under squares that
    /// straddle an edge deliver none.
    ///
    /// A cut through a square that leaves four corners within the root of 0.1 coordinate units of its own
    /// counts as none: the square then counts as outside.
    ///
    /// Cost: grows with the squares along the contour; a point on the way is tested against the edges near
    /// it only. `FindPntsInPolygons` (a header of its own) delivers exactly the points inside.
    void FindPnts2D_Cnts(IPntCldListener* pListener, const std::vector<zor::geom::PNT_2D>& outer,
                         const std::vector<std::vector<zor::geom::PNT_2D>>& holes) const;

    /// @return a search distance suited to the cloud's density: five times the mean plan spacing of its
    ///         points, at least 1, coordinate units; 1.7e200, no limit, without an octree or points.
    double CalcMaxSearchDist() const;

    // --- analysis ------------------------------------------------------------------------------

    /// Finds the outline of the cloud in plan view and delivers its corners, points of the cloud, in
    /// walking order, one a call: from the westernmost point, which comes again at the end, northwards with
    /// the cluster on the right; clockwise but for a few odd small clusters.
    ///
    /// @param pProgress  receives percent, one call a point; null: no calls.
    /// @param pListener  receives the corners; not null. Nothing is delivered unless true is returned.
    /// @param d          coordinate units: points at most so far apart in plan view belong together.
    ///                   Only the largest such cluster is outlined; below about three times the mean
    ///                   spacing a cloud may fall into several. The outline cuts across notches of up
    ///                   to ten times that width. Infinite or not-a-number: no limit. 0: no outline.
    ///
    /// @return false when there is no octree or no closed outline: two points or fewer, a cloud of a few
    ///         units of 1/10000, or nothing strictly north of the cluster's westernmost point within reach.
    ///
    /// One SetZRange to the colour listener, if there is an octree. The cloud is not changed.
    /// Cost: about one look at each point's neighbourhood; memory: up to 5 bytes a point.
    bool CalcCnt(IDlgProgress* pProgress, IPntCldListener* pListener, double d) const;

    /// Reduces the cloud to its ground points: a progressive morphological filter ("A
    /// Progressive Morphological Filter for Removing Nonground Measurements From Airborne LIDAR Data", 2003)
    /// with windows up to 20 coordinate units, slope 1, and heights from 0.5 to 3 above the opened surface.
    ///
    /// @param pListener  told of the progress; null: no calls.
    ///
    /// The points that stay keep their colours; octree, indices and marks are new, the cloud is modified
    /// and takes no further points. Coordinates go into the filter as floats. Points marked deleted are to
    /// be removed before. A cloud without ground, or without points, ends up empty.
    void Morph(IPclProgressListener* pListener);

private:
    friend struct CCldStores; // what stands beside the class reads its stores

    ZOR4DATA_LOCAL bool ReadFromFile(const zor::String& sPath, IDlgProgress* pProgress = nullptr);
    ZOR4DATA_LOCAL bool WriteToFile(ofpstream& stream);

    enumPntCldType m_eType;
    COcTree<CTruncPnt> m_cld;            // live when the type is PntCldType_Pnt
    COcTree<CTruncPnt_Color> m_cldColor; // live when the type is PntCldType_PntColor
    enumPntCldFile m_eFileType;
    zor::String m_sFilePath;
};

#endif
