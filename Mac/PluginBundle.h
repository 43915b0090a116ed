// The plug-in's own bundle: its images and interface files.
#pragma once

#import <Cocoa/Cocoa.h>

#include <functional>

/// The bundle with the plug-in's identifier; nil when it has not been loaded. It is not the main bundle, which is the
/// host's.
NSBundle *PluginBundle();

/// The bundle's image of that file name ("OrvaneIcon1.png"), kept for the life of the process; nil when it is missing.
/// [main-thread]
NSImage *PluginImage(NSString *fileName);

/// Loads the bundle's interface file with the owner. Returns the file's top-level objects, autoreleased, which the
/// owner retains; nil when loading fails. Throws std::runtime_error when Awake() has caught something. [main-thread]
NSArray *LoadInterfaceFile(NSString *name, id owner);

/// For the owner's awakeFromNib: runs the body, and keeps what it throws from the system's loader. [main-thread]
void Awake(const std::function<void()> &body);
