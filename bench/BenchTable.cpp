#include <bench/BenchTable.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <memory>

namespace
{

std::vector<std::pair<std::string, void (*)()>>& GetGroups()
{
    static std::vector<std::pair<std::string, void (*)()>> vecGroups;
    return vecGroups;
}

/// What the rounds of one row gave.
struct CRowResult
{
    std::string sItem;
    std::int64_t nNum = 0;
    std::string sPeer;
    std::string sUnit;
    double dBar = 0.0;
    double dPerUnits = 0.0;
    bool bSame = true;
    std::vector<double> vecProduct;
    std::vector<double> vecPeer;
};

std::map<std::string, CRowResult>& GetResults()
{
    static std::map<std::string, CRowResult> mapResults;
    return mapResults;
}

std::vector<std::string>& GetOrder()
{
    static std::vector<std::string> vecOrder;
    return vecOrder;
}

double CalcMedian(std::vector<double> vec)
{
    if (vec.empty())
        return 0.0;
    std::sort(vec.begin(), vec.end());
    const std::size_t nMid = vec.size() / 2;
    return vec.size() % 2 == 1 ? vec[nMid] : (vec[nMid - 1] + vec[nMid]) / 2.0;
}

double CalcMin(const std::vector<double>& vec)
{
    return vec.empty() ? 0.0 : *std::min_element(vec.begin(), vec.end());
}

CRowResult& MakeResult(const std::string& sName, const std::string& sItem, std::int64_t nNum, double dBar)
{
    GetOrder().push_back(sName);
    CRowResult& result = GetResults()[sName];
    result.sItem = sItem;
    result.nNum = nNum;
    result.dBar = dBar;
    return result;
}

/// One round: product, then peer.
void RunRound(benchmark::State& state, const CBenchRow& row, CRowResult& result)
{
    for (auto _ : state)
    {
        CCpuTimer timerProduct;
        const std::uint64_t nProduct = row.product(timerProduct);
        result.vecProduct.push_back(timerProduct.GetSeconds());
        state.SetIterationTime(timerProduct.GetSeconds());
        state.counters["product_s"] = timerProduct.GetSeconds();
        if (!row.peer)
            continue;
        CCpuTimer timerPeer;
        const std::uint64_t nPeer = row.peer(timerPeer);
        result.vecPeer.push_back(timerPeer.GetSeconds());
        state.counters["peer_s"] = timerPeer.GetSeconds();
        if (row.bSameResult && nProduct != nPeer)
        {
            result.bSame = false;
            state.SkipWithError("product and peer do not give the same result");
        }
    }
}

std::string FormatSeconds(double d)
{
    char text[32];
    if (d >= 1.0)
        std::snprintf(text, sizeof text, "%.2f s", d);
    else if (d >= 1e-3)
        std::snprintf(text, sizeof text, "%.2f ms", d * 1e3);
    else
        std::snprintf(text, sizeof text, "%.2f us", d * 1e6);
    return text;
}

/// The figure that the row's bar is about: a ratio, nanoseconds a unit, or a value.
double CalcFigure(const CRowResult& result)
{
    const double dProduct = CalcMedian(result.vecProduct);
    if (!result.vecPeer.empty())
        return dProduct / CalcMedian(result.vecPeer);
    return result.dPerUnits > 0.0 ? dProduct * 1e9 / result.dPerUnits : dProduct;
}

bool IsHeld(const CRowResult& result)
{
    return result.bSame && (result.dBar <= 0.0 || CalcFigure(result) <= result.dBar);
}

/// A range "min / median" of one side.
std::string FormatSide(const CRowResult& result, const std::vector<double>& vec)
{
    if (vec.empty())
        return "-";
    if (!result.sUnit.empty())
    {
        char text[48];
        std::snprintf(text, sizeof text, "%.2f %s", CalcMedian(vec), result.sUnit.c_str());
        return text;
    }
    return FormatSeconds(CalcMin(vec)) + " / " + FormatSeconds(CalcMedian(vec));
}

/// Three digits behind the point, or one divided by a whole number where these would say too little.
void FormatRatio(char* pText, std::size_t nSize, double dRatio)
{
    if (dRatio > 0.0 && dRatio < 0.02)
        std::snprintf(pText, nSize, "1/%.0f", 1.0 / dRatio);
    else
        std::snprintf(pText, nSize, "%.3f", dRatio);
}

void PrintRow(const CRowResult& result)
{
    char figure[32];
    if (result.dPerUnits > 0.0 && result.vecPeer.empty())
        std::snprintf(figure, sizeof figure, "%.2f ns", CalcFigure(result));
    else
        FormatRatio(figure, sizeof figure, CalcFigure(result));
    char bar[32];
    std::snprintf(bar, sizeof bar, "%.3g", result.dBar);
    const char* const pHeld = !result.bSame        ? "RESULTS DIFFER"
                              : result.dBar <= 0.0 ? ""
                              : IsHeld(result)     ? "yes"
                                                   : "NO";
    std::printf("| %s | %lld | %s | %s | %s | %s | %s | %s |\n", result.sItem.c_str(),
                static_cast<long long>(result.nNum), FormatSide(result, result.vecProduct).c_str(),
                result.sPeer.empty() ? "-" : result.sPeer.c_str(), FormatSide(result, result.vecPeer).c_str(),
                result.sUnit.empty() ? figure : "-", result.dBar > 0.0 ? bar : "-", pHeld);
}

/// Says one line a round while it runs, and the table when all is done.
class CTableReporter final : public benchmark::BenchmarkReporter
{
public:
    bool ReportContext(const Context&) override { return true; }

    void ReportRuns(const std::vector<Run>& runs) override
    {
        for (const Run& run : runs)
            if (run.run_type == Run::RT_Iteration)
                std::fprintf(stderr, "%s%s\n", run.benchmark_name().c_str(),
                             run.error_occurred ? (": " + run.error_message).c_str() : "");
    }

    void Finalize() override
    {
        std::printf(
            "| Item | N | product (min / median) | peer | peer (min / median) | ratio | bar | held |\n"
            "|---|---|---|---|---|---|---|---|\n");
        for (const std::string& sName : GetOrder())
            if (!GetResults()[sName].vecProduct.empty())
                PrintRow(GetResults()[sName]);
    }
};

int GetNumRounds(std::int64_t nNum)
{
    if (GetBenchOptions().bQuick)
        return 2;
    return nNum > 2000000 ? 5 : 9;
}

/// Takes this program's own options out of the arguments; the rest is Google Benchmark's.
void TakeOptions(std::vector<char*>& vecArgs, std::string& sGroup)
{
    std::vector<char*> vecRest{vecArgs[0]};
    for (std::size_t i = 1; i < vecArgs.size(); ++i)
    {
        const std::string sArg = vecArgs[i];
        if (sArg == "--quick")
            GetBenchOptions().bQuick = true;
        else if (sArg == "--points" && i + 1 < vecArgs.size())
            GetBenchOptions().nMaxPnts = std::atoll(vecArgs[++i]);
        else if (sArg.rfind("--", 0) == 0)
            vecRest.push_back(vecArgs[i]);
        else
            sGroup = sArg;
    }
    vecArgs = vecRest;
}

bool HasOut(const std::vector<char*>& vecArgs)
{
    return std::any_of(vecArgs.begin(), vecArgs.end(),
                       [](const char* pArg) { return std::strncmp(pArg, "--benchmark_out=", 16) == 0; });
}

} // namespace

CBenchOptions& GetBenchOptions()
{
    static CBenchOptions options;
    return options;
}

std::vector<std::int64_t> BenchSizes(std::vector<std::int64_t> vecDefault)
{
    const CBenchOptions& options = GetBenchOptions();
    std::int64_t nMax = options.nMaxPnts > 0 ? options.nMaxPnts : vecDefault.back();
    if (options.bQuick)
        nMax = std::min<std::int64_t>(nMax, 200000);
    for (std::int64_t& n : vecDefault)
        n = std::min(n, nMax);
    vecDefault.erase(std::unique(vecDefault.begin(), vecDefault.end()), vecDefault.end());
    return vecDefault;
}

void AddRow(CBenchRow row)
{
    const std::string sName = row.sGroup + "/" + row.sItem + "/" + std::to_string(row.nNum) + "/" + row.sPeer;
    CRowResult& result = MakeResult(sName, row.sItem, row.nNum, row.dBar);
    result.sPeer = row.sPeer;
    result.dPerUnits = row.dPerUnits;
    const int nRounds = row.nRounds > 0 ? row.nRounds : GetNumRounds(row.nNum);
    benchmark::RegisterBenchmark(sName.c_str(),
                                 [row, &result](benchmark::State& state) { RunRound(state, row, result); })
        ->Iterations(1)
        ->Repetitions(nRounds)
        ->UseManualTime();
}

void AddValue(CBenchValue value)
{
    const std::string sName = value.sGroup + "/" + value.sItem + "/" + std::to_string(value.nNum) + "/";
    CRowResult& result = MakeResult(sName, value.sItem, value.nNum, value.dBar);
    result.sUnit = value.sUnit;
    benchmark::RegisterBenchmark(sName.c_str(),
                                 [value, &result](benchmark::State& state)
                                 {
                                     for (auto _ : state)
                                     {
                                         const double d = value.value();
                                         result.vecProduct.push_back(d);
                                         state.counters[value.sUnit] = d;
                                     }
                                 })
        ->Iterations(1);
}

CBenchGroup::CBenchGroup(const char* pName, void (*fn)())
{
    GetGroups().emplace_back(pName, fn);
}

int RunBench(int argc, char** argv)
{
    std::vector<char*> vecArgs(argv, argv + argc);
    std::string sGroup;
    TakeOptions(vecArgs, sGroup);
    for (const auto& group : GetGroups())
        if (sGroup.empty() || sGroup == group.first)
            group.second();
    std::string sOut = "--benchmark_out=bench.json";
    std::string sFormat = "--benchmark_out_format=json";
    if (!HasOut(vecArgs))
        vecArgs.insert(vecArgs.end(), {sOut.data(), sFormat.data()});
    int nArgs = static_cast<int>(vecArgs.size());
    benchmark::Initialize(&nArgs, vecArgs.data());
    CTableReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    const auto& results = GetResults();
    return std::all_of(results.begin(), results.end(),
                       [](const auto& entry)
                       { return entry.second.vecProduct.empty() || IsHeld(entry.second); })
               ? 0
               : 1;
}
