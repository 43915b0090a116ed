// A font stands in for characters that a text's own font lacks. GNUstep's own search finds none and shows question
// marks.
#import <Cocoa/Cocoa.h>

#include <unordered_map>

#include "Characters.h"
#include "MethodReplacement.h"
#include "Replacements.h"

namespace {

using FixFonts = void (*)(id, SEL, NSRange);
FixFonts original_fix_fonts;

// Under this name AppKit, too, keeps the font that a text had before.
NSString *const kOriginalFont = @"NSOriginalFont";

// Every font that windows use has what comes before.
constexpr UTF32Char kFirstForeignCharacter = 0x300;

bool Has(NSFont *font, UTF32Char character) {
  return [[font coveredCharacterSet] longCharacterIsMember:character];
}

NSString *FirstFontWith(UTF32Char character, NSArray *names) {
  for (NSString *name in names) {
    if (Has([NSFont fontWithName:name size:12], character)) return name;
  }
  return nil;
}

// The fonts that install with the program come first, those for pictures and signs before the others where they belong.
NSString *FindFontName(UTF32Char character, bool bold) {
  NSArray *scripts = bold ? @[ @"DejaVuSans-Bold", @"DejaVuSans", @"WenQuanYiMicroHei", @"Symbola" ]
                          : @[ @"DejaVuSans", @"WenQuanYiMicroHei", @"Symbola" ];
  NSArray *pictures = @[ @"Symbola" ];
  NSString *name = character >= kFirstSupplementaryCharacter ? FirstFontWith(character, pictures) : nil;
  if (!name) name = FirstFontWith(character, scripts);
  return name ? name : FirstFontWith(character, [[NSFontManager sharedFontManager] availableFonts]);
}

// Returns the name of a font with the character, or nil when there is none. Looking through all fonts takes long, so
// what was found is remembered.
NSString *FontNameFor(UTF32Char character, bool bold) {
  static auto &found = *new std::unordered_map<uint64_t, NSString *>;
  const uint64_t key = uint64_t{character} << 1 | (bold ? 1 : 0);
  const auto known = found.find(key);
  if (known != found.end()) return known->second;
  NSString *name = [FindFontName(character, bold) retain];
  found[key] = name;
  return name;
}

// The font for the character in a text that is set in `font`, or nil when it is that one.
NSFont *SubstituteFor(UTF32Char character, NSFont *font) {
  if (character < kFirstForeignCharacter || IsInvisible(character) || Has(font, character)) return nil;
  const bool bold = [[NSFontManager sharedFontManager] traitsOfFont:font] & NSBoldFontMask;
  NSString *name = FontNameFor(character, bold);
  return name ? [NSFont fontWithName:name size:[font pointSize]] : nil;
}

bool HasForeignCharacters(NSString *text, NSRange range) {
  for (NSUInteger i = range.location; i < NSMaxRange(range); ++i) {
    if ([text characterAtIndex:i] >= kFirstForeignCharacter) return true;
  }
  return false;
}

// Gives back their own font to texts that have got a substitute.
void RestoreFonts(NSMutableAttributedString *text, NSRange range) {
  for (NSUInteger i = range.location; i < NSMaxRange(range);) {
    NSRange run;
    NSFont *original = [text attribute:kOriginalFont atIndex:i longestEffectiveRange:&run inRange:range];
    if (original) {
      [text addAttribute:NSFontAttributeName value:original range:run];
      [text removeAttribute:kOriginalFont range:run];
    }
    i = NSMaxRange(run);
  }
}

void SubstituteFonts(NSMutableAttributedString *text, NSRange range) {
  for (NSUInteger i = range.location; i < NSMaxRange(range);) {
    NSUInteger length = 0;
    const UTF32Char character = CharacterAt([text string], i, &length);
    NSFont *font = [text attribute:NSFontAttributeName atIndex:i effectiveRange:NULL];
    NSFont *substitute = font ? SubstituteFor(character, font) : nil;
    if (substitute) {
      const NSRange place = NSMakeRange(i, length);
      [text addAttribute:NSFontAttributeName value:substitute range:place];
      [text addAttribute:kOriginalFont value:font range:place];
    }
    i += length;
  }
}

void FixFontsOfForeignCharacters(id text, SEL selector, NSRange range) {
  original_fix_fonts(text, selector, range);
  RestoreFonts(text, range);
  if (!HasForeignCharacters([text string], range)) return;
  // Half a pair has no font.
  const NSRange whole = [[text string] rangeOfComposedCharacterSequencesForRange:range];
  SubstituteFonts(text, whole);
}

}  // namespace

void InstallFontSubstitution() {
  original_fix_fonts = ReplaceInstanceMethod<FixFonts>("NSMutableAttributedString",
                                                       "fixFontAttributeInRange:", FixFontsOfForeignCharacters);
}
