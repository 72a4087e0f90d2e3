#ifndef ZOR4DATA_IDLGPROGRESS_H
#define ZOR4DATA_IDLGPROGRESS_H

/// Progress display of the host. The library calls `SetPos` only; `Start` and `Stop` are the host's own.
class IDlgProgress
{
public:
    virtual void Start() = 0; ///< not called by the library
    virtual void Stop() = 0;  ///< not called by the library

    /// @param nPos  work done so far, percent: 0 to 100, but beyond it where a file holds more points than it
    ///              announces. Never negative.
    /// @return not looked at: an operation is cancelled with an exception, which may leave this slot as any
    ///         other.
    virtual bool SetPos(int nPos) = 0;

protected:
    ~IDlgProgress() = default;
};

#endif
