#ifndef ZOR4DATA_ICLDCOLORLISTENER_H
#define ZOR4DATA_ICLDCOLORLISTENER_H

/// Maps points to display colours. Implemented by the host and given to the constructor of `CPntCld`.
class ICldColorListener
{
public:
    /// Called once for every point that is made into a `CCldCadPnt`.
    ///
    /// @param z  height of the point, coordinate units.
    /// @param r  red of the display colour; each channel is 0 to 1. On entry the stored colour of a point
    ///           with colour, else whatever the record held; on return the colour to deliver.
    /// @param g  green.
    /// @param b  blue.
    virtual void GetColor(double z, float& r, float& g, float& b) = 0;

    /// Called at the start of every query, before its first `GetColor`, with the height range of the
    /// cloud's bounding box, coordinate units (1.7e200 both when the cloud has no octree).
    virtual void SetZRange(double zMin, double zMax) = 0;

protected:
    ~ICldColorListener() = default;
};

#endif
