#include <zor3geom/CGeosRegion.h>

#include <geos_c.h>

namespace zor::geom
{

void CGeosRegion::CDestroy::operator()(GEOSGeom_t* pGeometry) const noexcept
{
    GEOSGeom_destroy_r(m_pContext, pGeometry);
}

} // namespace zor::geom
