#pragma once

namespace platform {

struct Point {
  int x = 0, y = 0;
  friend bool operator==(const Point&, const Point&) = default;
};

struct Size {
  int width = 0, height = 0;
  friend bool operator==(const Size&, const Size&) = default;
};

struct Line {
  Point from, to;
  friend bool operator==(const Line&, const Line&) = default;
};

struct Rect {
  int x = 0, y = 0, width = 0, height = 0;
  friend bool operator==(const Rect&, const Rect&) = default;
};

}  // namespace platform
