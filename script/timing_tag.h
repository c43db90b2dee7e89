// One timing tag of the script as a value: its fields, the one writer that
// lays them out and the one reader that takes them back from the places the
// scanners check. Places count from 0 at the tag's first letter:
//
//   SUB[ p a s _ HH:MM:SS:FF > HH:MM:SS:FF ] [_note] CR
//   DUB[ 0 _ v _ in > out ] _name CR       v: N voice on, F voice off
//   DUB[ in ] TAB name CR                  the short dubbing tag
//   CAP[ p s a _ in > out ] CR             the rows behind
#pragma once

#include <optional>

#include "core/text.h"

namespace quillon {

// Where a tag's fields stand.
namespace tag_place {
inline constexpr long kPosition = 4;
inline constexpr long kAlignment = 5;
inline constexpr long kStyle = 6;  // a dubbing tag's voice
inline constexpr long kCaptionStyle = 5;
inline constexpr long kCaptionAlignment = 6;
inline constexpr long kCueIn = 8;
inline constexpr long kArrow = 19;
inline constexpr long kCueOut = 20;
inline constexpr long kClose = 31;
inline constexpr long kLength = 32;        // a long tag up to its "]"
inline constexpr long kTrailer = 33;       // a note or a character name, behind "] "
inline constexpr long kShortCueIn = 4;     // the short dubbing tag's cue-in
inline constexpr long kShortClose = 15;    // and its "]"
inline constexpr long kShortTrailer = 17;  // its name, behind the TAB
inline constexpr long kTimecodeLength = 11;
}  // namespace tag_place

struct TimingTag {
  enum class Kind { Subtitle, Dubbing, ShortDubbing, Caption };

  Kind kind = Kind::Subtitle;
  char16_t position = u'0';
  char16_t alignment = u' ';
  char16_t style = u'N';  // a dubbing tag's voice
  u16 cueIn, cueOut;      // timecode texts; a short dubbing tag has no cue-out
  // Behind the tag on its line: a subtitle's note or a dubbing tag's
  // character. A long tag sets it off with a blank, an empty one too, the
  // short dubbing tag with its TAB.
  std::optional<u16> trailer;

  static TimingTag subtitle(char16_t position, char16_t alignment, char16_t style, u16 cueIn, u16 cueOut);
  // Position 0, no alignment.
  static TimingTag dubbing(char16_t voice, u16 cueIn, u16 cueOut);
  static TimingTag shortDubbing(u16 cueIn);
  static TimingTag caption(char16_t position, char16_t style, char16_t alignment, u16 cueIn, u16 cueOut);

  // The tag's text up to its trailer; `line` adds the CR that ends it.
  u16 text() const;
  u16 line() const;
};

// "SUB[", "DUB[" or "CAP[".
u16 tagHead(TimingTag::Kind kind);
// Cue-in ">" cue-out "]": the part of a tag a retiming rewrites.
u16 tagTimes(u16v cueIn, u16v cueOut);
// The last character of a number's text: the position digit of a tag.
char16_t positionDigit(int number);

// The character at `place` of the tag whose first letter stands at `at`
// (0-based in `text`), NUL past the text; `n` characters from there, as many
// as there are, empty past the text.
char16_t tagChar(u16v text, long at, long place);
u16 tagField(u16v text, long at, long place, long n);

// The fields of a tag of that kind whose first letter stands at `at` (0-based
// in `text`); a place past the text reads NUL or empty. Neither the shape nor
// the trailer is read: each scanner checks what it accepts.
TimingTag readTag(u16v text, long at, TimingTag::Kind kind);

// A dubbing tag's character name from `from`: its length up to the next CR,
// giving up at the limit. One character, or the limit reached, is no name.
inline constexpr long kCharacterNameLimit = 255;
long characterNameLength(u16v text, long from);
inline bool faultyNameLength(long n) { return n == 1 || n >= kCharacterNameLimit; }

// The italics a subtitle's style letter asks for: I the whole subtitle, 1 the
// first line, 2 the second, any other letter none.
inline bool italicFirstLine(char16_t style) { return style == u'I' || style == u'1'; }
inline bool italicSecondLine(char16_t style) { return style == u'I' || style == u'2'; }
inline bool italicWhole(char16_t style) { return style == u'I'; }

}  // namespace quillon
