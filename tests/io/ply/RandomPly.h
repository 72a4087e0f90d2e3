#ifndef TESTS_IO_PLY_RANDOMPLY_H
#define TESTS_IO_PLY_RANDOMPLY_H

#include <tests/io/ply/PlyBytes.h>

#include <initializer_list>
#include <random>
#include <string>

/// Makes PLY files, most of them well-formed but for their length, from a seed: elements of any properties,
/// names and types that the reader knows, half knows and does not know.
class CRandomPly
{
public:
    explicit CRandomPly(unsigned nSeed) : m_random(nSeed) {}

    std::string MakeFile()
    {
        std::string sFile = c_sPlyMagic;
        const int nNumElements = Below(5);
        const int nVertex = Below(4) == 0 ? -1 : Below(nNumElements + 1);
        for (int i = 0; i < nNumElements; ++i)
            sFile += i == nVertex ? MakeVertexElement() : MakeElement();
        sFile += Below(20) == 0 ? "" : "end_header\n";
        if (Below(8) == 0)
            InsertCarriageReturns(sFile);
        return sFile + MakeData();
    }

private:
    int Below(int n) { return n <= 0 ? 0 : static_cast<int>(m_random() % static_cast<unsigned>(n)); }

    std::string OneOf(std::initializer_list<const char*> texts)
    {
        return texts.begin()[Below(static_cast<int>(texts.size()))];
    }

    std::string MakeCount()
    {
        switch (Below(6))
        {
        case 0:
            return std::to_string(Below(3) - 1);
        case 1:
            return std::to_string(Below(5000));
        default:
            return std::to_string(Below(200));
        }
    }

    std::string MakeScalarType()
    {
        return OneOf({"char", "uchar", "short", "ushort", "int", "uint", "float", "double", "float", "float",
                      "int8", "uint8", "float32", "float64"});
    }

    std::string MakeProperty()
    {
        const std::string sName = OneOf({"x", "y", "z", "red", "green", "blue", "alpha", "nx", "x ", ""});
        if (Below(40) == 0)
            return "property " + OneOf({"bool", "list int int", "list uchar bool", ""}) + " " + sName + "\n";
        const std::string sList = Below(6) == 0 ? "list uchar " : "";
        return "property " + sList + MakeScalarType() + " " + sName + "\n";
    }

    std::string MakeProperties(int nMaxNum)
    {
        std::string sLines;
        for (int i = Below(nMaxNum + 1); i > 0; --i)
            sLines += MakeProperty();
        return sLines;
    }

    std::string MakeElement()
    {
        return "element " + OneOf({"face", "vertex", "edge", "range grid"}) + " " + MakeCount() + "\n" +
               MakeProperties(6);
    }

    std::string MakeVertexElement()
    {
        std::string sLines = "element vertex " + MakeCount() + "\n";
        const bool bPlain = Below(2) == 0;
        for (const char* sName : {"x", "y", "z", "red", "green", "blue"})
        {
            if (Below(3) == 0)
                sLines += bPlain ? "property float other\n" : MakeProperties(2);
            const bool bChannel = std::string(sName).size() > 1;
            if (bChannel && Below(4) == 0)
                continue;
            sLines += "property " + (bPlain ? (bChannel ? "uchar" : "float") : MakeScalarType()) + " " +
                      sName + "\n";
        }
        return sLines + "comment a comment\n";
    }

    static void InsertCarriageReturns(std::string& sText)
    {
        for (std::size_t n = sText.find('\n'); n != std::string::npos; n = sText.find('\n', n + 2))
            sText.insert(n, 1, '\r');
    }

    /// Bytes of any value, or mostly small ones, so that lists are of all lengths.
    std::string MakeData()
    {
        std::string sData(static_cast<std::size_t>(Below(Below(2) == 0 ? 500 : 45000)), '\0');
        const bool bSmall = Below(2) == 0;
        for (char& c : sData)
            c = static_cast<char>(bSmall && Below(8) != 0 ? Below(4) : Below(256));
        return sData;
    }

    std::mt19937 m_random;
};

#endif
