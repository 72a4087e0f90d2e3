#ifndef HOST_FILES_CFILECOLORS_H
#define HOST_FILES_CFILECOLORS_H

#include <zor4data/ICldColorListener.h>

namespace zorcld
{

/// Leaves points in the colours of their file.
class CFileColors final : public ICldColorListener
{
public:
    void GetColor(double, float&, float&, float&) override {}
    void SetZRange(double, double) override {}
};

} // namespace zorcld

#endif
