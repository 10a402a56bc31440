#pragma once
/// Calls of the system that a test can let fail, or use to act in the middle of a save. A program that links
/// FileCalls.cpp makes them through here.

#include <functional>

struct FileCalls {
  /// Called in place of fsync: returns the error to fail with, or 0.
  std::function<int()> flush;
  bool unnamedFiles = true;             ///< false: files cannot get a name later
  bool renamesWithoutReplacing = true;  ///< false: the file system does not know this kind of renaming
};
inline FileCalls fileCalls;
