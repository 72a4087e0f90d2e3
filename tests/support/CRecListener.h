#ifndef SUPPORT_CRECLISTENER_H
#define SUPPORT_CRECLISTENER_H

#include <zor4data/CCldCadPnt.h>
#include <zor4data/ICldColorListener.h>
#include <zor4data/IPntCldListener.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

/// The calls that a host sees, in their order over all of its listeners.
class CCallLog
{
public:
    static constexpr int c_nSetZRange = -1;
    static constexpr int c_nGetColor = 0; // a call of OnPnts is logged as its number of points, at least 1

    void Add(int nCall) { m_vecCalls.push_back(nCall); }
    const std::vector<int>& GetCalls() const { return m_vecCalls; }

    /// @return "Z" for SetZRange, "c" for GetColor, "P3" for OnPnts with three points.
    std::string GetText() const
    {
        std::string sText;
        for (const int nCall : m_vecCalls)
            sText += nCall == c_nSetZRange  ? std::string("Z")
                     : nCall == c_nGetColor ? std::string("c")
                                            : "P" + std::to_string(nCall);
        return sText;
    }

private:
    std::vector<int> m_vecCalls;
};

/// Records what a query delivers. With `SetSpoil` it also writes into the records it is given, as a host
/// may: their colours become (0.125, 0.25, 0.375).
class CRecListener final : public IPntCldListener
{
public:
    explicit CRecListener(CCallLog* pLog = nullptr) : m_pLog(pLog) {}

    void OnPnts(int nNumPnts, CCldCadPnt* pPnts) override
    {
        if (m_pLog != nullptr)
            m_pLog->Add(nNumPnts);
        m_vecBatches.push_back(nNumPnts);
        m_vecPnts.insert(m_vecPnts.end(), pPnts, pPnts + nNumPnts);
        for (int i = 0; m_bSpoil && i < nNumPnts; ++i)
        {
            pPnts[i].m_fR = 0.125F;
            pPnts[i].m_fG = 0.25F;
            pPnts[i].m_fB = 0.375F;
        }
    }

    void SetSpoil() { m_bSpoil = true; }

    int GetNumPnts() const { return static_cast<int>(m_vecPnts.size()); }
    const std::vector<int>& GetBatches() const { return m_vecBatches; }
    const std::vector<CCldCadPnt>& GetPnts() const { return m_vecPnts; }

    std::vector<int> GetIndices() const
    {
        std::vector<int> vecIndices;
        for (const CCldCadPnt& pnt : m_vecPnts)
            vecIndices.push_back(pnt.m_nIndex);
        return vecIndices;
    }

    std::vector<int> GetSortedIndices() const
    {
        std::vector<int> vecIndices = GetIndices();
        std::sort(vecIndices.begin(), vecIndices.end());
        return vecIndices;
    }

private:
    CCallLog* m_pLog;
    bool m_bSpoil = false;
    std::vector<int> m_vecBatches;
    std::vector<CCldCadPnt> m_vecPnts;
};

/// Records the calls of the colour listener. With `SetAlter` it changes every colour by a fixed rule.
class CRecColorListener final : public ICldColorListener
{
public:
    /// What a call of GetColor came with.
    struct CEntry
    {
        double z;
        float r;
        float g;
        float b;
    };

    explicit CRecColorListener(CCallLog* pLog = nullptr) : m_pLog(pLog) {}

    void GetColor(double z, float& r, float& g, float& b) override
    {
        if (m_pLog != nullptr)
            m_pLog->Add(CCallLog::c_nGetColor);
        m_vecEntries.push_back({z, r, g, b});
        if (m_bAlter)
            Alter(z, r, g, b);
    }

    void SetZRange(double zMin, double zMax) override
    {
        if (m_pLog != nullptr)
            m_pLog->Add(CCallLog::c_nSetZRange);
        m_vecRanges.emplace_back(zMin, zMax);
    }

    /// Each channel depends on what it held, so that a record's history shows.
    static void Alter(double z, float& r, float& g, float& b)
    {
        r = r * 0.5F + (z > 0.0 ? 0.25F : 0.125F);
        g = 1.0F - g * 0.75F;
        b = b * 0.25F + 0.5F;
    }

    void SetAlter() { m_bAlter = true; }

    const std::vector<CEntry>& GetEntries() const { return m_vecEntries; }
    const std::vector<std::pair<double, double>>& GetRanges() const { return m_vecRanges; }

private:
    CCallLog* m_pLog;
    bool m_bAlter = false;
    std::vector<CEntry> m_vecEntries;
    std::vector<std::pair<double, double>> m_vecRanges;
};

#endif
