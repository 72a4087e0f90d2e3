#ifndef HOST_FILES_LOADCHOSEN_H
#define HOST_FILES_LOADCHOSEN_H

#include <formats/CLasAttributes.h>
#include <host/files/CClassChoice.h>
#include <host/files/LoadCloud.h>

namespace zorcld
{

struct CLasTally;

/// What a command wants of a file beyond what the library reads of it.
struct CLasWish
{
    CClassChoice choice;
    enumLasAttribute eAttribute = LasAttribute_None; ///< in the place of colours

    bool IsAsked() const { return choice.IsAsked() || eAttribute != LasAttribute_None; }
};

/// Fills the cloud with the chosen points of a LAS file, one by one, as the library's reader does. Points of
/// other classes are left out before those at the x and y of another point are. An attribute takes the place
/// of the colours (see AttributeBytes.h): so each point of the cloud has the attribute of its own point in
/// the file, whatever the cloud does with their order.
///
/// @param tally  of the file.
/// @throws CFailure when the file cannot be read.
CLoadFacts LoadChosen(CPntCld& cloud, CInputFile& file, const CLasWish& wish, const CLasTally& tally,
                      const CConsole& console);

/// The same where there is a wish, and `LoadOrAdvise` where there is none.
CLoadFacts LoadAsWished(CPntCld& cloud, CInputFile& file, const CLasWish& wish, const CConsole& console);

} // namespace zorcld

#endif
