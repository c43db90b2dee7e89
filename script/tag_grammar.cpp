#include "script/tag_grammar.h"

#include "core/timecode.h"
#include "script/document_ops.h"
#include "script/document_service.h"

namespace quillon {

namespace {

void fillRecord(Station& st, int i) {
  ScanTable& t = st.s.scan;
  SubtitleRecord& r = t.records[i];
  r.number = i;
  r.cueInSeconds = t.cueIn[i];
  r.cueOutSeconds = t.cueOut[i];
  r.cueInText = SEGaTC(t.cueIn[i], st.fps());
  r.cueOutText = SEGaTC(t.cueOut[i], st.fps());
  r.position = t.posDigit[i];
  r.alignment = t.alignChar[i];
  r.style = t.styleChar[i];
  u16 body = left(t.text[i], static_cast<long>(t.text[i].size()) - 2);
  long cr = instr(body, u"\r");
  if (cr >= 2) {
    r.line1 = trim(left(body, cr - 1));
    r.line2 = trim(mid(body, cr + 1));
  } else {
    r.line1 = trim(replaceAll(body, u"\r", u""));
    r.line2.clear();
  }
  r.dialogue = !r.line1.empty() && !r.line2.empty() && r.line1[0] == u'-' && r.line2[0] == u'-';
}

// `TCF`: the first cue-in above zero among the entries kept.
double firstNonZeroCueIn(const ScanTable& tb) {
  for (int i = 1; i <= tb.count(); ++i)
    if (tb.cueIn[i] > 0) return tb.cueIn[i];
  return 0;
}

void headerError(Station& st, const u16& text, long t, long shown) {
  critical(st.ui, u"Header format error in :\r\r" + tagField(text, t, 0, shown) + u"...\r\r");
  st.s.scan.subtitleCount = 1;
  findFromTop(st, tagField(text, t, 0, 30));
}

}  // namespace

int lookUpCharacter(Station& st, const u16& name) {
  Roster& r = st.s.roster;
  int j = 1;
  while (j < kRosterCapacity && !r.voces[j].empty() && r.voces[j] != name) ++j;
  if (j >= kRosterCapacity) {
    critical(st.ui, u"Error: Character does not exist: \r" + name);
    return 0;
  }
  if (r.voces[j].empty() && !name.empty()) {
    r.voces[j] = name;
    r.numvoces = static_cast<int16_t>(j);
    // The character forms' lists mirror the roster.
    st.s.pickingList.items.push_back(name);
    st.s.rosterFormList.items.push_back(name);
  }
  return j;
}

bool scanSubtitles(Station& st, ScanMode mode) {
  ScanTable& tb = st.s.scan;
  tb.clear();
  st.s.TCF = 0;
  if (st.beginSubtitleScan) st.beginSubtitleScan(st);
  if (!st.doc) return false;
  DocumentService& d = *st.doc;
  const u16 text = mode == ScanMode::Selection ? d.selection() : d.content();
  const long base = mode == ScanMode::Selection ? d.selectionRange().start : 0;  // where `text` starts in the document
  const long len = static_cast<long>(text.size());
  const int fps = st.fps();
  const double now = transformadaTCactual(st.s);

  bool pending = false;  // an error passed over, which ends the walk at the next tag
  long cur = instr(1, text, u"UB[");
  long nxt = cur > 0 ? instr(cur + 5, text, u"UB[") : 0;
  if (cur > 0 && nxt == 0) nxt = len;
  int i = 1;

  while (cur > 0 && cur < len && nxt > 0 && !pending && i <= kScanCapacity) {
    const long t = cur - 2;  // 0-based offset of the tag's first letter
    bool skip = tagChar(text, t, tag_place::kPosition) == CR;
    if (!skip && tagChar(text, t, tag_place::kShortClose) != u']') {
      if (tagChar(text, t, tag_place::kArrow) != u'>' || tagChar(text, t, tag_place::kClose) != u']') {
        headerError(st, text, t, 34);
        return false;
      }
    }
    const char16_t letter = t >= 0 ? text[static_cast<size_t>(t)] : u'\0';
    tb.tagAt[i] = base + t;
    if (!skip && letter == u'S') {
      const TimingTag tag = readTag(text, t, TimingTag::Kind::Subtitle);
      tb.cueIn[i] = TCaSEG(tag.cueIn, fps, st.ui);
      tb.cueOut[i] = TCaSEG(tag.cueOut, fps, st.ui);
      if (tb.cueIn[i] == -1 || tb.cueOut[i] == -1) pending = true;
      tb.posDigit[i] = leadingNumber(u16(1, tag.position)) > 9 ? u'0' : tag.position;
      tb.alignChar[i] = tag.alignment;
      tb.styleChar[i] = tag.style;
      tb.isSubtitle[i] = true;
      // The note: a blank behind the tag, then text up to a CR looked for
      // only within the ten characters from that blank.
      u16 window = tagField(text, t, tag_place::kLength, 10);
      long cr = instr(window, u"\r");
      long bodyStart;  // 0-based offset of the subtitle's text
      if (cr == 0) {
        tb.noteText[i].clear();
        bodyStart = t + tag_place::kLength;
      } else {
        tb.noteText[i] = cr > 1 ? tagField(text, t, tag_place::kTrailer, cr - 2) : u16{};
        bodyStart = t + tag_place::kLength + cr;
      }
      long bodyEnd = nxt - 2;  // 0-based: just before the next tag's first letter
      tb.text[i] = bodyEnd > bodyStart ? text.substr(static_cast<size_t>(bodyStart), static_cast<size_t>(bodyEnd - bodyStart)) : u16{};
      fillRecord(st, i);
      bool kept = tb.cueIn[i] >= 0 && tb.cueOut[i] >= 0 && !(mode == ScanMode::FromCurrentPosition && tb.cueIn[i] < now);
      if (st.checkSubtitle && !st.checkSubtitle(st, i, kept)) return false;
      if (kept) ++i;
    } else if (!skip && letter == u'D') {
      const bool shortTag = tagChar(text, t, tag_place::kShortClose) == u']';
      const TimingTag tag = readTag(text, t, shortTag ? TimingTag::Kind::ShortDubbing : TimingTag::Kind::Dubbing);
      const u16& inText = tag.cueIn;
      long nameAt;
      tb.cueIn[i] = TCaSEG(inText, fps, st.ui);
      if (shortTag) {
        tb.cueOut[i] = 0;
        nameAt = t + tag_place::kShortTrailer;
      } else {
        tb.posDigit[i] = tag.position;
        tb.alignChar[i] = tag.alignment;
        tb.styleChar[i] = tag.style;
        tb.voiceOn[i] = tag.style == u'N';
        tb.cueOut[i] = TCaSEG(tag.cueOut, fps, st.ui);
        nameAt = t + tag_place::kTrailer;
      }
      if (tb.cueIn[i] == -1 || tb.cueOut[i] == -1) pending = true;
      tb.isSubtitle[i] = false;
      // An open cue-out before this one closes at this cue-in.
      if (i > 1 && tb.cueOut[i - 1] == 0) tb.cueOut[i - 1] = tb.cueIn[i];
      if (!shortTag && i > 1 && tb.cueOut[i] > 0 && tb.cueOut[i] < tb.cueIn[i]) {
        critical(st.ui, u"Time code sequence error in [" + inText + u"]\rCue-out occurs before cue-in.");
        tb.subtitleCount = 1;
        return false;
      }
      long n = characterNameLength(text, nameAt);
      if (faultyNameLength(n)) {
        critical(st.ui, u"Error: Invalid Format in character name in TC=" + inText);
        tb.subtitleCount = 1;
        if (!shortTag) findCueOut(st, inText);
        return false;
      }
      u16 name = text.substr(static_cast<size_t>(std::min(nameAt, len)), static_cast<size_t>(n));
      int slot = lookUpCharacter(st, name);
      if (slot == 0) return false;
      tb.voiceIndex[i] = slot;
      long bodyStart = nameAt + n + 1;
      long bodyEnd = nxt - 2;
      tb.text[i] = bodyEnd > bodyStart ? text.substr(static_cast<size_t>(bodyStart), static_cast<size_t>(bodyEnd - bodyStart)) : u16{};
      bool kept = tb.cueIn[i] >= 0 && tb.cueOut[i] >= 0 && !(mode == ScanMode::FromCurrentPosition && tb.cueIn[i] < now);
      if (kept) ++i;
    }
    cur = nxt;
    nxt = instr(cur + 5, text, u"UB[");
    if (nxt == 0) nxt = len;
  }
  tb.subtitleCount = i - 1;
  st.s.TCF = firstNonZeroCueIn(tb);
  return i > 1;
}

bool scanCaptions(Station& st, ScanMode mode) {
  ScanTable& tb = st.s.scan;
  tb.clearCaptionRows();
  if (!attachDocument(st)) return false;
  st.ui.setPointer(Pointer::Hourglass);
  tb.clear();
  st.s.TCF = 0;
  DocumentService& d = *st.doc;
  const u16 text = mode == ScanMode::Selection ? d.selection() : d.content();
  const long len = static_cast<long>(text.size());
  const int fps = st.fps();

  bool pending = false;
  const u16 head = tagHead(TimingTag::Kind::Caption);
  long cur = instr(1, text, head);
  long nxt = cur > 0 ? instr(cur + tag_place::kTrailer, text, head) : 0;
  if (cur > 0 && nxt == 0) nxt = len + 1;
  int i = 1;
  while (cur > 0 && cur <= len && !pending && i <= kScanCapacity) {
    const long t = cur - 1;
    if (tagChar(text, t, tag_place::kArrow) != u'>' || tagChar(text, t, tag_place::kClose) != u']') {
      st.ui.setPointer(Pointer::Default);
      headerError(st, text, t, 30);
      return false;
    }
    const TimingTag tag = readTag(text, t, TimingTag::Kind::Caption);
    tb.posDigit[i] = tag.position;
    tb.styleChar[i] = tag.style;
    tb.alignChar[i] = tag.alignment;
    tb.isSubtitle[i] = true;
    tb.cueIn[i] = TCaSEG(tag.cueIn, fps, st.ui);
    tb.cueOut[i] = TCaSEG(tag.cueOut, fps, st.ui);
    if (tb.cueIn[i] == -1 || tb.cueOut[i] == -1) pending = true;
    // Rows begin behind the tag and its CR and stop at the next tag.
    long rowsStart = t + tag_place::kTrailer, rowsEnd = nxt - 1;
    tb.text[i] = rowsEnd > rowsStart ? text.substr(static_cast<size_t>(rowsStart), static_cast<size_t>(rowsEnd - rowsStart)) : u16{};
    long p = rowsStart;
    for (int r = 0; r < 4 && p < rowsEnd; ++r) {
      long e = p;
      while (e < rowsEnd && text[static_cast<size_t>(e)] != CR) ++e;
      tb.captionRows[i][r] = text.substr(static_cast<size_t>(p), static_cast<size_t>(e - p));
      p = e + 1;
    }
    fillRecord(st, i);
    if (st.checkCaption && !st.checkCaption(st, i)) {
      st.ui.setPointer(Pointer::Default);
      tb.subtitleCount = 1;
      return false;
    }
    ++i;
    cur = nxt;
    nxt = cur <= len ? instr(cur + tag_place::kTrailer, text, head) : 0;
    if (nxt == 0) nxt = len + 1;
  }
  tb.subtitleCount = i - 1;
  st.s.TCF = firstNonZeroCueIn(tb);
  st.ui.setPointer(Pointer::Default);
  return tb.subtitleCount > 0;
}

u16 subtitleTag(int position, char16_t alignment, char16_t style, double cueIn, double cueOut, int fps) {
  return TimingTag::subtitle(positionDigit(position), alignment, style, SEGaTC(cueIn, fps), SEGaTC(cueOut, fps)).line();
}

u16 textlessSubtitleTag(int position, char16_t alignment, double cueIn, double cueOut, int fps) {
  return subtitleTag(position, alignment, u'N', cueIn, cueOut, fps) + u"\r";
}

void insertSubtitleTag(Station& st, const u16& tag) {
  DocumentService& d = *st.doc;
  d.insertBefore(d.selectionParagraph(1), tag);
}

u16 timesPattern(const u16& cueIn, const u16& cueOut) {
  return tagTimes(tcSearchPattern(cueIn), tcSearchPattern(cueOut));
}

u16 wholeTagPattern(const u16& cueIn, const u16& cueOut) {
  return tagHead(TimingTag::Kind::Subtitle) + u"^?^?^? " + timesPattern(cueIn, cueOut);
}

}  // namespace quillon
