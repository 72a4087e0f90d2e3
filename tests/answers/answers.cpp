// What the library answers about fixed clouds, as hashes:
//
//   answers          prints them
//   answers FILE     compares them with those in FILE; status 1 and the lines that differ where one does

#include <tests/answers/Clouds.h>
#include <tests/answers/Questions.h>

#include <cstdio>
#include <fstream>
#include <sstream>

namespace
{

std::string ListAnswers()
{
    std::ostringstream text;
    text << "cloud";
    for (int i = 0; i < c_nNumQuestions; ++i)
        text << ' ' << c_aQuestions[i].sName;
    text << '\n';
    CAnswer answer;
    ForEachCloud(answer,
                 [&](const std::string& sName, CPntCld& cld)
                 {
                     text << sName;
                     for (int i = 0; i < c_nNumQuestions; ++i)
                     {
                         c_aQuestions[i].pAsk(cld, answer);
                         char acHash[16] = {};
                         std::snprintf(acHash, sizeof acHash, " %08x",
                                       static_cast<unsigned>(answer.Take().Get()));
                         text << acHash;
                     }
                     text << '\n';
                 });
    return text.str();
}

int Compare(const std::string& sFound, const char* pPath)
{
    std::ifstream file(pPath);
    std::istringstream found(sFound);
    std::string sWanted;
    std::string sLine;
    int nNumDifferent = 0;
    int nNum = 0;
    while (std::getline(found, sLine))
    {
        sWanted.clear();
        std::getline(file, sWanted);
        ++nNum;
        if (sLine == sWanted)
            continue;
        ++nNumDifferent;
        std::printf("wanted %s\nfound  %s\n", sWanted.c_str(), sLine.c_str());
    }
    const bool bMore = static_cast<bool>(std::getline(file, sWanted));
    std::printf("%d of %d lines differ%s\n", nNumDifferent, nNum, bMore ? ", and more are wanted" : "");
    return nNumDifferent == 0 && !bMore ? 0 : 1;
}

} // namespace

int main(int nNumArgs, char** ppArgs)
{
    const std::string sFound = ListAnswers();
    if (nNumArgs > 1)
        return Compare(sFound, ppArgs[1]);
    std::fputs(sFound.c_str(), stdout);
    return 0;
}
