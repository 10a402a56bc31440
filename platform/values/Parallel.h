#pragma once
/// Spreads one call of the arithmetic over the cores of the machine.

#include <functional>

namespace platform {

/// Calls work(0) ... work(count - 1), each exactly once, in any order and on any thread, and returns when all are done.
/// If calls throw, the indices nobody has begun are left out and the first exception is thrown here.
void ParallelFor(int count, const std::function<void(int)>& work);

/// How many threads ParallelFor uses at most.
int Parallelism();

/// Limits ParallelFor to so many threads, the caller's among them; 0 takes all cores. For tests and measurements.
void SetParallelism(int threads);

}  // namespace platform
