#pragma once

#include "platform/pictures/Graphics.h"
#include "platform/pictures/Picture.h"

/// Paints a map on its canvas, scaled to the canvas: with the drawing on it while that is shown, hard-edged or smooth
/// as "Exact Pixels" says. `composed`, of the size of `base`, takes the base and the drawing; it is left as it was
/// while the drawing is hidden. Nil pictures throw.
void PaintMap(platform::Graphics& g, const platform::Ref<platform::Picture>& base,
              const platform::Ref<platform::Picture>& composed);

/// The picture that a canvas shows now, of the two.
const platform::Ref<platform::Picture>& ShownPicture(const platform::Ref<platform::Picture>& base,
                                                     const platform::Ref<platform::Picture>& composed);
