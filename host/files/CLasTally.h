#ifndef HOST_FILES_CLASTALLY_H
#define HOST_FILES_CLASTALLY_H

#include <formats/CLasAttributes.h>
#include <host/files/CClassChoice.h>

#include <nlohmann/json_fwd.hpp>

#include <algorithm>
#include <array>
#include <cstdint>

namespace zorcld
{

class CConsole;
class CInputFile;

/// How many points of a LAS file have which class and which flags.
struct CLasTally
{
    void Add(const CLasAttributes& attributes)
    {
        ++anByClass[attributes.nClass];
        ++anByFlags[attributes.nFlags & 15U];
        nMinIntensity = std::min(nMinIntensity, attributes.nIntensity);
        nMaxIntensity = std::max(nMaxIntensity, attributes.nIntensity);
    }

    /// All points.
    std::int64_t Count() const;

    /// Points of the classes that are kept.
    std::int64_t Count(const CClassChoice& choice) const;

    std::int64_t CountFlag(CLasAttributes::enumFlag eFlag) const;

    /// The classes that there are.
    TLasClasses GetClasses() const;

    std::array<std::int64_t, 256> anByClass{};
    std::array<std::int64_t, 16> anByFlags{}; ///< by the bits of all flags
    std::uint16_t nMinIntensity = 65535;      ///< above the other: there is no point
    std::uint16_t nMaxIntensity = 0;
};

/// Is it a LAS file, and can this program read what its points are?
bool CanTally(const CInputFile& file);

/// Reads all points of a file once.
/// @throws CFailure when it is no LAS file, or cannot be read.
CLasTally CollectLasTally(CInputFile& file, const CConsole& console);

/// Adds classes, flags and intensities, and what is chosen of them, to what the header says, for
/// `info --json`.
void DescribeTally(const CLasTally& tally, const CClassChoice& choice, nlohmann::ordered_json& las);

/// Prints that for people, on standard output, a label of 20 characters before each; nothing where it has not
/// been added.
void PrintTally(const nlohmann::ordered_json& las);

} // namespace zorcld

#endif
