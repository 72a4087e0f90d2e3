#include <host/picture/CCamera.h>

#include <cmath>

namespace zorcld
{

CCamera::CCamera(double dAzimuth, double dElevation)
{
    constexpr double c_dRadian = 3.14159265358979323846 / 180.0;
    const double dSinA = std::sin(dAzimuth * c_dRadian);
    const double dCosA = std::cos(dAzimuth * c_dRadian);
    const double dSinE = std::sin(dElevation * c_dRadian);
    const double dCosE = std::cos(dElevation * c_dRadian);
    m_viewer = {dSinA * dCosE, dCosA * dCosE, dSinE};
    m_right = {-dCosA, dSinA, 0.0};
    m_up = {-dSinA * dSinE, -dCosA * dSinE, dCosE}; // the vector product of viewer and right
}

} // namespace zorcld
