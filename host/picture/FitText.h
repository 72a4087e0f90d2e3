#ifndef HOST_PICTURE_FITTEXT_H
#define HOST_PICTURE_FITTEXT_H

#include <cstddef>
#include <functional>
#include <string>

namespace zorcld
{

/// Where a text that is too long is cut.
enum enumCut
{
    Cut_Middle, ///< names of files: both ends tell something
    Cut_End
};

/// The longest part of a printable text that is at most so wide, with an ellipsis where it was cut; empty
/// where not even that fits. A text that is cut at its end is not cut in or right behind a number, which
/// would be taken for another one.
std::string FitText(const std::string& sText, double dMaxWidth, enumCut eCut,
                    const std::function<double(const std::string&)>& calcWidth);

} // namespace zorcld

#endif
