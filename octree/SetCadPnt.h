#ifndef OCTREE_SETCADPNT_H
#define OCTREE_SETCADPNT_H

#include <formats/Compact.h>
#include <octree/CTruncPnt.h>
#include <octree/CTruncPnt_Color.h>
#include <zor4data/CCldCadPnt.h>
#include <zor4data/ICldColorListener.h>

/// KEPT: a point without colour leaves the record's colour as it is
/// (Set_WithoutColourKeepsWhatTheRecordHeld_Kept).
inline void SetCadPntColor(CCldCadPnt&, const CTruncPnt&) noexcept {}

inline void SetCadPntColor(CCldCadPnt& cadPnt, const CTruncPnt_Color& pnt) noexcept
{
    cadPnt.m_fR = static_cast<float>(pnt.m_ucR / 255.0);
    cadPnt.m_fG = static_cast<float>(pnt.m_ucG / 255.0);
    cadPnt.m_fB = static_cast<float>(pnt.m_ucB / 255.0);
}

/// `CCldCadPnt::Set`, open to the compiler where points are delivered by the million.
template <class T>
inline void SetCadPnt(CCldCadPnt& cadPnt, const T& pnt, float fOrgX, float fOrgY, float fOrgZ,
                      std::int32_t nIndex, ICldColorListener* pColorListener)
{
    cadPnt.m_pnt.x = CoordFromCompact(pnt.m_nX, fOrgX);
    cadPnt.m_pnt.y = CoordFromCompact(pnt.m_nY, fOrgY);
    cadPnt.m_pnt.z = CoordFromCompact(pnt.m_nZ, fOrgZ);
    SetCadPntColor(cadPnt, pnt);
    cadPnt.m_nIndex = nIndex;
    if (pColorListener != nullptr)
        pColorListener->GetColor(cadPnt.m_pnt.z, cadPnt.m_fR, cadPnt.m_fG, cadPnt.m_fB);
}

#endif
