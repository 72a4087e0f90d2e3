#ifndef OCTREE_COCTREEDATA_H
#define OCTREE_COCTREEDATA_H

#include <octree/CPntBits.h>
#include <zor3geom/RECT_3D.h>

#include <cstdint>
#include <memory>

class COcTreeIndex;
class ICldColorListener;

/// The fields of one store of points: what the walks, the visitors and the files work on.
///
/// `T` is `CTruncPnt` or `CTruncPnt_Color`. Arrays, bit sets and tree are held by shared owners, L9: a
/// memberwise copy shares them, the other copies see a change made through one, deletion marks excepted, and
/// they go away with their last owner.
template <class T>
class COcTreeData
{
public:
    /// @param pColorListener  kept, not owned.
    explicit COcTreeData(ICldColorListener* pColorListener);

    /// @return whether the deleted bit of point `nIndex` is set.
    bool IsDeleted(std::int32_t nIndex) const noexcept { return CPntBits::IsSet(m_pDelBits.get(), nIndex); }

    /// @return whether the selection bit of point `nIndex` is set.
    bool IsSelected(std::int32_t nIndex) const noexcept { return CPntBits::IsSet(m_pSelBits.get(), nIndex); }

    /// Marks point `nIndex` deleted, and with it the store modified. L9: in this copy of the store alone.
    /// Throws std::bad_alloc; nothing has changed then.
    void MarkDeleted(std::int32_t nIndex);

    /// Sets the modified flag; the version counts the changes of the flag from false to true.
    void SetModified(bool bModified) noexcept;

    /// The box of the last build, coordinate units.
    /// @return false when there is no tree; `rect` is then left as it is.
    bool GetBdry(zor::geom::RECT_3D& rect) const noexcept;

    std::int32_t m_nNumPnts = 0;   ///< points of the store: as given to Init, later as kept by a compaction
    std::int32_t m_nNumAdded = 0;  ///< points stored since Init
    std::shared_ptr<T[]> m_pPnts;  ///< m_nNumPnts slots (at least one)
    float m_fOrgX = 4027580416.0F; ///< origin, coordinate units; L6: the first point stored replaces it
    float m_fOrgY = 4027580416.0F;
    float m_fOrgZ = 4027580416.0F;
    std::shared_ptr<unsigned char[]> m_pSelBits; ///< selection, L7: m_nNumPnts / 8 + 1 bytes
    std::shared_ptr<unsigned char[]> m_pDelBits; ///< deleted points, the same size; not changed while shared
    bool m_bHasDel = false;                      ///< a point has been marked deleted and not yet been removed
    std::shared_ptr<COcTreeIndex> m_pTree;
    ICldColorListener* m_pColorListener;
    bool m_bModified = false;
    std::int32_t m_nVersion = 0;
};

class CTruncPnt;
class CTruncPnt_Color;
extern template class COcTreeData<CTruncPnt>;
extern template class COcTreeData<CTruncPnt_Color>;

#endif
