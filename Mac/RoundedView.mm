#import "RoundedView.h"

#import "PluginBundle.h"

namespace {

// The slices of a background: left, centre and right, or row by row from the top left. The images of a background share
// a prefix and a suffix around the slice's name, but for the grey text field.
struct Background {
  const char *first;   // the left cap's or top-left corner's file name
  const char *prefix;  // of the other slices
  const char *suffix;
  bool nine_part;
};

const Background kBackgrounds[] = {
    {"background_textfield_white_small_left.png", "background_textfield_white_small_", ".png", false},
    {"background_textfield_white_left.png", "background_textfield_white_", ".png", false},
    {"background_textfield_white_big_topleft.png", "background_textfield_white_big_", ".png", true},
    {"background_textfield_grey_left.png", "background_textfield_white_", ".png", false},
    {"background_button_blue_left_big.png", "background_button_blue_", "_big.png", false},
    {"background_button_blue_left_big_highlighted.png", "background_button_blue_", "_big_highlighted.png", false},
    {"background_button_blue_left_small.png", "background_button_blue_", "_small.png", false},
    {"background_button_blue_left_small_highlighted.png", "background_button_blue_", "_small_highlighted.png", false},
    {"background_button_yellow_left.png", "background_button_yellow_", ".png", false},
    {"background_button_yellow_left_highlighted.png", "background_button_yellow_", "_highlighted.png", false},
    {"background_button_gray_left_small.png", "background_button_gray_", "_small.png", false},
    {"background_button_gray_left_small_highlighted.png", "background_button_gray_", "_small_highlighted.png", false},
    {"background_button_gray_left_big.png", "background_button_gray_", "_big.png", false},
    {"background_button_gray_left_big_highlighted.png", "background_button_gray_", "_big_highlighted.png", false},
    {"background_combobox_gray_left.png", "background_combobox_gray_", ".png", false},
    {"background_combobox_gray_small_left.png", "background_combobox_gray_small_", ".png", false},
    {"background_progressbar_total_left.png", "background_progressbar_total_", ".png", false},
    {"background_progressbar_uploaded_left.png", "background_progressbar_uploaded_", ".png", false},
    {"background_progressbar_converted_left.png", "background_progressbar_converted_", ".png", false},
};

constexpr int kBackgroundCount = sizeof kBackgrounds / sizeof kBackgrounds[0];

NSImage *Slice(const Background &background, NSString *slice) {
  return PluginImage([NSString stringWithFormat:@"%s%@%s", background.prefix, slice, background.suffix]);
}

NSImage *FirstSlice(const Background &background) {
  return PluginImage([NSString stringWithUTF8String:background.first]);
}

}  // namespace

void DrawRoundedBackground(int type, NSRect rectangle, BOOL flipped) {
  if (type < 0 || type >= kBackgroundCount) return;
  const Background &background = kBackgrounds[type];
  if (background.nine_part) {
    NSDrawNinePartImage(rectangle, FirstSlice(background), Slice(background, @"topedge"),
                        Slice(background, @"topright"), Slice(background, @"leftedge"), Slice(background, @"center"),
                        Slice(background, @"rightedge"), Slice(background, @"bottomleft"),
                        Slice(background, @"bottomedge"), Slice(background, @"bottomright"),
                        NSCompositingOperationSourceOver, 1.0, flipped);
  } else {
    NSDrawThreePartImage(rectangle, FirstSlice(background), Slice(background, @"center"), Slice(background, @"right"),
                         NO, NSCompositingOperationSourceOver, 1.0, flipped);
  }
}

@implementation RoundedView

- (id)initWithFrame:(NSRect)frame {
  return [super initWithFrame:frame];
}

- (int)type {
  return type;
}

- (void)setType:(int)newType {
  type = newType;
  [self setNeedsDisplay:YES];
}

- (void)drawRect:(NSRect)dirtyRect {
  DrawRoundedBackground(type, [self bounds], NO);
}

@end
