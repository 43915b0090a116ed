#import "OHostRenderProgress.h"

namespace {

// Points. The margins are those of the main window.
const CGFloat kMargin = 20;
const CGFloat kPanelWidth = 420;
const CGFloat kPanelHeight = 124;
const CGFloat kInside = kPanelWidth - 2 * kMargin;
const CGFloat kBezelRoom = 6;  // within a push button's frame, at its right

}  // namespace

@implementation OHostRenderProgress

- (instancetype)init {
  if ((self = [super init])) {
    // A panel, as AppKit puts the main menu into every other window.
    NSPanel *panel = [[NSPanel alloc] initWithContentRect:NSMakeRect(300, 360, kPanelWidth, kPanelHeight)
                                                styleMask:NSTitledWindowMask | NSClosableWindowMask
                                                  backing:NSBackingStoreBuffered
                                                    defer:NO];
    [panel setHidesOnDeactivate:NO];
    _window = panel;
    [_window setTitle:@"Rendering"];
    // Window managers give every window a close button, and end a program whose window does not know it.
    [_window setDelegate:self];
    [_window setReleasedWhenClosed:NO];
    [self addLabel];
    [self addBar];
    [self addCancelButton];
  }
  return self;
}

- (void)addLabel {
  _label = [[[NSTextField alloc] initWithFrame:NSMakeRect(kMargin, 86, kInside, 18)] autorelease];
  [_label setEditable:NO];
  [_label setSelectable:NO];
  [_label setBezeled:NO];
  [_label setDrawsBackground:NO];
  [[_label cell] setLineBreakMode:NSLineBreakByTruncatingMiddle];
  [[_window contentView] addSubview:_label];
}

- (void)addBar {
  _bar = [[[NSProgressIndicator alloc] initWithFrame:NSMakeRect(kMargin, 64, kInside, 12)] autorelease];
  [_bar setStyle:NSProgressIndicatorBarStyle];
  [_bar setDisplayedWhenStopped:YES];
  [_bar setIndeterminate:NO];
  [_bar setMinValue:0];
  [_bar setMaxValue:1];
  [[_window contentView] addSubview:_bar];
}

- (void)addCancelButton {
  const CGFloat width = 96;
  const CGFloat right = kPanelWidth - kMargin + kBezelRoom;
  NSButton *cancel = [[[NSButton alloc] initWithFrame:NSMakeRect(right - width, kMargin, width, 24)] autorelease];
  [cancel setBezelStyle:NSRoundedBezelStyle];
  [cancel setTitle:@"Cancel"];
  [cancel setKeyEquivalent:@"\033"];
  [cancel setTarget:self];
  [cancel setAction:@selector(cancel:)];
  [[_window contentView] addSubview:cancel];
  [_window setInitialFirstResponder:cancel];
}

- (void)dealloc {
  [self end];
  [_window setDelegate:nil];
  [_window close];
  [_window release];
  [super dealloc];
}

- (NSWindow *)window {
  return _window;
}

- (void)beginWithName:(NSString *)name {
  if (_session) return;
  _cancelled = NO;
  [_label setStringValue:[NSString stringWithFormat:@"Rendering with the preset \"%@\"", name]];
  [_bar setDoubleValue:0];
  [[_window contentView] setNeedsDisplay:YES];
  [_window center];
  [_window makeKeyAndOrderFront:nil];
  _session = [NSApp beginModalSessionForWindow:_window];
}

- (BOOL)progress:(double)done {
  if (!_session) return YES;
  [_bar setDoubleValue:done];
  if ([NSApp runModalSession:_session] != NSRunContinuesResponse) _cancelled = YES;
  return !_cancelled;
}

- (void)end {
  if (!_session) return;
  [NSApp endModalSession:_session];
  _session = NULL;
  [_window orderOut:nil];
}

- (void)cancel:(id)sender {
  _cancelled = YES;
}

- (BOOL)windowShouldClose:(id)sender {
  [self cancel:sender];
  return NO;  // it goes when the render has ended
}

@end
