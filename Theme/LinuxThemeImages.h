#pragma once

/// Puts a clear check box and a clear arrow of pop-up buttons in the place of AppKit's images of them, which are made
/// for grey windows. Call it once, before there are controls. Main thread.
void LinuxThemeRegisterImages();
