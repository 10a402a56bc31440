#pragma once

#include <QCursor>

#include "platform/MouseCursor.h"

namespace platform {

struct MouseCursor::Native {
  QCursor cursor;
};

}  // namespace platform
