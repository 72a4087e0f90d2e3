#ifndef ANSWERS_QUESTIONS_H
#define ANSWERS_QUESTIONS_H

#include <tests/answers/CHash.h>
#include <zor4data/CPntCld.h>

/// What the host's listeners get, as a hash: every call in its order with all that it carries. Heights become
/// colours by a plain rule.
class CAnswer final : public IPntCldListener,
                      public ICldColorListener,
                      public IDlgProgress,
                      public IPclProgressListener
{
public:
    void OnPnts(int nNumPnts, CCldCadPnt* pPnts) override;
    void GetColor(double z, float& r, float& g, float& b) override;
    void SetZRange(double zMin, double zMax) override;
    void Start() override {}
    void Stop() override {}
    bool SetPos(int) override { return true; }
    void OnProgress(int) override {}

    /// @return the hash of all since the last call.
    CHash Take();

    CHash m_hash;
};

struct CQuestion
{
    const char* sName;
    void (*pAsk)(CPntCld& cld, CAnswer& answer); ///< `answer` is the cloud's colour listener, too
};

/// What is asked of each cloud: the array, the tree, the file, the queries, the outline, the ground.
extern const CQuestion c_aQuestions[];
extern const int c_nNumQuestions;

#endif
