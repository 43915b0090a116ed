// The memory of this process, as the kernel counts it.
#pragma once

namespace bench {

/// Memory that is in use now, in bytes. Throws std::runtime_error.
long long ResidentBytes();

/// Starts the search for the peak anew. Throws std::runtime_error.
void ResetPeak();

/// The most that was in use since ResetPeak(), in bytes. Throws std::runtime_error.
long long PeakResidentBytes();

}  // namespace bench
