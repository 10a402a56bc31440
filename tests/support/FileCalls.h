#pragma once
/// System calls that a test can make fail, or use to act in the middle of a save, in a program that links
/// FileCalls.cpp.

#include <functional>

struct FileCalls {
  /// Called in place of fsync: returns the error to fail with, or 0.
  std::function<int()> flush;
  bool unnamedFiles = true;             ///< false: files without a name cannot get one later
  bool renamesWithoutReplacing = true;  ///< false: the file system does not support it
};
inline FileCalls fileCalls;
