#pragma once

namespace platform {

/// Gives the program its one light look, whatever the desktop's theme.
void ApplyLook();
/// Puts text drawing behind the surfaces of the values.
void InstallTextDrawing();

}  // namespace platform
