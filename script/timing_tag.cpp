#include "script/timing_tag.h"

namespace quillon {

char16_t tagChar(u16v text, long at, long place) {
  const long i = at + place;
  return i >= 0 && i < static_cast<long>(text.size()) ? text[static_cast<size_t>(i)] : u'\0';
}

u16 tagField(u16v text, long at, long place, long n) {
  const long i = at + place;
  if (i < 0 || i >= static_cast<long>(text.size())) return {};
  return u16(text.substr(static_cast<size_t>(i), static_cast<size_t>(n)));
}

TimingTag TimingTag::subtitle(char16_t position, char16_t alignment, char16_t style, u16 cueIn, u16 cueOut) {
  return {Kind::Subtitle, position, alignment, style, std::move(cueIn), std::move(cueOut), std::nullopt};
}

TimingTag TimingTag::dubbing(char16_t voice, u16 cueIn, u16 cueOut) {
  return {Kind::Dubbing, u'0', u' ', voice, std::move(cueIn), std::move(cueOut), std::nullopt};
}

TimingTag TimingTag::shortDubbing(u16 cueIn) {
  TimingTag t;
  t.kind = Kind::ShortDubbing;
  t.cueIn = std::move(cueIn);
  return t;
}

TimingTag TimingTag::caption(char16_t position, char16_t style, char16_t alignment, u16 cueIn, u16 cueOut) {
  return {Kind::Caption, position, alignment, style, std::move(cueIn), std::move(cueOut), std::nullopt};
}

u16 tagHead(TimingTag::Kind kind) {
  switch (kind) {
    case TimingTag::Kind::Subtitle: return u"SUB[";
    case TimingTag::Kind::Caption: return u"CAP[";
    default: return u"DUB[";
  }
}

u16 tagTimes(u16v cueIn, u16v cueOut) { return u16(cueIn) + u">" + u16(cueOut) + u"]"; }

char16_t positionDigit(int number) {
  const u16 digits = numberText(number);
  return digits.empty() ? u'0' : digits.back();
}

u16 TimingTag::text() const {
  u16 t = tagHead(kind);
  if (kind == Kind::ShortDubbing) return t + cueIn + u"]\t" + trailer.value_or(u16());
  t += position;
  if (kind == Kind::Caption) {
    t += style;
    t += alignment;
  } else {
    t += alignment;
    t += style;
  }
  t += u' ';
  t += tagTimes(cueIn, cueOut);
  if (trailer) t += u' ' + *trailer;
  return t;
}

u16 TimingTag::line() const { return text() + CR; }

long characterNameLength(u16v text, long from) {
  long n = 0;
  while (n < kCharacterNameLimit) {
    const long i = from + n;
    if (i >= static_cast<long>(text.size()) || text[static_cast<size_t>(i)] == CR) break;
    ++n;
  }
  return n;
}

TimingTag readTag(u16v text, long at, TimingTag::Kind kind) {
  using namespace tag_place;
  TimingTag t;
  t.kind = kind;
  if (kind == TimingTag::Kind::ShortDubbing) {
    t.cueIn = tagField(text, at, kShortCueIn, kTimecodeLength);
    return t;
  }
  t.position = tagChar(text, at, kPosition);
  const bool caption = kind == TimingTag::Kind::Caption;
  t.alignment = tagChar(text, at, caption ? kCaptionAlignment : kAlignment);
  t.style = tagChar(text, at, caption ? kCaptionStyle : kStyle);
  t.cueIn = tagField(text, at, kCueIn, kTimecodeLength);
  t.cueOut = tagField(text, at, kCueOut, kTimecodeLength);
  return t;
}

}  // namespace quillon
