#ifndef FORMATS_CWKTNODE_H
#define FORMATS_CWKTNODE_H

#include <string>
#include <string_view>
#include <vector>

/// A part of the well-known text of a coordinate system: a keyword and, in brackets, what belongs to it.
struct CWktNode
{
    std::string sKeyword;              ///< upper case
    std::vector<std::string> vecTexts; ///< in quotes, without them
    std::vector<double> vecNumbers;
    std::vector<std::string> vecWords; ///< neither text nor number, upper case: names of axes' directions
    std::vector<CWktNode> vecNodes;

    bool Is(std::string_view sName) const { return sKeyword == sName; }

    /// @return the first text; empty: there is none.
    std::string_view GetName() const { return vecTexts.empty() ? std::string_view() : vecTexts.front(); }

    /// @return the first part with that keyword; null: there is none.
    const CWktNode* Find(std::string_view sName) const;
};

/// The nodes of a text, one behind the other, as far as it can be read: what follows something that does not
/// belong there is left out. Nodes lie up to 40 deep.
std::vector<CWktNode> ParseWktNodes(std::string_view sText);

#endif
