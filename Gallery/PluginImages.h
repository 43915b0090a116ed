// The images and interface files that the plug-in's objects look for in their bundle.
#pragma once

/// Makes the built bundle known, so that it is found by its identifier; its code is not loaded, the program has it.
/// Returns whether the bundle is there. Main thread.
bool UseBuiltBundle();
