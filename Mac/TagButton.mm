#import "TagButton.h"

#import "PlainLabel.h"
#import "RoundedView.h"

// Points.
static const CGFloat kTextInset = 10;
static const CGFloat kLabelExtraWidth = 5;
static const CGFloat kWidestText = 260;
static const CGFloat kLabelLift = 3;
static const CGFloat kDeleteImageSize = 12;
static const CGFloat kDeleteImageGap = 12;
static const CGFloat kRightMargin = 6;

@implementation TagButton

@synthesize titleString;
@synthesize backgroundView;
@synthesize titleLabel;
@synthesize deleteImageView;

- (id)initWithFrame:(NSRect)frame {
  if ((self = [super initWithFrame:frame])) [self initializeView];
  return self;
}

- (void)dealloc {
  [titleString release];
  [backgroundView release];
  [titleLabel release];
  [deleteImageView release];
  [super dealloc];
}

- (void)initializeView {
  [self setBordered:NO];
  [self setTitle:@""];

  [self setBackgroundView:[[[RoundedView alloc] initWithFrame:[self bounds]] autorelease]];
  [backgroundView setType:RoundedViewTypeButtonGraySmall];
  [self addSubview:backgroundView];

  [self setTitleLabel:PlainLabel(NSZeroRect)];
  [titleLabel setTextColor:[NSColor whiteColor]];
  [titleLabel setFont:[NSFont fontWithName:@"HelveticaNeue" size:12]];
  [titleLabel setAlignment:NSTextAlignmentLeft];
  [[titleLabel cell] setLineBreakMode:NSLineBreakByTruncatingTail];
  [self addSubview:titleLabel];

  NSRect imageFrame =
      NSMakeRect(0, (NSHeight([self frame]) - kDeleteImageSize) / 2, kDeleteImageSize, kDeleteImageSize);
  [self setDeleteImageView:[[[NSImageView alloc] initWithFrame:imageFrame] autorelease]];
  [deleteImageView setImage:[NSImage imageNamed:@"NSStopProgressFreestandingTemplate"]];
  [self addSubview:deleteImageView];

  [self addFocusRing];
}

- (void)setTitleString:(NSString *)string {
  if (string != titleString) {
    [titleString release];
    titleString = [string copy];
  }
  SetLabelText(titleLabel, titleString ? titleString : @"", 2 * kLabelLift);
  [self setAccessibilityLabel:[NSString stringWithFormat:@"Remove tag %@", [titleLabel stringValue]]];
  [self updateFrames];
}

- (void)updateFrames {
  NSSize text = [[titleLabel attributedStringValue] size];
  if ([[titleLabel stringValue] length] == 0) text.width = 0;  // some systems measure a caret
  CGFloat labelWidth = (text.width > kWidestText ? kWidestText : text.width) + kLabelExtraWidth;
  CGFloat labelY = (NSHeight([self frame]) - text.height) / 2 - kLabelLift;
  [titleLabel setFrame:NSMakeRect(kTextInset, labelY, labelWidth, text.height)];

  NSSize size = [self frame].size;
  size.width = kTextInset + labelWidth + kDeleteImageGap + kDeleteImageSize + kRightMargin;
  [self setFrameSize:size];
  [backgroundView setFrame:[self bounds]];
  [deleteImageView
      setFrameOrigin:NSMakePoint(size.width - kRightMargin - kDeleteImageSize, NSMinY([deleteImageView frame]))];
}

- (void)setHighlighted:(BOOL)flag {
  [super setHighlighted:flag];
  [backgroundView setType:flag ? RoundedViewTypeButtonGraySmallHighlighted : RoundedViewTypeButtonGraySmall];
}

- (void)mouseDown:(NSEvent *)event {
  [self setHighlighted:YES];
}

- (void)mouseUp:(NSEvent *)event {
  [self setHighlighted:NO];
  if (SEL message = [self action]) [[self target] performSelector:message withObject:self];
}

@end
