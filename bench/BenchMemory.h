#ifndef BENCH_BENCHMEMORY_H
#define BENCH_BENCHMEMORY_H

#include <cstddef>
#include <cstdint>
#include <functional>

/// @return bytes of the heap in use, mapped blocks included.
std::int64_t GetHeapBytes();

/// Runs `fn` and tells how far the resident memory of this process rose above what it was before, at its
/// highest (Linux: the peak that the kernel keeps, reset first).
///
/// @return bytes; -1 where the system does not tell.
std::int64_t MeasurePeak(const std::function<void()>& fn);

/// Writes to so many bytes of fresh memory, in large pages where there are such, and gives them back to the
/// system, which hands out first what came back last.
void TouchMemory(std::size_t nNumBytes);

#endif
