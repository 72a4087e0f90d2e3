#ifndef HOST_PICTURE_HEIGHTRAMP_H
#define HOST_PICTURE_HEIGHTRAMP_H

#include <host/picture/CRgb.h>
#include <zor4data/ICldColorListener.h>

namespace zorcld
{

/// Colour of a share of the height range, 0 (low, dark blue) to 1 (high, cream); lightness rises all the
/// way, so that it reads in grey too. Below 0 and above 1 the end colours hold.
CRgb CalcHeightColor(double dShare);

/// Colours points by height over a range that the host sets.
class CHeightColors final : public ICldColorListener
{
public:
    void SetRange(double zMin, double zMax);
    double GetMin() const { return m_zMin; }
    double GetMax() const { return m_zMax; }

    void GetColor(double z, float& r, float& g, float& b) override;
    void SetZRange(double, double) override {} // the cloud's own range has its outliers in it

private:
    double m_zMin = 0.0;
    double m_zMax = 1.0;
};

} // namespace zorcld

#endif
