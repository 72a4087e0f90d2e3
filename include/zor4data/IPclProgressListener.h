#ifndef ZOR4DATA_IPCLPROGRESSLISTENER_H
#define ZOR4DATA_IPCLPROGRESSLISTENER_H

/// Progress sink of the ground filter, implemented by the host.
class IPclProgressListener
{
public:
    /// @param nPos  work done so far, percent: from 0 to 100, never falling, 100 at the end.
    virtual void OnProgress(int nPos) = 0;

protected:
    ~IPclProgressListener() = default;
};

#endif
