#include <formats/CWktNode.h>

#include <formats/ParseDouble.h>

#include <algorithm>

namespace
{

constexpr int c_nMaxDepth = 40; // systems of coordinates are some eight deep
constexpr std::string_view c_sWord = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_+-.";

class CWktParser
{
public:
    explicit CWktParser(std::string_view sText) : m_sText(sText) {}

    std::vector<CWktNode> Parse()
    {
        std::vector<CWktNode> vecNodes;
        do
        {
            const std::string sWord = TakeWord();
            if (!sWord.empty() && TakeBracket())
                TakeNode(sWord, vecNodes, 1);
        } while (!m_bBad && TakeComma());
        return vecNodes;
    }

private:
    char Peek()
    {
        const std::size_t nNext = m_sText.find_first_not_of(" \t\r\n\v\f");
        m_sText.remove_prefix(std::min(nNext, m_sText.size()));
        return m_sText.empty() ? '\0' : m_sText.front();
    }

    bool Take(char cOne, char cOther)
    {
        const char c = Peek();
        if (c == '\0' || (c != cOne && c != cOther))
            return false;
        m_sText.remove_prefix(1);
        return true;
    }

    bool TakeBracket() { return Take('[', '('); }
    bool TakeComma() { return Take(',', ','); }

    /// Letters, figures and signs, in upper case.
    std::string TakeWord()
    {
        static_cast<void>(Peek());
        const std::size_t nEnd = std::min(m_sText.find_first_not_of(c_sWord), m_sText.size());
        std::string sWord(m_sText.substr(0, nEnd));
        m_sText.remove_prefix(nEnd);
        for (char& c : sWord)
            if (c >= 'a' && c <= 'z')
                c = static_cast<char>(c - 'a' + 'A');
        return sWord;
    }

    /// A text behind its opening quote, up to the closing one; two quotes stand for one.
    std::string TakeText()
    {
        std::string sText;
        for (;;)
        {
            const std::size_t nQuote = m_sText.find('"');
            if (nQuote == std::string_view::npos)
            {
                m_bBad = true;
                return {};
            }
            sText += m_sText.substr(0, nQuote);
            m_sText.remove_prefix(nQuote + 1);
            if (m_sText.empty() || m_sText.front() != '"')
                return sText;
            sText += '"';
            m_sText.remove_prefix(1);
        }
    }

    /// Takes what stands behind the opening bracket of a node, and adds the node, as far as it goes.
    void TakeNode(const std::string& sKeyword, std::vector<CWktNode>& vecNodes, int nDepth)
    {
        CWktNode node;
        node.sKeyword = sKeyword;
        if (nDepth > c_nMaxDepth)
            m_bBad = true;
        while (!m_bBad && !Take(']', ')'))
        {
            TakeItem(node, nDepth);
            if (!m_bBad && !TakeComma() && Peek() != ']' && Peek() != ')')
                m_bBad = true;
        }
        vecNodes.push_back(std::move(node));
    }

    void TakeItem(CWktNode& node, int nDepth)
    {
        if (Take('"', '"'))
        {
            node.vecTexts.push_back(TakeText());
            return;
        }
        const std::string sWord = TakeWord();
        if (sWord.empty())
        {
            m_bBad = true;
            return;
        }
        if (TakeBracket())
        {
            TakeNode(sWord, node.vecNodes, nDepth + 1);
            return;
        }
        bool bWhole = false;
        const double d = ParseDouble(sWord, bWhole);
        if (bWhole)
            node.vecNumbers.push_back(d);
        else
            node.vecWords.push_back(sWord);
    }

    std::string_view m_sText; // what has not been taken
    bool m_bBad = false;
};

} // namespace

const CWktNode* CWktNode::Find(std::string_view sName) const
{
    const auto itFound =
        std::find_if(vecNodes.begin(), vecNodes.end(), [&](const CWktNode& node) { return node.Is(sName); });
    return itFound == vecNodes.end() ? nullptr : &*itFound;
}

std::vector<CWktNode> ParseWktNodes(std::string_view sText)
{
    return CWktParser(sText).Parse();
}
