#import "OHostMainWindow.h"

#include <cmath>

namespace {

const CGFloat kWidth = 640;
const CGFloat kHeight = 440;
const CGFloat kFontSize = 13;

NSString *FactsOf(const orvane_host::Sequence &sequence) {
  NSString *path = [NSString stringWithUTF8String:sequence.media.c_str()];
  NSString *source = sequence.media.empty() ? @"Test picture with a tone" : path ? [path lastPathComponent] : @"A film";
  const double rate = static_cast<double>(sequence.rate.numerator) / static_cast<double>(sequence.rate.denominator);
  return [NSString stringWithFormat:@"%@, %d x %d pixels, %.4g frames a second, %.4g s, %@", source, sequence.width,
                                    sequence.height, std::round(rate * 100) / 100, sequence.seconds,
                                    sequence.has_sound ? @"with sound" : @"without sound"];
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
    [self addLog];
    [self tell:FactsOf(sequence)];
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

- (void)addLog {
  NSScrollView *scroll = [[[NSScrollView alloc] initWithFrame:[[_window contentView] bounds]] autorelease];
  [scroll setHasVerticalScroller:YES];
  [scroll setAutohidesScrollers:YES];
  const NSSize size = [scroll contentSize];
  _log = [[[NSTextView alloc] initWithFrame:NSMakeRect(0, 0, size.width, size.height)] autorelease];
  [_log setEditable:NO];
  [_log setTextContainerInset:NSMakeSize(kFontSize, kFontSize)];
  [_log setVerticallyResizable:YES];
  [_log setHorizontallyResizable:NO];
  [_log setMaxSize:NSMakeSize(size.width, 1e7)];
  [[_log textContainer] setWidthTracksTextView:YES];
  [scroll setDocumentView:_log];
  [[_window contentView] addSubview:scroll];
}

- (void)tell:(NSString *)text {
  NSTextStorage *storage = [_log textStorage];
  NSDictionary *attributes = @{NSFontAttributeName : [NSFont systemFontOfSize:kFontSize]};
  NSString *line = [text stringByAppendingString:@"\n"];
  [storage appendAttributedString:[[[NSAttributedString alloc] initWithString:line attributes:attributes] autorelease]];
  [_log scrollRangeToVisible:NSMakeRange([storage length], 0)];
}

@end
