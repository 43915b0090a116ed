// The display that windows are opened on.
#pragma once

#include <string>

/// Whether the display that $DISPLAY names can be opened. When not, the reason, without a full stop, is put into why.
/// AppKit raises an exception that nobody can catch where there is none, so ask before there is an application object.
bool DisplayIsReachable(std::string* why);
