#ifndef ZOR4DATA_IPNTCLDREADLISTENER_H
#define ZOR4DATA_IPNTCLDREADLISTENER_H

#include <zor4data/enumPntCldType.h>

/// Receives the points of a file. A reader calls `OnReadType`, `OnReadNumPnts`, one `OnReadPnt` a
/// point (all of one form) and `OnReadEnd`; a reader that fails on the way leaves `OnReadEnd` out.
class IPntCldReadListener
{
public:
    /// The first call.
    /// @param eType  says which of the two forms of OnReadPnt will be called.
    virtual void OnReadType(enumPntCldType eType) = 0;

    /// @param nNumPnts  the number of points that the file announces.
    virtual void OnReadNumPnts(int nNumPnts) = 0;

    /// One point with colour: coordinate units, 0 to 255 a channel.
    virtual void OnReadPnt(double x, double y, double z, unsigned char r, unsigned char g,
                           unsigned char b) = 0;

    /// One point without colour: coordinate units.
    virtual void OnReadPnt(double x, double y, double z) = 0;

    /// All points have been delivered.
    virtual void OnReadEnd() = 0;

protected:
    ~IPntCldReadListener() = default;
};

#endif
