#import <AppKit/AppKit.h>

/// Sets the application's main menu: the program's own, and File with Export and Quit. quit is sent to target. Returns
/// the Export menu, which belongs to the main menu.
NSMenu *OHostInstallMenu(id target, SEL quit);

/// Adds a plug-in's item to the Export menu; its tag is `tag`.
void OHostAddExportItem(NSMenu *menu, NSString *title, NSInteger tag, id target, SEL action);

/// Ends what follows the mouse in an event loop of its own, such as an open menu. Nothing is chosen.
void OHostLetGoOfMouse(void);

/// Whether the window is one in which AppKit shows menus, tool tips or icons.
BOOL OHostIsMenuWindow(NSWindow *window);
