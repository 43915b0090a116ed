// How AppKit looks in the host, and in the tests that show the plug-in's windows without it.
#pragma once

/// Registers AppKit's looks for a system without a theme of its own: fonts, colours, and the theme of OHostTheme.h.
/// They count only when they are there before the application object. Call it once. Main thread.
void RegisterLooks();
