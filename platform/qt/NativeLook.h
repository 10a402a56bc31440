#pragma once

namespace platform {

/// Sets the light look of the program, whatever the desktop's theme.
void ApplyLook();
/// Installs the functions that draw text on platform::Graphics.
void InstallTextDrawing();

}  // namespace platform
