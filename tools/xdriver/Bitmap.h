#pragma once

#include <string>
#include <vector>

#include "tools/xdriver/Windows.h"
#include "tools/xdriver/XScreen.h"

namespace xdriver {

/// Rows of pixels of red, green and blue, one byte each.
struct Bitmap {
  int width = 0, height = 0;
  std::vector<unsigned char> bytes;
  bool operator==(const Bitmap&) const = default;
};

/// A screenshot of the area; parts off the screen are cut away. Throws Impossible if nothing is left.
Bitmap Shoot(XScreen& screen, const Area& area);

/// At half size: each pixel is the mean of four, in 32 levels a channel.
Bitmap Halved(const Bitmap& bitmap);

/// Throws Impossible if the file cannot be written.
void WritePng(const Bitmap& bitmap, const std::string& path);

/// Throws Impossible if the file cannot be read.
Bitmap ReadPng(const std::string& path);

/// Reports on standard error how the screen differs from the expected picture.
void ReportDifference(const Bitmap& shown, const Bitmap& wanted);

/// Prints "watching", then waits until that part of the window has changed `count` times; false after the limit in
/// seconds.
bool AwaitFrames(XScreen& screen, Window window, const Area& inside, int count, double limit);

}  // namespace xdriver
