#import <AppKit/AppKit.h>

/// Draws the host's application icon, a frame of film, 64 points wide. It may be called before there is an application.
NSImage* OHostIcon();
