#pragma once

namespace Globals {

/// Moves the linked cursor on every open map: with `restore`, puts back the picture under the old mark; with `draw`,
/// draws a mark at canvas position x, y. Draws on the live surfaces only; no canvas is repainted.
void fCursorRedraw(int x, int y, bool restore, bool draw);

}  // namespace Globals
