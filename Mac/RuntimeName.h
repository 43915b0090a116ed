// Names of the plug-in's classes in the Objective-C runtime.
#pragma once

/// Before a class or protocol: its name in the runtime, with the prefix Orv. The host's process has one class of a
/// name, the one that was loaded first, and other plug-ins have views and dialogs, too. Sources use the name without
/// prefix, interface files the one with it. Runtimes other than macOS's take no notice.
#define ORV_RUNTIME_NAME(name) __attribute__((objc_runtime_name(name)))
