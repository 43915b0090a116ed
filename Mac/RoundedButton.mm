#import "RoundedButton.h"

#import "NSTextField+VerticalAlignment.h"
#import "PlainLabel.h"
#import "RoundedView.h"

namespace {

struct ButtonStyle {
  int background;
  int highlighted_background;
  CGFloat font_size;
};

const ButtonStyle kStyles[] = {
    {RoundedViewTypeButtonBlueSmall, RoundedViewTypeButtonBlueSmallHighlighted, 12},
    {RoundedViewTypeButtonBlueBig, RoundedViewTypeButtonBlueBigHighlighted, 16},
    {RoundedViewTypeButtonYellow, RoundedViewTypeButtonYellowHighlighted, 16},
    {RoundedViewTypeButtonGraySmall, RoundedViewTypeButtonGraySmallHighlighted, 12},
    {RoundedViewTypeButtonGrayBig, RoundedViewTypeButtonGrayBigHighlighted, 16},
};

// Points that a label which is aligned vertically stands above the middle.
const CGFloat kTitleLift = 3.5;

constexpr int kStyleCount = sizeof kStyles / sizeof kStyles[0];

const ButtonStyle *StyleOfType(int type) {
  return type >= 0 && type < kStyleCount ? &kStyles[type] : nullptr;
}

}  // namespace

@interface RoundedButton ()
- (void)showTitle;
@end

@implementation RoundedButton

@synthesize titleString;
@synthesize titleColor;
@synthesize backgroundView;
@synthesize titleLabel;

- (id)initWithFrame:(NSRect)frame {
  return [super initWithFrame:frame];
}

- (void)dealloc {
  [titleString release];
  [titleColor release];
  [backgroundView release];
  [titleLabel release];
  [super dealloc];
}

- (void)awakeFromNib {
  [self setTitleColor:[NSColor whiteColor]];
  [self setEnabled:YES];
  [self initializeView];
  [self updateView];
}

- (void)initializeView {
  [self setBordered:NO];
  [self setTitle:@""];

  [self setBackgroundView:[[[RoundedView alloc] initWithFrame:[self bounds]] autorelease]];
  [backgroundView setAutoresizingMask:NSViewWidthSizable | NSViewHeightSizable];
  [self addSubview:backgroundView];

  [self setTitleLabel:PlainLabel([self bounds])];
  [titleLabel setAutoresizingMask:NSViewWidthSizable | NSViewHeightSizable | NSViewMinXMargin | NSViewMaxXMargin |
                                  NSViewMinYMargin | NSViewMaxYMargin];
  [titleLabel setTextColor:titleColor];
  [titleLabel setAlignment:NSTextAlignmentCenter];
  [self addSubview:titleLabel];

  [self addFocusRing];
}

- (int)type {
  return type;
}

- (void)setType:(int)newType {
  type = newType;
  [self updateView];
}

- (void)updateView {
  const ButtonStyle *style = StyleOfType(type);
  if (!style) return;
  [backgroundView setType:style->background];
  [titleLabel setFont:[NSFont fontWithName:@"HelveticaNeue-Bold" size:style->font_size]];
  [self showTitle];
}

// The text has its font and its colour from the label at the time.
- (void)showTitle {
  if (titleLabel) SetLabelText(titleLabel, titleString ? titleString : @"", 2 * kTitleLift);
}

- (void)setTitleString:(NSString *)string {
  if (string != titleString) {
    [titleString release];
    titleString = [string copy];
  }
  [self showTitle];
  [self setAccessibilityLabel:titleString];
  [titleLabel setFrame:[titleLabel orv_titleRectForBounds:[self bounds]]];
}

- (void)setTitleColor:(NSColor *)color {
  if (color != titleColor) {
    [titleColor release];
    titleColor = [color retain];
  }
  [titleLabel setTextColor:titleColor];
  [self showTitle];
}

- (void)setHighlighted:(BOOL)flag {
  [super setHighlighted:flag];
  const ButtonStyle *style = StyleOfType(type);
  if (style) [backgroundView setType:flag ? style->highlighted_background : style->background];
}

- (BOOL)isEnabled {
  return enabled;
}

- (void)setEnabled:(BOOL)flag {
  enabled = flag;
}

- (void)mouseDown:(NSEvent *)event {
  [self setHighlighted:YES];
}

- (void)mouseUp:(NSEvent *)event {
  [self setHighlighted:NO];
  if (!enabled) return;
  if (SEL message = [self action]) [[self target] performSelector:message withObject:self];
}

@end
