#ifndef HOST_PICTURE_CVIEWCOLORS_H
#define HOST_PICTURE_CVIEWCOLORS_H

#include <formats/CLasAttributes.h>
#include <host/picture/HeightRamp.h>
#include <zor4data/ICldColorListener.h>

namespace zorcld
{

/// Colours of a picture: the file's, by height, or by an attribute that stands in the place of the file's.
class CViewColors final : public ICldColorListener
{
public:
    void SetByHeight(bool bByHeight) { m_bByHeight = bByHeight; }
    bool IsByHeight() const { return m_bByHeight; }
    CHeightColors& GetHeightColors() { return m_heights; }

    /// @param eAttribute  what the cloud has in the place of colours.
    void SetAttribute(enumLasAttribute eAttribute) { m_eAttribute = eAttribute; }
    enumLasAttribute GetAttribute() const { return m_eAttribute; }

    /// The intensities that the darkest and the lightest grey stand for.
    void SetIntensities(double dMin, double dMax);

    void GetColor(double z, float& r, float& g, float& b) override;
    void SetZRange(double, double) override {}

private:
    CRgb CalcColor(std::uint16_t nAttribute) const;

    bool m_bByHeight = false;
    enumLasAttribute m_eAttribute = LasAttribute_None;
    CHeightColors m_heights;
    double m_dMinIntensity = 0.0;
    double m_dMaxIntensity = 1.0;
};

} // namespace zorcld

#endif
