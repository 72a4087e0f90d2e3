#include <octree/COcTreeData.h>

#include <formats/Compact.h>
#include <octree/COcTreeIndex.h>
#include <octree/CTruncPnt.h>
#include <octree/CTruncPnt_Color.h>

template <class T>
COcTreeData<T>::COcTreeData(ICldColorListener* pColorListener) : m_pColorListener(pColorListener)
{
}

// What a copy counts (m_bHasDel) and what it delivers (the bits) must not part: since the flag is the copy's
// own, the bits that it stands for are so too, from the first mark on.
template <class T>
void COcTreeData<T>::MarkDeleted(std::int32_t nIndex)
{
    if (m_pDelBits.use_count() > 1)
        m_pDelBits = CPntBits::MakeCopy(m_pDelBits.get(), m_nNumPnts);
    CPntBits::Set(m_pDelBits.get(), nIndex);
    m_bHasDel = true;
    SetModified(true);
}

template <class T>
void COcTreeData<T>::SetModified(bool bModified) noexcept
{
    if (bModified && !m_bModified)
        m_nVersion = WrapAdd(m_nVersion, 1);
    m_bModified = bModified;
}

template <class T>
bool COcTreeData<T>::GetBdry(zor::geom::RECT_3D& rect) const noexcept
{
    if (m_pTree == nullptr)
        return false;
    const auto calcCoord = [](std::int64_t nCentre, std::int64_t nOffset, float fOrg)
    { return static_cast<double>(nCentre + nOffset) / c_dCompactScale + static_cast<double>(fOrg); };
    const COcTreeIndex& tree = *m_pTree;
    // KEPT: centre and half extents are whole units, truncated: a side may lie up to two units off
    // (GetBdry_HalvesWithTruncation_Kept).
    const std::int64_t nHalfX = tree.m_nExtentX / 2;
    const std::int64_t nHalfY = tree.m_nExtentY / 2;
    const std::int64_t nHalfZ = tree.m_nExtentZ / 2;
    rect = zor::geom::RECT_3D(
        calcCoord(tree.m_nCentreX, -nHalfX, m_fOrgX), calcCoord(tree.m_nCentreY, -nHalfY, m_fOrgY),
        calcCoord(tree.m_nCentreZ, -nHalfZ, m_fOrgZ), calcCoord(tree.m_nCentreX, nHalfX, m_fOrgX),
        calcCoord(tree.m_nCentreY, nHalfY, m_fOrgY), calcCoord(tree.m_nCentreZ, nHalfZ, m_fOrgZ));
    return true;
}

template class COcTreeData<CTruncPnt>;
template class COcTreeData<CTruncPnt_Color>;
