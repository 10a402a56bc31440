#pragma once

#include <span>

/// The median of the marked grey levels, given one flag per level; for an even number of marks, the mean of the two
/// middle ones, truncated. 0 without marks.
int MedianMark(std::span<const bool, 256> marked);
