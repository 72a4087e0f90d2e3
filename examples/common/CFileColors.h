#ifndef EXAMPLES_CFILECOLORS_H
#define EXAMPLES_CFILECOLORS_H

#include <zor4data/ICldColorListener.h>

/// Leaves points the colours they have; those of a cloud without colour come white.
class CFileColors final : public ICldColorListener
{
public:
    void GetColor(double, float&, float&, float&) override {}
    void SetZRange(double, double) override {}
};

#endif
