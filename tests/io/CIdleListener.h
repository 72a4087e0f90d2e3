#ifndef TESTS_IO_CIDLELISTENER_H
#define TESTS_IO_CIDLELISTENER_H

#include <zor4data/IPntCldReadListener.h>

/// Takes points and keeps none: the count that a file announces cannot be too large for it.
class CIdleListener final : public IPntCldReadListener
{
public:
    void OnReadType(enumPntCldType) override {}
    void OnReadNumPnts(int) override {}
    void OnReadPnt(double, double, double, unsigned char, unsigned char, unsigned char) override {}
    void OnReadPnt(double, double, double) override {}
    void OnReadEnd() override {}
};

#endif
