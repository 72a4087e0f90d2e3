#ifndef ZOR4DATA_CCLDCADPNT_H
#define ZOR4DATA_CCLDCADPNT_H

#include <zor3geom/PNT_3D.h>
#include <zor4data/Export.h>

#include <cstdint>

class CTruncPnt;
class CTruncPnt_Color;
class ICldColorListener;

/// A point as it reaches the host: a plain record, copied by value.
class CCldCadPnt
{
public:
    /// Sets all fields to their defaults.
    CCldCadPnt() = default;

    /// Sets the defaults, then calls `Set` with the same arguments.
    ZOR4DATA_API CCldCadPnt(const CTruncPnt& pnt, float fOrgX, float fOrgY, float fOrgZ, int nIndex,
                            ICldColorListener* pColorListener);

    /// The same with a compact point that has a colour.
    ZOR4DATA_API CCldCadPnt(const CTruncPnt_Color& pnt, float fOrgX, float fOrgY, float fOrgZ, int nIndex,
                            ICldColorListener* pColorListener);

    /// Sets all fields back to their defaults.
    void Init() { *this = CCldCadPnt(); }

    /// Takes over a compact point of a store: its coordinates, its colour if it has one (else the
    /// colour of the record stays as it is), its index; then asks the colour listener. `m_bSel` stays.
    ///
    /// @param pnt             the compact point.
    /// @param fOrgX           origin of the store along x, coordinate units.
    /// @param fOrgY           along y.
    /// @param fOrgZ           along z.
    /// @param nIndex          position of the point in the store's current array.
    /// @param pColorListener  called once with the height and the colour; null is not called.
    ZOR4DATA_API void Set(const CTruncPnt& pnt, float fOrgX, float fOrgY, float fOrgZ, int nIndex,
                          ICldColorListener* pColorListener);

    /// The same with a compact point that has a colour.
    ZOR4DATA_API void Set(const CTruncPnt_Color& pnt, float fOrgX, float fOrgY, float fOrgZ, int nIndex,
                          ICldColorListener* pColorListener);

    zor::geom::PNT_3D m_pnt;    ///< coordinate units; 1.7e200 each until set
    float m_fR = 1.0F;          ///< display colour, 0 to 1
    float m_fG = 1.0F;          ///< display colour, 0 to 1
    float m_fB = 1.0F;          ///< display colour, 0 to 1
    std::int32_t m_nIndex = -1; ///< position in the store's current array; -1 until set
    bool m_bSel = false;        ///< the point is selected
};

#endif
