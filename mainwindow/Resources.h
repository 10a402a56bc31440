#pragma once

#include "platform/widgets/MouseCursor.h"

/// The program's own pictures and pointers. Each is loaded at its first use and kept.
namespace Resources {

const platform::Ref<platform::Picture>& xCursorpict();  ///< icon of the X cursor; serves as its own mask
const platform::Ref<platform::Picture>& arrowCursorpict();
const platform::Ref<platform::Picture>& arrowCursorpictmask();
const platform::Ref<platform::Picture>& circleCursormask();
const platform::Ref<platform::Picture>& circleCursor();

const platform::MouseCursor& fcursorNone();  ///< an invisible pointer
const platform::MouseCursor& fcursorcrossX();
const platform::MouseCursor& fcursorwhitearrow();
const platform::MouseCursor& fcursorpen();

}  // namespace Resources
