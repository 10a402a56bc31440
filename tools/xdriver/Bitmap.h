#pragma once

#include <string>
#include <vector>

#include "tools/xdriver/Windows.h"
#include "tools/xdriver/XScreen.h"

namespace xdriver {

/// Rows of red, green and blue, one byte each.
struct Bitmap {
  int width = 0, height = 0;
  std::vector<unsigned char> bytes;
  bool operator==(const Bitmap&) const = default;
};

/// What is on the screen at the place; parts off the screen are cut away. Throws Impossible if nothing is left.
Bitmap Shoot(XScreen& screen, const Place& place);

/// Each pixel is the mean of four, in 32 steps a channel.
Bitmap Halved(const Bitmap& bitmap);

/// Throws Impossible if the file cannot be written.
void WritePng(const Bitmap& bitmap, const std::string& path);

/// Throws Impossible if the file cannot be read.
Bitmap ReadPng(const std::string& path);

/// Tells on the error stream how a picture that was waited for differs from what is shown.
void ReportDifference(const Bitmap& shown, const Bitmap& wanted);

/// Prints "watching", then waits until the picture in that part of the window has changed `count` times; false if it
/// has not within the limit in seconds.
bool AwaitFrames(XScreen& screen, Window window, const Place& inside, int count, double limit);

}  // namespace xdriver
