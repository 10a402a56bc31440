#pragma once
/// Parallel loops over the cores of the machine.

#include <functional>

namespace platform {

/// Calls work(0) ... work(count - 1), each exactly once, in any order and on any thread, and returns when all are done.
/// If a call throws, indices that have not been started are skipped and the first exception is rethrown here.
void ParallelFor(int count, const std::function<void(int)>& work);

/// How many threads ParallelFor uses at most.
int Parallelism();

/// Limits ParallelFor to that many threads, including the caller's; 0 means one per core. For tests and benchmarks.
void SetParallelism(int threads);

}  // namespace platform
