#pragma once

/// Puts a clear check box, clear arrows of pop-up buttons and an icon of the application in the place of AppKit's
/// images of them, which are made for grey windows. Call it once, before there are controls. Main thread.
void LinuxThemeRegisterImages();
