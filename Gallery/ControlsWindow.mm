#import "ControlsWindow.h"

#include <cmath>

#import "PlainLabel.h"
#import "PluginBundle.h"
#import "RoundedButton.h"
#import "RoundedView.h"
#import "TagButton.h"

namespace {

struct Background {
  int type;
  NSString *name;
  CGFloat height;
  CGFloat narrow;  // two points more than both caps
};

struct ButtonStyle {
  int type;
  NSString *name;
  CGFloat height;
};

struct Chip {
  NSString *name;
  NSString *title;
};

const Background kBackgrounds[] = {
    {RoundedViewTypeTextFieldWhiteSmall, @"Text field, small", 26, 22},
    {RoundedViewTypeTextFieldWhite, @"Text field", 32, 26},
    {RoundedViewTypeTextFieldWhiteBig, @"Text area", 48, 22},
    {RoundedViewTypeTextFieldGray, @"Text field, grey", 32, 26},
    {RoundedViewTypeButtonBlueBig, @"Blue", 32, 26},
    {RoundedViewTypeButtonBlueBigHighlighted, @"Blue, pressed", 32, 26},
    {RoundedViewTypeButtonBlueSmall, @"Blue, small", 26, 22},
    {RoundedViewTypeButtonBlueSmallHighlighted, @"Blue, small, pressed", 26, 22},
    {RoundedViewTypeButtonYellow, @"Yellow", 32, 26},
    {RoundedViewTypeButtonYellowHighlighted, @"Yellow, pressed", 32, 26},
    {RoundedViewTypeButtonGraySmall, @"Grey, small", 26, 22},
    {RoundedViewTypeButtonGraySmallHighlighted, @"Grey, small, pressed", 26, 22},
    {RoundedViewTypeButtonGrayBig, @"Grey", 32, 26},
    {RoundedViewTypeButtonGrayBigHighlighted, @"Grey, pressed", 32, 26},
    {RoundedViewTypeComboBoxGray, @"Combo box", 32, 38},
    {RoundedViewTypeComboBoxGraySmall, @"Combo box, small", 26, 32},
    {RoundedViewTypeProgressBarTotal, @"Progress, total", 10, 14},
    {RoundedViewTypeProgressBarUploaded, @"Progress, uploaded", 10, 14},
    {RoundedViewTypeProgressBarConverted, @"Progress, converted", 10, 14},
};

const ButtonStyle kButtonStyles[] = {
    {RoundedButtonTypeBlueSmall, @"Blue, small", 26}, {RoundedButtonTypeBlueBig, @"Blue", 32},
    {RoundedButtonTypeYellow, @"Yellow", 32},         {RoundedButtonTypeGraySmall, @"Grey, small", 26},
    {RoundedButtonTypeGrayBig, @"Grey", 32},
};

const Chip kChips[] = {
    {@"Short", @"Trailer"},
    {@"Long", @"A tag whose text is much too long for the 260 points of a chip"},
    {@"Empty", @""},
};

// Points.
const CGFloat kMargin = 24;
const CGFloat kColumnGap = 20;
const CGFloat kRowGap = 10;
const CGFloat kHeadingHeight = 20;
const CGFloat kNameWidth = 170;
const CGFloat kNarrowColumn = 38;
const CGFloat kMediumWidth = 111;
const CGFloat kWideWidth = 240;
const CGFloat kStyleNameWidth = 90;
const CGFloat kButtonWidth = 130;
const CGFloat kChipHeight = 26;
const CGFloat kChipColumn = 305;
const CGFloat kIconSize = 64;
const CGFloat kPatternWidth = 2 * kButtonWidth - kIconSize;  // to the right edge of the buttons
const CGFloat kSectionGap = 24;

const CGFloat kLeftWidth = kNameWidth + kNarrowColumn + kMediumWidth + kWideWidth + 3 * kColumnGap;
const CGFloat kRightWidth = kStyleNameWidth + kColumnGap + kChipColumn;
const CGFloat kSheetWidth = 2 * kMargin + kLeftWidth + 2 * kColumnGap + kRightWidth;

// Places things on the sheet from the top left corner down.
class Sheet {
 public:
  explicit Sheet(CGFloat height) : height_(height) {
    window_ = [[NSWindow alloc] initWithContentRect:NSMakeRect(80, 40, kSheetWidth, height)
                                          styleMask:NSTitledWindowMask | NSClosableWindowMask
                                            backing:NSBackingStoreBuffered
                                              defer:NO];
    [window_ setReleasedWhenClosed:NO];
    [window_ setTitle:@"Orvane Gallery"];
  }

  NSWindow *Window() const { return window_; }

  // Adds a view with its left edge there and its middle on that line.
  void Add(NSView *view, CGFloat left, CGFloat middle) const {
    [view setFrameOrigin:NSMakePoint(left, std::round(height_ - middle - NSHeight([view frame]) / 2))];
    [[window_ contentView] addSubview:view];
  }

  void AddText(NSString *text, NSFont *font, CGFloat left, CGFloat middle, CGFloat width) const {
    NSTextField *label = PlainLabel(NSMakeRect(0, 0, width, kHeadingHeight));
    [label setFont:font];
    [label setTextColor:[NSColor colorWithCalibratedWhite:0.13 alpha:1]];
    [label setStringValue:text];
    [label setFrameSize:NSMakeSize(width, std::ceil([[label cell] cellSize].height))];
    Add(label, left, middle);
  }

  void AddName(NSString *text, CGFloat left, CGFloat middle, CGFloat width) const {
    AddText(text, [NSFont systemFontOfSize:12], left, middle, width);
  }

  // Returns the top of what comes below the heading.
  CGFloat AddHeading(NSString *text, CGFloat left, CGFloat top) const {
    AddText(text, [NSFont boldSystemFontOfSize:15], left, top + kHeadingHeight / 2, kRightWidth);
    return top + kHeadingHeight + kRowGap;
  }

 private:
  NSWindow *window_;
  CGFloat height_;
};

RoundedView *MakeBackground(int type, CGFloat width, CGFloat height) {
  RoundedView *view = [[[RoundedView alloc] initWithFrame:NSMakeRect(0, 0, width, height)] autorelease];
  [view setType:type];
  return view;
}

RoundedButton *MakeButton(const ButtonStyle &style, NSString *title) {
  const NSRect frame = NSMakeRect(0, 0, kButtonWidth, style.height);
  RoundedButton *button = [[[RoundedButton alloc] initWithFrame:frame] autorelease];
  [button awakeFromNib];
  [button setType:style.type];
  [button setTitleString:title];
  return button;
}

TagButton *MakeChip(NSString *title) {
  TagButton *chip = [[[TagButton alloc] initWithFrame:NSMakeRect(0, 0, 0, kChipHeight)] autorelease];
  [chip setTitleString:title];
  return chip;
}

void AddBackgrounds(const Sheet &sheet) {
  const CGFloat narrow = kMargin + kNameWidth + kColumnGap;
  const CGFloat medium = narrow + kNarrowColumn + kColumnGap;
  const CGFloat wide = medium + kMediumWidth + kColumnGap;
  CGFloat top = sheet.AddHeading(@"Backgrounds", kMargin, kMargin);
  for (const Background &background : kBackgrounds) {
    const CGFloat row = std::fmax(background.height, kHeadingHeight);
    const CGFloat middle = top + row / 2;
    NSString *name = [NSString stringWithFormat:@"%d  %@", background.type, background.name];
    sheet.AddName(name, kMargin, middle, kNameWidth);
    sheet.Add(MakeBackground(background.type, background.narrow, background.height), narrow, middle);
    sheet.Add(MakeBackground(background.type, kMediumWidth, background.height), medium, middle);
    sheet.Add(MakeBackground(background.type, kWideWidth, background.height), wide, middle);
    top += row + kRowGap;
  }
}

// Returns the top of what comes below.
CGFloat AddButtons(const Sheet &sheet, CGFloat left) {
  const CGFloat normal = left + kStyleNameWidth + kColumnGap;
  const CGFloat pressed = normal + kButtonWidth + kColumnGap;
  CGFloat top = sheet.AddHeading(@"Buttons", left, kMargin);
  for (const ButtonStyle &style : kButtonStyles) {
    const CGFloat middle = top + style.height / 2;
    sheet.AddName(style.name, left, middle, kStyleNameWidth);
    sheet.Add(MakeButton(style, @"At rest"), normal, middle);
    RoundedButton *button = MakeButton(style, @"Pressed");
    [button setHighlighted:YES];
    sheet.Add(button, pressed, middle);
    top += style.height + kRowGap;
  }
  return top - kRowGap + kSectionGap;
}

// Returns the top of what comes below.
CGFloat AddChips(const Sheet &sheet, CGFloat left, CGFloat sectionTop) {
  const CGFloat first = left + kStyleNameWidth + kColumnGap;
  CGFloat top = sheet.AddHeading(@"Chips", left, sectionTop);
  const auto add = [&](NSString *name, TagButton *chip) {
    const CGFloat middle = top + kChipHeight / 2;
    sheet.AddName(name, left, middle, kStyleNameWidth);
    sheet.Add(chip, first, middle);
    top += kChipHeight + kRowGap;
  };
  for (const Chip &chip : kChips) add(chip.name, MakeChip(chip.title));
  TagButton *pressed = MakeChip(@"Trailer");
  [pressed setHighlighted:YES];
  add(@"Pressed", pressed);
  return top - kRowGap + kSectionGap;
}

void AddImages(const Sheet &sheet, CGFloat left, CGFloat sectionTop) {
  const CGFloat top = sheet.AddHeading(@"Images", left, sectionTop);
  const CGFloat middle = top + kIconSize / 2;
  const CGFloat first = left + kStyleNameWidth + kColumnGap;
  sheet.AddName(@"Icon, window", left, middle, kStyleNameWidth);
  NSImageView *icon = [[[NSImageView alloc] initWithFrame:NSMakeRect(0, 0, kIconSize, kIconSize)] autorelease];
  [icon setImageScaling:NSImageScaleProportionallyUpOrDown];
  [icon setImage:PluginImage(@"OrvaneIcon1.png")];
  sheet.Add(icon, first, middle);
  NSTextField *window = PlainLabel(NSMakeRect(0, 0, kPatternWidth, kIconSize));
  [window setBackgroundColor:[NSColor colorWithPatternImage:PluginImage(@"UploadBG.png")]];
  [window setDrawsBackground:YES];
  sheet.Add(window, first + kIconSize + kColumnGap, middle);
}

CGFloat SheetHeight() {
  CGFloat height = 2 * kMargin + kHeadingHeight;
  for (const Background &background : kBackgrounds) height += kRowGap + std::fmax(background.height, kHeadingHeight);
  return height;
}

}  // namespace

NSWindow *MakeControlsWindow() {
  const Sheet sheet(SheetHeight());
  const CGFloat right = kMargin + kLeftWidth + 2 * kColumnGap;
  AddBackgrounds(sheet);
  AddImages(sheet, right, AddChips(sheet, right, AddButtons(sheet, right)));
  return sheet.Window();
}
