#ifndef SAMPLE_NOISE_H
#define SAMPLE_NOISE_H

#include <cstdint>

namespace sample
{

/// Smooth noise from -1 to 1 with features of size 1; another salt is other noise.
double Noise(double x, double y, std::uint64_t nSalt);

} // namespace sample

#endif
