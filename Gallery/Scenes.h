// What the gallery shows.
#pragma once

#import <Cocoa/Cocoa.h>

#include <vector>

/// A window to look at.
struct Scene {
  /// By which the scene is asked for, and the name of its picture.
  const char* name;

  /// Makes the window and fills it. Whoever calls it shows it and owns it. Main thread.
  NSWindow* (*make)();
};

/// All scenes. The first is shown when none is asked for.
const std::vector<Scene>& Scenes();
