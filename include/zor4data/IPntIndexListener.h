#ifndef ZOR4DATA_IPNTINDEXLISTENER_H
#define ZOR4DATA_IPNTINDEXLISTENER_H

#include <cstdint>

/// Receives the indices of the points that a query finds. Implemented by the host, called on the thread of
/// the query.
class IPntIndexListener
{
public:
    /// @param nNumPnts  number of indices in this batch, at least 1.
    /// @param pIndices  positions in the cloud's current array, one after the other. The array belongs to the
    ///                  query, which fills it anew after the call: copy what is to be kept.
    virtual void OnIndices(int nNumPnts, const std::int32_t* pIndices) = 0;

    /// The query is at work: called about every tenth of a millisecond where it compares points with many
    /// planes or edges, whether it finds any or not. To stop it, throw.
    virtual void OnWork() {}

protected:
    ~IPntIndexListener() = default;
};

#endif
