/// Replaces the methods of AppKit's controls that a theme cannot reach: what they count as opaque, where texts stand,
/// the title of the default button, the parts of scrollers. Call it once, when there is an application. Main thread.
void OHostInstallThemeControls();
