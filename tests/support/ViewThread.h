#pragma once

/// From then on a test fails when it changes what a view shows on any thread but the main one. [main-thread]
void ExpectViewsOnMainThread();
