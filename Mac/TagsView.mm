#import "TagsView.h"

#import "NSString+TrimmingAdditions.h"
#import "RoundedView.h"
#import "TagButton.h"
#include "ExceptionGuard.h"

// Points. A row holds chips of the chip height; the gap stands between chips and above the first row.
static const float kRowHeight = 36;
static const float kChipHeight = 26;
static const float kGap = 10;

@interface TagsView ()
- (float)firstRowY;
- (void)placeChipWithTitle:(NSString *)title;
- (void)moveChipsBy:(float)distance;
- (void)addTypedTag;
@end

@implementation TagsView

@synthesize delegate = _delegate;
@synthesize titleTextField = _titleTextField;
@synthesize tagTextField = _tagTextField;
@synthesize tagTextFieldBackground = _tagTextFieldBackground;
@synthesize tagButtons = _tagButtons;
@synthesize tags = _tags;

- (id)initWithFrame:(NSRect)frame {
  return [super initWithFrame:frame];
}

- (void)dealloc {
  for (TagButton *chip in _tagButtons) [chip setTarget:nil];
  [_tagButtons release];
  [_tags release];
  [super dealloc];
}

- (void)awakeFromNib {
  [self setTagButtons:[NSMutableArray array]];
  [self setTags:[NSMutableArray array]];
}

- (float)firstRowY {
  return NSMinY([_tagTextFieldBackground frame]) - kChipHeight - kGap;
}

- (void)placeChipWithTitle:(NSString *)title {
  float x = 0;
  float y = 0;
  if ([_tagButtons count] > 0) {
    NSRect last = [[_tagButtons lastObject] frame];
    x = NSMaxX(last) + kGap;
    y = NSMinY(last);
  } else {
    [self addNewRow];
    y = [self firstRowY];
  }
  TagButton *chip = [[[TagButton alloc] initWithFrame:NSMakeRect(x, y, 0, kChipHeight)] autorelease];
  [chip setTarget:self];
  [chip setAction:@selector(deleteTagButton:)];
  [chip setTitleString:title];
  NSRect frame = [chip frame];
  if (NSMaxX(frame) > NSWidth([self frame])) {
    [self addNewRow];
    [chip setFrame:NSMakeRect(0, NSMinY(frame), NSWidth(frame), NSHeight(frame))];
  }
  [self addSubview:chip];
  [_tagButtons addObject:chip];
  [_tags addObject:title];
}

- (IBAction)addTagsButtonDidTouch:(id)sender {
  RunGuarded([self] { [self addTypedTag]; });
}

- (void)addTypedTag {
  NSString *typed = [_tagTextField stringValue];
  if ([typed length] > 0) {
    NSCharacterSet *blanks = [NSCharacterSet whitespaceAndNewlineCharacterSet];
    NSString *tag =
        [[typed stringByTrimmingTrailingCharactersInSet:blanks] stringByTrimmingLeadingCharactersInSet:blanks];
    [self placeChipWithTitle:tag];
    [_tagTextField setStringValue:@""];
  }
  [self redrawAllTagButtons];
}

- (void)redrawAllTagButtons {
  NSArray *titles = [[_tags copy] autorelease];
  [self clearView];
  for (NSString *title in titles) [self placeChipWithTitle:title];
  [self refreshTagButtonFramesFromIndex:0];
  [self setNeedsDisplay:YES];
}

- (void)refreshTagButtonFramesFromIndex:(NSUInteger)index {
  if ([_tagButtons count] == 0) return;
  for (NSUInteger i = index; i < [_tagButtons count]; ++i) {
    float x = 0;
    float y = [self firstRowY];
    if (i > 0) {
      NSRect previous = [[_tagButtons objectAtIndex:i - 1] frame];
      x = NSMaxX(previous) + kGap;
      y = NSMinY(previous);
    }
    TagButton *chip = [_tagButtons objectAtIndex:i];
    if (x + NSWidth([chip frame]) > NSWidth([self frame])) {
      x = 0;
      y -= kRowHeight;
    }
    [chip setFrameOrigin:NSMakePoint(x, y)];
  }
  if (NSMinY([[_tagButtons lastObject] frame]) > 0) [self removeRow];
}

- (void)addNewRow {
  [self moveChipsBy:kRowHeight];
}

- (void)removeRow {
  [self moveChipsBy:-kRowHeight];
}

// The rows' height is not taken from the view: its frame stays, and its delegate is told.
- (void)moveChipsBy:(float)distance {
  for (TagButton *chip in _tagButtons) {
    NSPoint origin = [chip frame].origin;
    [chip setFrameOrigin:NSMakePoint(origin.x, origin.y + distance)];
  }
  if ([_delegate respondsToSelector:@selector(tagsViewDidChangeFrame)]) [_delegate tagsViewDidChangeFrame];
}

- (IBAction)deleteTagButton:(id)sender {
  RunGuarded([self, sender] {
    if (![_tagButtons containsObject:sender]) return;
    [[sender retain] autorelease];  // it is inside its own mouse handling
    [self deleteTagButtonWithoutRefresh:sender];
    [self redrawAllTagButtons];
  });
}

- (void)deleteTagButtonWithoutRefresh:(TagButton *)tagButton {
  NSUInteger index = [_tagButtons indexOfObject:tagButton];
  if (index == NSNotFound) return;
  [[tagButton retain] autorelease];
  [_tagButtons removeObjectAtIndex:index];
  [_tags removeObject:[tagButton titleString]];
  [tagButton removeFromSuperview];
}

- (void)clearView {
  [_tagTextField setStringValue:@""];
  while ([_tagButtons count] > 0) [self deleteTagButtonWithoutRefresh:[_tagButtons lastObject]];
  [self setTagButtons:[NSMutableArray array]];
  [self setTags:[NSMutableArray array]];
}

@end
