#ifndef ZOR4DATA_CGROUNDSCALE_H
#define ZOR4DATA_CGROUNDSCALE_H

/// How many metres the ground filter, whose sizes are in metres, is to take a coordinate unit for.
struct CGroundScale
{
    double dPlan = 1.0;   ///< of x and y; above 0
    double dHeight = 1.0; ///< of z; above 0

    /// @return whether coordinates go into the filter as they are.
    bool IsOne() const { return dPlan == 1.0 && dHeight == 1.0; }
};

#endif
