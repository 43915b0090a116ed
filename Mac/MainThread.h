// Work on the main thread, where alone views and windows may be touched. It runs there also while a modal window or a
// menu tracks.
#pragma once

#import <Foundation/Foundation.h>

#include <functional>

/// Runs the work on the main thread and returns when it is done; on the main thread at once. The work must not throw.
/// [any-thread]
void RunOnMainThreadAndWait(const std::function<void()>& work);

/// Sends the target the message with that argument, which may be nil, from the main thread's run loop, and returns at
/// once. Target and argument are retained until then. The method must not throw. [any-thread]
void SendOnMainThread(id target, SEL message, id argument);

/// Sends the target the message, without arguments, at that interval in seconds. The timer retains the target and goes
/// on until it is invalidated; it is not owned. [main-thread]
NSTimer* RepeatOnMainThread(NSTimeInterval interval, id target, SEL message);
