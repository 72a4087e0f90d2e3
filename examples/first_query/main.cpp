#include <zor4data/CFileFacts.h>
#include <zor4data/CPntCld.h>

#include <cstdio>

// Chooses the display colour of every point. This one leaves points the colours of their file.
struct CFileColors final : ICldColorListener
{
    void GetColor(double, float&, float&, float&) override {}
    void SetZRange(double, double) override {}
};

// Receives the points that a query finds. A viewer would draw them.
struct CCounter final : IPntCldListener
{
    void OnPnts(int nNumPnts, CCldCadPnt*) override { m_nNumPnts += nNumPnts; }
    int m_nNumPnts = 0;
};

int main(int argc, char** argv)
{
    if (argc != 2)
        return std::fprintf(stderr, "usage: first_query FILE\n"), 2;

    CFileColors colors;
    CPntCld cld(&colors);
    if (!cld.ReadFromFile(nullptr, FindFileFacts(argv[1]).eType, argv[1]))
        return std::fprintf(stderr, "first_query: %s was not loaded\n", argv[1]), 1;

    CCounter counter;
    cld.GetPnts_Lod(&counter, 2.0, 4096); // about one point in 2 m, up to 4096 a call
    std::printf("%d of %d points\n", counter.m_nNumPnts, cld.GetNumPnts());
}
