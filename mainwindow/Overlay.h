#pragma once

#include "platform/pictures/Graphics.h"
#include "platform/pictures/Picture.h"

/// Paints a map, scaled to its canvas, with the drawing on it if the drawing is shown; hard-edged or smooth according
/// to "Exact Pixels". The map with the drawing is composed in `composed`, which has the size of `base` and does not
/// change while the drawing is hidden. Nil pictures throw NilObjectException.
void PaintMap(platform::Graphics& g, const platform::Ref<platform::Picture>& base,
              const platform::Ref<platform::Picture>& composed);

/// The one of the two pictures that a canvas shows now.
const platform::Ref<platform::Picture>& ShownPicture(const platform::Ref<platform::Picture>& base,
                                                     const platform::Ref<platform::Picture>& composed);
