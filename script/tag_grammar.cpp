#include "script/tag_grammar.h"

#include "core/timecode.h"
#include "script/document_ops.h"
#include "script/document_service.h"

namespace quillon {

namespace {

// Character at 0-based tag position `p` of the tag whose first letter is at
// 0-based text offset `t`; NUL past the text.
char16_t tagChar(const u16& text, long t, long p) {
  long i = t + p;
  return i >= 0 && i < static_cast<long>(text.size()) ? text[static_cast<size_t>(i)] : u'\0';
}

u16 tagField(const u16& text, long t, long p, long n) {
  long i = t + p;
  if (i < 0 || i >= static_cast<long>(text.size())) return {};
  return text.substr(static_cast<size_t>(i), static_cast<size_t>(n));
}

// Characters up to the next CR from `from`, giving up at 255.
long nameLength(const u16& text, long from) {
  long n = 0;
  while (n < 255) {
    long i = from + n;
    if (i >= static_cast<long>(text.size()) || text[static_cast<size_t>(i)] == CR) break;
    ++n;
  }
  return n;
}

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
    bool skip = tagChar(text, t, 4) == CR;
    if (!skip && tagChar(text, t, 15) != u']') {
      if (tagChar(text, t, 19) != u'>' || tagChar(text, t, 31) != u']') {
        headerError(st, text, t, 34);
        return false;
      }
    }
    const char16_t letter = t >= 0 ? text[static_cast<size_t>(t)] : u'\0';
    tb.tagAt[i] = base + t;
    if (!skip && letter == u'S') {
      const u16 inText = tagField(text, t, 8, 11), outText = tagField(text, t, 20, 11);
      tb.cueIn[i] = TCaSEG(inText, fps, st.ui);
      tb.cueOut[i] = TCaSEG(outText, fps, st.ui);
      if (tb.cueIn[i] == -1 || tb.cueOut[i] == -1) pending = true;
      char16_t pos = tagChar(text, t, 4);
      tb.posDigit[i] = leadingNumber(u16(1, pos)) > 9 ? u'0' : pos;
      tb.alignChar[i] = tagChar(text, t, 5);
      tb.styleChar[i] = tagChar(text, t, 6);
      tb.isSubtitle[i] = true;
      // The note: a blank at 32, then text up to a CR looked for only
      // within the ten characters from 32.
      u16 window = tagField(text, t, 32, 10);
      long cr = instr(window, u"\r");
      long bodyStart;  // 0-based offset of the subtitle's text
      if (cr == 0) {
        tb.noteText[i].clear();
        bodyStart = t + 32;
      } else {
        tb.noteText[i] = cr > 1 ? tagField(text, t, 33, cr - 2) : u16{};
        bodyStart = t + 32 + cr;
      }
      long bodyEnd = nxt - 2;  // 0-based: just before the next tag's first letter
      tb.text[i] = bodyEnd > bodyStart ? text.substr(static_cast<size_t>(bodyStart), static_cast<size_t>(bodyEnd - bodyStart)) : u16{};
      fillRecord(st, i);
      bool kept = tb.cueIn[i] >= 0 && tb.cueOut[i] >= 0 && !(mode == ScanMode::FromCurrentPosition && tb.cueIn[i] < now);
      if (st.checkSubtitle && !st.checkSubtitle(st, i, kept)) return false;
      if (kept) ++i;
    } else if (!skip && letter == u'D') {
      const bool shortTag = tagChar(text, t, 15) == u']';
      long nameAt;
      u16 inText;
      if (shortTag) {
        inText = tagField(text, t, 4, 11);
        tb.cueIn[i] = TCaSEG(inText, fps, st.ui);
        tb.cueOut[i] = 0;
        nameAt = t + 17;
      } else {
        inText = tagField(text, t, 8, 11);
        tb.cueIn[i] = TCaSEG(inText, fps, st.ui);
        tb.posDigit[i] = tagChar(text, t, 4);
        tb.alignChar[i] = tagChar(text, t, 5);
        tb.styleChar[i] = tagChar(text, t, 6);
        tb.voiceOn[i] = tagChar(text, t, 6) == u'N';
        tb.cueOut[i] = TCaSEG(tagField(text, t, 20, 11), fps, st.ui);
        nameAt = t + 33;
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
      long n = nameLength(text, nameAt);
      if (n == 1 || n >= 255) {
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
  long cur = instr(1, text, u"CAP[");
  long nxt = cur > 0 ? instr(cur + 33, text, u"CAP[") : 0;
  if (cur > 0 && nxt == 0) nxt = len + 1;
  int i = 1;
  while (cur > 0 && cur <= len && !pending && i <= kScanCapacity) {
    const long t = cur - 1;
    const u16 head = tagField(text, t, 0, 32);
    if (tagChar(text, t, 19) != u'>' || tagChar(text, t, 31) != u']') {
      st.ui.setPointer(Pointer::Default);
      headerError(st, text, t, 30);
      return false;
    }
    tb.posDigit[i] = tagChar(text, t, 4);
    tb.styleChar[i] = tagChar(text, t, 5);
    tb.alignChar[i] = tagChar(text, t, 6);
    tb.isSubtitle[i] = true;
    tb.cueIn[i] = TCaSEG(tagField(text, t, 8, 11), fps, st.ui);
    tb.cueOut[i] = TCaSEG(tagField(text, t, 20, 11), fps, st.ui);
    if (tb.cueIn[i] == -1 || tb.cueOut[i] == -1) pending = true;
    // Rows begin 33 characters behind the tag's start and stop at the next tag.
    long rowsStart = t + 33, rowsEnd = nxt - 1;
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
    nxt = cur <= len ? instr(cur + 33, text, u"CAP[") : 0;
    if (nxt == 0) nxt = len + 1;
  }
  tb.subtitleCount = i - 1;
  st.s.TCF = firstNonZeroCueIn(tb);
  st.ui.setPointer(Pointer::Default);
  return tb.subtitleCount > 0;
}

u16 subtitleTag(int position, char16_t alignment, char16_t style, double cueIn, double cueOut, int fps) {
  u16 pos = numberText(position);
  return u"SUB[" + right(pos, 1) + u16(1, alignment) + u16(1, style) + u" " + SEGaTC(cueIn, fps) + u">" +
         SEGaTC(cueOut, fps) + u"]\r";
}

u16 textlessSubtitleTag(int position, char16_t alignment, double cueIn, double cueOut, int fps) {
  return subtitleTag(position, alignment, u'N', cueIn, cueOut, fps) + u"\r";
}

void insertSubtitleTag(Station& st, const u16& tag) {
  DocumentService& d = *st.doc;
  d.insertBefore(d.selectionParagraph(1), tag);
}

u16 timesPattern(const u16& cueIn, const u16& cueOut) {
  return tcSearchPattern(cueIn) + u">" + tcSearchPattern(cueOut) + u"]";
}

u16 wholeTagPattern(const u16& cueIn, const u16& cueOut) { return u"SUB[^?^?^? " + timesPattern(cueIn, cueOut); }

}  // namespace quillon
