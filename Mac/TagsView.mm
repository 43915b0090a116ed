#import "TagsView.h"

#import "NSString+TrimmingAdditions.h"
#import "RoundedView.h"
#import "TagButton.h"
#import "TagsPage.h"

// Points. A row holds chips of the chip height; the gap stands between chips and above the first row.
static const float kRowHeight = 36;
static const float kChipHeight = 26;
static const float kGap = 10;

@interface TagsView ()
- (void)putFirstRowAtTop;
- (float)firstRowY;
- (void)placeChipWithTitle:(NSString *)title;
- (void)moveChipsBy:(float)distance;
- (void)chainKeyViews;
- (NSUInteger)indexOfFocusedChip;
- (void)focusChipAtIndex:(NSUInteger)index;
@end

@implementation TagsView

@synthesize delegate = _delegate;
@synthesize titleTextField = _titleTextField;
@synthesize tagTextField = _tagTextField;
@synthesize addButton = _addButton;
@synthesize page = _page;
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
  _keyViewAfterChips = [self nextKeyView];
  if (_page) [self putFirstRowAtTop];
  [_tagTextField setAccessibilityLabel:@"New tag"];
  [_addButton setAccessibilityLabel:@"Add the tag"];
}

// On a page the view has the height of many rows, of which the first stands at its top. The interface file has that row
// at 0: one above would be moved.
- (void)putFirstRowAtTop {
  [self setBoundsOrigin:NSMakePoint(0, [self firstRowY] + kChipHeight - NSHeight([self frame]))];
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
  NSString *typed = [_tagTextField stringValue];
  if ([typed length] > 0) {
    NSCharacterSet *blanks = [NSCharacterSet whitespaceAndNewlineCharacterSet];
    NSString *tag =
        [[typed orv_stringByTrimmingTrailingCharactersInSet:blanks] orv_stringByTrimmingLeadingCharactersInSet:blanks];
    [self placeChipWithTitle:tag];
    [_tagTextField setStringValue:@""];
  }
  [self redrawAllTagButtons];
  TagButton *newest = [_tagButtons lastObject];
  [newest scrollRectToVisible:[newest bounds]];
}

- (void)redrawAllTagButtons {
  NSArray *titles = [[_tags copy] autorelease];
  [self clearView];
  _willRefresh = YES;
  for (NSString *title in titles) [self placeChipWithTitle:title];
  _willRefresh = NO;
  [self refreshTagButtonFramesFromIndex:0];
  [self chainKeyViews];
  [_page fitToViews:_tagButtons];
  [self setNeedsDisplay:YES];
}

// Tab goes from chip to chip and on to what followed this view in the interface file.
- (void)chainKeyViews {
  NSView *previous = self;
  for (TagButton *chip in _tagButtons) {
    [previous setNextKeyView:chip];
    previous = chip;
  }
  [previous setNextKeyView:_keyViewAfterChips];
}

// NSNotFound when no chip has the keyboard.
- (NSUInteger)indexOfFocusedChip {
  id focused = [[self window] firstResponder];
  return focused ? [_tagButtons indexOfObjectIdenticalTo:focused] : NSNotFound;
}

// The chip at the index, or the last one; without chips, the text field.
- (void)focusChipAtIndex:(NSUInteger)index {
  const NSUInteger count = [_tagButtons count];
  NSView *next = count == 0 ? _tagTextField : [_tagButtons objectAtIndex:index < count ? index : count - 1];
  [[self window] makeFirstResponder:next];
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
  for (TagButton *chip in _willRefresh ? nil : _tagButtons) {
    NSPoint origin = [chip frame].origin;
    [chip setFrameOrigin:NSMakePoint(origin.x, origin.y + distance)];
  }
  if ([_delegate respondsToSelector:@selector(tagsViewDidChangeFrame)]) [_delegate tagsViewDidChangeFrame];
}

- (IBAction)deleteTagButton:(id)sender {
  if (![_tagButtons containsObject:sender]) return;
  [[sender retain] autorelease];  // it is inside its own mouse handling
  const NSUInteger focused = [self indexOfFocusedChip];
  [self deleteTagButtonWithoutRefresh:sender];
  [self redrawAllTagButtons];
  // All chips are new: whoever works with the keyboard goes on from the same place.
  if (focused != NSNotFound) [self focusChipAtIndex:focused];
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
  for (TagButton *chip in [_tagButtons reverseObjectEnumerator]) [chip removeFromSuperview];
  [self setTagButtons:[NSMutableArray array]];
  [self setTags:[NSMutableArray array]];
}

@end
