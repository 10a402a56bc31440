#include "mainwindow/Resources.h"

using namespace platform;

namespace Resources {
namespace {

const ResourceFork fork;

template <int id>
const Ref<Picture>& ThePicture() {
  static const Ref<Picture> picture = fork.GetPicture(id);
  return picture;
}

}  // namespace

const Ref<Picture>& xCursorpict() { return ThePicture<168>(); }
const Ref<Picture>& arrowCursorpict() { return ThePicture<169>(); }
const Ref<Picture>& arrowCursorpictmask() { return ThePicture<170>(); }
const Ref<Picture>& circleCursormask() { return ThePicture<171>(); }
const Ref<Picture>& circleCursor() { return ThePicture<172>(); }

const MouseCursor& fcursorNone() { return fork.getCursor(168); }
const MouseCursor& fcursorcrossX() { return fork.getCursor(173); }
const MouseCursor& fcursorwhitearrow() { return fork.getCursor(174); }
const MouseCursor& fcursorpen() { return fork.getCursor(177); }

}  // namespace Resources
