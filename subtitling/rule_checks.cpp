#include "subtitling/rule_checks.h"

#include <cmath>

#include "core/timecode.h"
#include "script/document_ops.h"
#include "script/document_service.h"

namespace quillon {

namespace {

enum class Cursor { CueIn, CueOut };

// One rule's question. Yes lets the entry go on to the next rule; No leaves
// the scan with the cursor on the tag.
bool ask(Station& st, const u16& text, Icon icon, Cursor cursor, double in, double out) {
  if (msgBox(st.ui, text, Buttons::YesNo, icon, 2) != Answer::No) return true;
  st.s.scan.subtitleCount = 1;
  st.ui.setPointer(Pointer::Default);
  if (st.doc) {
    st.doc->selectAll();
    if (cursor == Cursor::CueOut)
      findCueOut(st, SEGaTC(out, st.fps()));
    else
      findCueIn(st, SEGaTC(in, st.fps()));
  }
  return false;
}

u16 rowLimitHead(const Session& s, const char* where, const u16& tc) {
  return u"Error: Maximum number of characters per row (" + numberText(s.maxCharsRow) + u") exceeded in " +
         fromLatin1(where) + u" in [" + tc + u"]\r\r";
}

// Place (1-based) of the first CR of the text without its two closing CRs;
// 0 when it has none.
long secondLineAt(const u16& text) {
  return instr(left(text, static_cast<long>(text.size()) - 2), u"\r");
}

bool runChecks(Station& st, int i) {
  const Session& s = st.s;
  const ScanTable& tb = s.scan;
  const int fps = st.fps();
  const double In = tb.cueIn[i], Out = tb.cueOut[i];
  const double PrevOut = i >= 2 ? tb.cueOut[i - 1] : 0;
  const u16& text = tb.text[i];
  const u16 TC = SEGaTC(In, fps);
  const auto critical = Icon::Critical;

  // 1. Minimum on-air; the one-line minimum stands for every subtitle.
  if (In > 0 && Out > 0 && In < Out && Out - In < s.minOnAir1) {
    u16 m = u"1-line subtitle: On-air duration violation in [" + TC + u"]\rCue-out for:\r\r" + text +
            u"occurs too early.\rPlease allow subtitle at least " + formatNumber(s.minOnAir1, "0.00") +
            u" sec. on the air.\rContinue?";
    if (!ask(st, m, critical, Cursor::CueOut, In, Out)) return false;
  }
  // 2. Maximum on-air.
  if (In > 0 && Out > 0 && Out - In > s.maxOnAir) {
    u16 m = u"On-air duration violation in [" + TC + u"]\rCue-out for:\r\r" + text +
            u"occurs too late.\rPlease maintain subtitles for less than " + formatNumber(s.maxOnAir, "0.00") +
            u" sec. on the air.\rContinue?";
    if (!ask(st, m, critical, Cursor::CueIn, In, Out)) return false;
  }
  // 3. Sequence against the previous subtitle.
  if (PrevOut > 0 && i >= 2 && PrevOut > In) {
    u16 m = u"Time code sequence error in [" + TC + u"]\rCue-in for:\r\r" + text +
            u"occurs before cue-out for previous subtitle.\r\rContinue?";
    if (!ask(st, m, critical, Cursor::CueIn, In, Out)) return false;
  }
  // 4. Interleave; an exact interleave fires too.
  if (s.minInterleave > 0 && i > 1 && PrevOut > 0 && !(PrevOut + FRAMESaSEG(s.minInterleave, fps) < In)) {
    u16 m = u"Warning: Minimum interleave violation in [" + TC + u"]\rCue-in for:\r\r" + text +
            u"occurs too early.\rPlease allow at least " + numberText(s.minInterleave) +
            u" frames between consecutive subtitles.\rContinue?";
    if (!ask(st, m, critical, Cursor::CueIn, In, Out)) return false;
  }
  // 5. Sequence within the subtitle.
  if (Out > 0 && !(Out > In)) {
    u16 m = u"Time code sequence error in [" + TC + u"]\rCue-out for:\r\r" + text +
            u"occurs before cue-in for same subtitle.\r\rContinue?";
    if (!ask(st, m, critical, Cursor::CueOut, In, Out)) return false;
  }
  // 6 and 7. Reading speed. A zero duration leaves the rate undefined and
  // the entry passes both.
  const double chars = static_cast<double>(text.size()) - 2;
  const double dur = Out - In;
  if (s.readingSpeedCheck && dur != 0) {
    const double cps = chars / dur;
    const u16 percent = formatNumber(cps / s.readingSpeed * 100, "00");
    bool fastAccepted = false;
    if ((s.fastThreshold / 100 + 1) * s.readingSpeed < cps) {
      const double extend = chars / s.readingSpeed - dur;
      const double reduce = std::nearbyint(chars - dur * s.readingSpeed);
      u16 m = u"Warning: Fast subtitle threshold exceded in [" + TC + u"]\r\r" + text + u"(" + percent +
              u"%).\r\rEither extend it in time by " + right(SEGaTC(extend, fps), 5) + u" (cue out => " +
              SEGaTC(Out + extend, fps) + u") \ror reduce it by " + formatNumber(reduce, "00") +
              u" Caracters.\r\rContinue?";
      if (!ask(st, m, Icon::Exclamation, Cursor::CueIn, In, Out)) return false;
      fastAccepted = true;
    }
    if (!fastAccepted && s.slowThreshold != 0 && (1 - s.slowThreshold / 100) * s.readingSpeed > cps) {
      u16 m = u"Warning: Slow subtitle threshold exceded in [" + TC + u"]\r\r" + text + u"\r(" + percent +
              u"%).\rContinue?";
      if (!ask(st, m, Icon::Exclamation, Cursor::CueIn, In, Out)) return false;
    }
  }
  // 8. Row length.
  const long len = static_cast<long>(text.size());
  const long line2At = secondLineAt(text);
  if (line2At < 2) {
    if (len - 2 > s.maxCharsRow) {
      u16 m = rowLimitHead(s, "single-line subtitle", TC) + text + u"\rContinue?";
      if (!ask(st, m, critical, Cursor::CueIn, In, Out)) return false;
    }
  } else {
    const long first = line2At - 1, second = len - line2At - 2;
    if (first > s.maxCharsRow) {
      u16 m = rowLimitHead(s, "first line of subtitle", TC) + left(text, line2At) + u"\rContinue?";
      if (!ask(st, m, critical, Cursor::CueIn, In, Out)) return false;
    }
    if (second > s.maxCharsRow) {
      u16 m = rowLimitHead(s, "second line of subtitle", TC) + mid(text, line2At + 1, std::min(second, 200L)) +
              u"\rContinue?";
      if (!ask(st, m, critical, Cursor::CueIn, In, Out)) return false;
    }
  }
  return true;
}

}  // namespace

void beginSubtitleChecks(Station& st) {
  st.s.totalbloq2lineas = 0;
  st.s.totalbloq1linea = 0;
  st.s.totalChars = 0;
}

bool checkSubtitleEntry(Station& st, int index, bool kept) {
  if (!st.s.checksDisabled && !runChecks(st, index)) return false;
  // The totals are kept whatever the rules say.
  if (kept) {
    const u16& text = st.s.scan.text[index];
    if (secondLineAt(text) >= 2)
      st.s.totalbloq2lineas += 1;
    else
      st.s.totalbloq1linea += 1;
    st.s.totalChars += static_cast<double>(text.size()) - 2;
  }
  return true;
}

void installSubtitleChecks(Station& st) {
  st.beginSubtitleScan = beginSubtitleChecks;
  st.checkSubtitle = checkSubtitleEntry;
}

}  // namespace quillon
