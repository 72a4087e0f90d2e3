#include <zor4data/CPntCld.h>

#include <cloud/ForStore.h>
#include <octree/StorePnt.h>

#include <utility>

CPntCld::CPntCld(ICldColorListener* pColorListener)
    : m_eType(static_cast<enumPntCldType>(-1)), m_cld(pColorListener), m_cldColor(pColorListener),
      m_eFileType(static_cast<enumPntCldFile>(-1))
{
}

CPntCld::CPntCld(const CPntCld& other) = default;
CPntCld::~CPntCld() = default;

CPntCld& CPntCld::operator=(const CPntCld& other)
{
    zor::String sFilePath = other.m_sFilePath; // the only copy that can fail is made first
    m_eType = other.m_eType;
    m_cld = other.m_cld;
    m_cldColor = other.m_cldColor;
    m_eFileType = other.m_eFileType;
    m_sFilePath = std::move(sFilePath);
    return *this;
}

// --- filling -----------------------------------------------------------------------------------

void CPntCld::OnReadType(enumPntCldType eType)
{
    m_eType = eType;
}

bool CPntCld::Init(int nNumPnts)
{
    return ForStore(m_eType, m_cld, m_cldColor, false, [=](auto& store) { return store.Init(nNumPnts); });
}

void CPntCld::OnReadNumPnts(int nNumPnts)
{
    Init(nNumPnts);
}

bool CPntCld::AddPnt(double x, double y, double z)
{
    // KEPT: on a cloud with colour the point becomes green (AddPnt_WithoutColourIsGreen_Kept).
    return AddPnt(x, y, z, 0, 255, 0);
}

bool CPntCld::AddPnt(double x, double y, double z, unsigned char r, unsigned char g, unsigned char b)
{
    if (m_eType == PntCldType_Pnt)
        return StorePnt(m_cld, x, y, z);
    return m_eType == PntCldType_PntColor && StorePnt(m_cldColor, x, y, z, r, g, b);
}

// KEPT: unlike AddPnt, a point of the wrong kind is ignored (OnReadPnt_OfTheWrongKindIsIgnored_Kept).
void CPntCld::OnReadPnt(double x, double y, double z)
{
    if (m_eType == PntCldType_Pnt)
        StorePnt(m_cld, x, y, z);
}

void CPntCld::OnReadPnt(double x, double y, double z, unsigned char r, unsigned char g, unsigned char b)
{
    if (m_eType == PntCldType_PntColor)
        StorePnt(m_cldColor, x, y, z, r, g, b);
}

void CPntCld::OnReadEnd()
{
    ForStore(m_eType, m_cld, m_cldColor, [](auto& store) { store.FinishReading(); });
}

bool CPntCld::ComputeTree()
{
    return ForStore(m_eType, m_cld, m_cldColor, false, [](auto& store) { return store.ComputeTree(); });
}

void CPntCld::Clear()
{
    ForStore(m_eType, m_cld, m_cldColor, [](auto& store) { store.Clear(); });
}

// --- access ------------------------------------------------------------------------------------

int CPntCld::GetNumPnts() const
{
    return ForStore(m_eType, m_cld, m_cldColor, 0, [](const auto& store) { return store.GetNumPnts(); });
}

void CPntCld::GetPnt(int nIndex, zor::geom::PNT_3D& pnt) const
{
    ForStore(m_eType, m_cld, m_cldColor,
             [&](const auto& store)
             {
                 const auto& rec = store.m_pPnts.get()[nIndex];
                 pnt.x = CoordFromCompact(rec.m_nX, store.m_fOrgX);
                 pnt.y = CoordFromCompact(rec.m_nY, store.m_fOrgY);
                 pnt.z = CoordFromCompact(rec.m_nZ, store.m_fOrgZ);
             });
}

bool CPntCld::GetPntColor(int nIndex, unsigned char& r, unsigned char& g, unsigned char& b) const
{
    if (!IsWithColor())
        return false;
    const CTruncPnt_Color& rec = m_cldColor.m_pPnts.get()[nIndex];
    r = rec.m_ucR;
    g = rec.m_ucG;
    b = rec.m_ucB;
    return true;
}

bool CPntCld::GetBdry(zor::geom::RECT_3D& rect) const
{
    return ForStore(m_eType, m_cld, m_cldColor, false,
                    [&](const auto& store) { return store.GetBdry(rect); });
}

bool CPntCld::IsWithColor() const
{
    return m_eType == PntCldType_PntColor;
}

ICldColorListener* CPntCld::GetColorListener() const
{
    ICldColorListener* const pNone = nullptr;
    return ForStore(m_eType, m_cld, m_cldColor, pNone,
                    [](const auto& store) { return store.m_pColorListener; });
}

enumPntCldFile CPntCld::GetFileType() const
{
    return m_eFileType;
}

zor::String CPntCld::GetFilePath() const
{
    return m_sFilePath;
}

bool CPntCld::IsModified() const
{
    return ForStore(m_eType, m_cld, m_cldColor, false, [](const auto& store) { return store.m_bModified; });
}

void CPntCld::SetModified(bool bModified)
{
    ForStore(m_eType, m_cld, m_cldColor, [=](auto& store) { store.SetModified(bModified); });
}

int CPntCld::GetVersion() const
{
    return ForStore(m_eType, m_cld, m_cldColor, -1, [](const auto& store) { return store.m_nVersion; });
}

void CPntCld::SetVersion(int nVersion)
{
    ForStore(m_eType, m_cld, m_cldColor, [=](auto& store) { store.m_nVersion = nVersion; });
}

// --- selection ---------------------------------------------------------------------------------

void CPntCld::SelPnt(int nIndex, bool bToggle)
{
    ForStore(m_eType, m_cld, m_cldColor, [=](auto& store) { store.SelPnt(nIndex, bToggle); });
}

void CPntCld::UnSelPnts()
{
    ForStore(m_eType, m_cld, m_cldColor, [](auto& store) { store.UnSelPnts(); });
}

void CPntCld::DelSelPnts()
{
    ForStore(m_eType, m_cld, m_cldColor, [](auto& store) { store.DelSelPnts(); });
}
