#ifndef TESTS_ANALYSIS_OUTLINE_CPROGRESSRECORDER_H
#define TESTS_ANALYSIS_OUTLINE_CPROGRESSRECORDER_H

#include <zor4data/IDlgProgress.h>

#include <vector>

/// Records the calls; the library is to make no other than SetPos.
class CProgressRecorder final : public IDlgProgress
{
public:
    void Start() override { ++m_nNumOthers; }
    void Stop() override { ++m_nNumOthers; }

    bool SetPos(int nPos) override
    {
        m_vecPos.push_back(nPos);
        return m_vecPos.size() % 2 == 0; // nobody looks at it
    }

    const std::vector<int>& GetPos() const { return m_vecPos; }
    int GetNumOthers() const { return m_nNumOthers; }

private:
    std::vector<int> m_vecPos;
    int m_nNumOthers = 0;
};

#endif
