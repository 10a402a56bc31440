#pragma once

#include <QCursor>

#include "platform/widgets/MouseCursor.h"

namespace platform {

struct MouseCursor::Native {
  QCursor cursor;
};

}  // namespace platform
