#import <AppKit/AppKit.h>

/// The side of a check box with its focus ring, in points.
extern const CGFloat OHostCheckBoxSize;

/// Puts check box, menu mark and menu arrow, drawn as vectors, in the place of AppKit's images of these names. Call it
/// once, before there are controls. Main thread.
void OHostRegisterThemeImages();
