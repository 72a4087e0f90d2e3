#ifndef ZOR3GEOM_CGEOSREGION_H
#define ZOR3GEOM_CGEOSREGION_H

#include <memory>

// Types of the GEOS library, whose header only the source file of `CGeos` includes.
struct GEOSGeom_t;
struct GEOSContextHandle_HS;

namespace zor::geom
{

/// Polygons with holes as GEOS holds them. Only the `CGeos` that made a region can do anything with it, and
/// it must outlive the region. A region by default is empty.
class CGeosRegion
{
public:
    CGeosRegion() = default;

    bool IsEmpty() const noexcept { return m_pGeometry == nullptr; }

private:
    friend class CGeos;

    class CDestroy
    {
    public:
        CDestroy() noexcept : m_pContext(nullptr) {}
        explicit CDestroy(GEOSContextHandle_HS* pContext) noexcept : m_pContext(pContext) {}
        void operator()(GEOSGeom_t* pGeometry) const noexcept;

    private:
        GEOSContextHandle_HS* m_pContext;
    };

    CGeosRegion(GEOSContextHandle_HS* pContext, GEOSGeom_t* pGeometry) noexcept
        : m_pGeometry(pGeometry, CDestroy(pContext))
    {
    }

    std::unique_ptr<GEOSGeom_t, CDestroy> m_pGeometry; // null for the empty region
};

} // namespace zor::geom

#endif
