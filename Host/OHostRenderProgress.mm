#import "OHostRenderProgress.h"

@implementation OHostRenderProgress

- (instancetype)init {
  if ((self = [super init])) {
    // A panel, as AppKit puts the main menu into every other window.
    NSPanel *panel = [[NSPanel alloc] initWithContentRect:NSMakeRect(300, 360, 400, 116)
                                                styleMask:NSTitledWindowMask
                                                  backing:NSBackingStoreBuffered
                                                    defer:NO];
    [panel setHidesOnDeactivate:NO];
    _window = panel;
    [_window setTitle:@"Rendering"];
    [_window setReleasedWhenClosed:NO];
    NSView *content = [_window contentView];

    _label = [[[NSTextField alloc] initWithFrame:NSMakeRect(16, 80, 368, 22)] autorelease];
    [_label setEditable:NO];
    [_label setSelectable:NO];
    [_label setBezeled:NO];
    [_label setDrawsBackground:NO];
    [content addSubview:_label];

    _bar = [[[NSProgressIndicator alloc] initWithFrame:NSMakeRect(16, 56, 368, 16)] autorelease];
    [_bar setStyle:NSProgressIndicatorBarStyle];
    [_bar setDisplayedWhenStopped:YES];
    [_bar setIndeterminate:NO];
    [_bar setMinValue:0];
    [_bar setMaxValue:1];
    [content addSubview:_bar];

    NSButton *cancel = [[[NSButton alloc] initWithFrame:NSMakeRect(288, 14, 96, 28)] autorelease];
    [cancel setTitle:@"Cancel"];
    [cancel setKeyEquivalent:@"\033"];
    [cancel setTarget:self];
    [cancel setAction:@selector(cancel:)];
    [content addSubview:cancel];
  }
  return self;
}

- (void)dealloc {
  [self end];
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
  (void)sender;
  _cancelled = YES;
}

@end
