#include <host/picture/CViewColors.h>

#include <host/output/AttributeBytes.h>
#include <host/output/ByteFromShare.h>
#include <host/picture/AttributeColors.h>

namespace zorcld
{

void CViewColors::SetIntensities(double dMin, double dMax)
{
    m_dMinIntensity = dMin;
    m_dMaxIntensity = dMax;
}

CRgb CViewColors::CalcColor(std::uint16_t nAttribute) const
{
    if (m_eAttribute == LasAttribute_Class)
        return CalcClassColor(static_cast<std::uint8_t>(nAttribute));
    if (m_eAttribute == LasAttribute_Return)
        return CalcReturnColor(nAttribute);
    const double dRange = m_dMaxIntensity - m_dMinIntensity;
    return CalcGrey(dRange > 0.0 ? (nAttribute - m_dMinIntensity) / dRange : 0.5);
}

void CViewColors::GetColor(double z, float& r, float& g, float& b)
{
    if (m_eAttribute != LasAttribute_None)
    {
        const CRgb color = CalcColor(AttributeFromBytes(static_cast<unsigned char>(ByteFromShare(r)),
                                                        static_cast<unsigned char>(ByteFromShare(g))));
        r = color.r / 255.0F;
        g = color.g / 255.0F;
        b = color.b / 255.0F;
    }
    else if (m_bByHeight)
        m_heights.GetColor(z, r, g, b);
}

} // namespace zorcld
