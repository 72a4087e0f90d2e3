#ifndef SUPPORT_CNOCOLORS_H
#define SUPPORT_CNOCOLORS_H

#include <zor4data/ICldColorListener.h>

/// A host without colours: the cheapest one there can be.
class CNoColors final : public ICldColorListener
{
public:
    void GetColor(double, float&, float&, float&) override {}
    void SetZRange(double, double) override {}
};

#endif
