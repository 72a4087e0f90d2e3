#ifndef HOST_PICTURE_CVIEWCOLORS_H
#define HOST_PICTURE_CVIEWCOLORS_H

#include <host/picture/HeightRamp.h>
#include <zor4data/ICldColorListener.h>

namespace zorcld
{

/// Colours of a picture: the file's, or by height.
class CViewColors final : public ICldColorListener
{
public:
    void SetByHeight(bool bByHeight) { m_bByHeight = bByHeight; }
    bool IsByHeight() const { return m_bByHeight; }
    CHeightColors& GetHeightColors() { return m_heights; }

    void GetColor(double z, float& r, float& g, float& b) override
    {
        if (m_bByHeight)
            m_heights.GetColor(z, r, g, b);
    }
    void SetZRange(double, double) override {}

private:
    bool m_bByHeight = false;
    CHeightColors m_heights;
};

} // namespace zorcld

#endif
