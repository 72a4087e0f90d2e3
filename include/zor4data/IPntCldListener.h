#ifndef ZOR4DATA_IPNTCLDLISTENER_H
#define ZOR4DATA_IPNTCLDLISTENER_H

class CCldCadPnt;

/// Receives the points that a query finds. Implemented by the host, called on the thread of the query.
class IPntCldListener
{
public:
    /// @param nNumPnts  number of records in this batch, at least 1.
    /// @param pPnts     the records, one after the other. The array belongs to the query, which fills
    ///                  it anew after the call: copy what is to be kept.
    virtual void OnPnts(int nNumPnts, CCldCadPnt* pPnts) = 0;

protected:
    ~IPntCldListener() = default;
};

#endif
