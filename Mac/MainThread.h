// Handing work to the main thread, where alone views and windows may be touched.
#pragma once

#include <functional>

/// Runs the work on the main thread, also while a modal window or a menu tracks there, and returns when it is done. On
/// the main thread it runs at once. The work must not throw.
void RunOnMainThreadAndWait(const std::function<void()>& work);
