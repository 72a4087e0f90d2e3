#include <io/ply/CPlyLayout.h>

CPlyLayout::CPlyLayout(const CPlyProperty* pProps, std::size_t nNumProps)
{
    CPlyOffsets anSize{}; // by role as well
    for (std::size_t i = 0; i < nNumProps; ++i)
    {
        const CPlyProperty& prop = pProps[i];
        m_bReadable = m_bReadable && prop.IsReadable();
        m_bFixed = m_bFixed && prop.IsReadable() && !prop.IsList();
        m_nLastSize = prop.IsReadable() && !prop.IsList() ? prop.GetSize() : 1;
        m_abHas[prop.eRole] = true;
        m_anOffset[prop.eRole] = m_nMinSize; // of two properties of one role the last counts
        anSize[prop.eRole] = m_nLastSize;
        m_nMinSize += m_nLastSize;
    }
    constexpr std::size_t c_nCoordSize = sizeof(float);
    m_bPlain = m_bFixed && anSize[PlyRole_X] >= c_nCoordSize && anSize[PlyRole_Y] >= c_nCoordSize &&
               anSize[PlyRole_Z] >= c_nCoordSize;
}

bool CPlyLayout::CanHold(std::int32_t nCount, long nNumBytes) const noexcept
{
    if (!m_bReadable)
        return false;
    // Divided, not multiplied: an item can be of any size.
    const std::size_t nWithCutOff = static_cast<std::size_t>(nNumBytes) + m_nLastSize - 1;
    return nNumBytes > 0 && nWithCutOff / m_nMinSize >= static_cast<std::size_t>(nCount);
}
