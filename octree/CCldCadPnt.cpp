#include <zor4data/CCldCadPnt.h>

#include <octree/SetCadPnt.h>

CCldCadPnt::CCldCadPnt(const CTruncPnt& pnt, float fOrgX, float fOrgY, float fOrgZ, int nIndex,
                       ICldColorListener* pColorListener)
{
    Set(pnt, fOrgX, fOrgY, fOrgZ, nIndex, pColorListener);
}

CCldCadPnt::CCldCadPnt(const CTruncPnt_Color& pnt, float fOrgX, float fOrgY, float fOrgZ, int nIndex,
                       ICldColorListener* pColorListener)
{
    Set(pnt, fOrgX, fOrgY, fOrgZ, nIndex, pColorListener);
}

void CCldCadPnt::Set(const CTruncPnt& pnt, float fOrgX, float fOrgY, float fOrgZ, int nIndex,
                     ICldColorListener* pColorListener)
{
    SetCadPnt(*this, pnt, fOrgX, fOrgY, fOrgZ, nIndex, pColorListener);
}

void CCldCadPnt::Set(const CTruncPnt_Color& pnt, float fOrgX, float fOrgY, float fOrgZ, int nIndex,
                     ICldColorListener* pColorListener)
{
    SetCadPnt(*this, pnt, fOrgX, fOrgY, fOrgZ, nIndex, pColorListener);
}
