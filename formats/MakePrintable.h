#ifndef FORMATS_MAKEPRINTABLE_H
#define FORMATS_MAKEPRINTABLE_H

#include <string>
#include <string_view>

/// The text as it can be written: control characters, and bytes that are not UTF-8, become question marks.
std::string MakePrintable(std::string_view sText);

/// A name out of a file, as sentences have it: printable, and of a long one the beginning with an ellipsis.
std::string MakePrintableName(std::string_view sName);

/// The text with question marks for its control characters alone. Names of files stay what they are
/// otherwise: they need not be UTF-8, and commands that are offered have them, too.
std::string ReplaceControls(std::string_view sText);

#endif
