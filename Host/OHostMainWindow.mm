#import "OHostMainWindow.h"

#include <cmath>

namespace {

const CGFloat kMargin = 20;
const CGFloat kGap = 12;  // between things that belong together
const CGFloat kWidth = 640;
const CGFloat kHeight = 440;
const CGFloat kLine = 18;
const CGFloat kFactsHeight = 6 * (kLine + kGap / 2);

NSTextField *MakeLabel(NSRect frame, NSString *text) {
  NSTextField *label = [[[NSTextField alloc] initWithFrame:frame] autorelease];
  [label setStringValue:text];
  [label setEditable:NO];
  [label setSelectable:NO];
  [label setBordered:NO];
  [label setBezeled:NO];
  [label setDrawsBackground:NO];
  [[label cell] setLineBreakMode:NSLineBreakByTruncatingMiddle];
  return label;
}

NSString *SourceText(const orvane_host::Sequence &sequence) {
  if (sequence.media.empty()) return @"Test picture with a tone";
  NSString *path = [NSString stringWithUTF8String:sequence.media.c_str()];
  return path ? [path lastPathComponent] : @"A film";
}

NSString *RateText(orvane_host::Rational rate) {
  const double frames = static_cast<double>(rate.numerator) / static_cast<double>(rate.denominator);
  return [NSString stringWithFormat:@"%.4g frames a second", std::round(frames * 100) / 100];
}

NSString *DurationText(double seconds) {
  const int whole = static_cast<int>(seconds);
  if (whole < 60) return [NSString stringWithFormat:@"%.4g s", seconds];
  return [NSString stringWithFormat:@"%d:%02d:%02d", whole / 3600, whole / 60 % 60, whole % 60];
}

}  // namespace

@implementation OHostMainWindow

- (instancetype)initWithSequence:(const orvane_host::Sequence &)sequence delegate:(id)delegate {
  if ((self = [super init])) {
    _window =
        [[NSWindow alloc] initWithContentRect:NSMakeRect(120, 160, kWidth, kHeight)
                                    styleMask:NSTitledWindowMask | NSClosableWindowMask | NSMiniaturizableWindowMask
                                      backing:NSBackingStoreBuffered
                                        defer:NO];
    [_window setTitle:@"Orvane Host"];
    [_window setReleasedWhenClosed:NO];
    [_window setDelegate:delegate];
    [self addFacts:sequence];
    [self addLog];
    [[_window contentView] setNeedsDisplay:YES];
    [_window center];
  }
  return self;
}

- (void)dealloc {
  [_window setDelegate:nil];
  [_window close];
  [_window release];
  [super dealloc];
}

- (NSWindow *)window {
  return _window;
}

- (void)addFacts:(const orvane_host::Sequence &)sequence {
  NSArray *names = @[ @"Sequence", @"Frame size", @"Frame rate", @"Duration", @"Sound" ];
  NSString *size = [NSString stringWithFormat:@"%d x %d pixels", sequence.width, sequence.height];
  NSArray *values = @[
    SourceText(sequence), size, RateText(sequence.rate), DurationText(sequence.seconds),
    sequence.has_sound ? @"yes" : @"none"
  ];
  CGFloat top = kHeight - kMargin - kLine;
  for (NSUInteger i = 0; i < [names count]; ++i) {
    [self addFact:[names objectAtIndex:i] value:[values objectAtIndex:i] at:NSMakePoint(kMargin, top)];
    top -= kLine + kGap / 2;
  }
  _plugins = [self addFact:@"Plug-ins" value:@"none" at:NSMakePoint(kMargin, top)];
}

// Adds a name and its value beside it; returns the value's field.
- (NSTextField *)addFact:(NSString *)name value:(NSString *)value at:(NSPoint)place {
  const CGFloat name_width = 96;
  NSTextField *label = MakeLabel(NSMakeRect(place.x, place.y, name_width, kLine), name);
  [label setFont:[NSFont boldSystemFontOfSize:13]];
  [[_window contentView] addSubview:label];
  const CGFloat left = place.x + name_width;
  NSTextField *field = MakeLabel(NSMakeRect(left, place.y, kWidth - kMargin - left, kLine), value);
  [[_window contentView] addSubview:field];
  return field;
}

- (void)addLog {
  _status = MakeLabel(NSMakeRect(kMargin, kMargin - kGap / 2, kWidth - 2 * kMargin, kLine), @"Ready");
  [[_window contentView] addSubview:_status];
  const CGFloat bottom = NSMaxY([_status frame]) + kGap;
  const CGFloat top = kHeight - 2 * kMargin - kFactsHeight;
  const NSRect frame = NSMakeRect(kMargin, bottom, kWidth - 2 * kMargin, top - bottom);
  NSScrollView *scroll = [[[NSScrollView alloc] initWithFrame:frame] autorelease];
  [scroll setHasVerticalScroller:YES];
  [scroll setAutohidesScrollers:YES];
  [scroll setBorderType:NSBezelBorder];
  const NSSize size = [scroll contentSize];
  _log = [[[NSTextView alloc] initWithFrame:NSMakeRect(0, 0, size.width, size.height)] autorelease];
  [_log setEditable:NO];
  [_log setFont:[NSFont systemFontOfSize:12]];
  [_log setVerticallyResizable:YES];
  [_log setHorizontallyResizable:NO];
  [_log setMaxSize:NSMakeSize(size.width, 1e7)];
  [[_log textContainer] setWidthTracksTextView:YES];
  [scroll setDocumentView:_log];
  [[_window contentView] addSubview:scroll];
}

- (void)showPlugins:(NSString *)text {
  [_plugins setStringValue:text];
}

- (void)tell:(NSString *)text {
  [_status setStringValue:text];
  NSTextStorage *storage = [_log textStorage];
  NSDictionary *attributes = @{NSFontAttributeName : [NSFont systemFontOfSize:12]};
  NSString *line = [text stringByAppendingString:@"\n"];
  [storage appendAttributedString:[[[NSAttributedString alloc] initWithString:line attributes:attributes] autorelease]];
  [_log scrollRangeToVisible:NSMakeRange([storage length], 0)];
}

@end
