#include "subtitling/retiming.h"

#include "core/timecode.h"
#include "script/document_ops.h"
#include "script/document_service.h"
#include "script/tag_grammar.h"
#include "subtitling/editing_commands.h"
#include "subtitling/in_place_times.h"

namespace quillon {

namespace {

// The selection when it holds tags, otherwise the whole script.
bool readBlock(Station& st) {
  if (!attachDocument(st)) return false;
  st.s.scan.subtitleCount = 0;
  if (!scanSubtitles(st, ScanMode::Selection)) scanSubtitles(st, ScanMode::WholeScript);
  return st.s.scan.subtitleCount > 0;
}

void changeRate(Station& st, int16_t from, int16_t to) {
  const int16_t kept = st.s.g_fps;
  st.s.g_fps = from;  // the scan reads the source timecodes
  if (readBlock(st)) {
    if (st.s.inSituOffset)
      retimeInPlace(st, 0, from, to);
    else
      retimeIntoNewDocument(st, 0, to);
  }
  st.s.g_fps = kept;
}

// Asks for a burnt-in timecode; false when the answer is empty or unreadable.
bool askBurntIn(Station& st, const char* prompt, double& seconds) {
  st.s.g_fVideoRun = false;
  auto answer = st.ui.inputBox(fromLatin1(prompt), g_appTitle, u16());
  if (!answer || answer->empty()) return false;
  seconds = TCaSEG(expandTypedTimecode(*answer), st.fps(), st.ui);
  return seconds > -1;
}

void showTimecodeWindow(Station& st) {
  const Session& s = st.s;
  st.view.LabCom.caption = SEGaTC(s.tcStart, st.fps());
  st.view.LabDur.caption = SEGaTC(s.tcEnd, st.fps());
  st.view.LabTimecode.caption = SEGaTC(transformadaTCactual(s), st.fps());
}

}  // namespace

u16 expandTypedTimecode(const u16& t) {
  if (t.size() == 6) return mid(t, 1, 2) + u":" + mid(t, 3, 2) + u":" + mid(t, 5, 2) + u":00";
  if (t.size() == 8) return mid(t, 1, 2) + u":" + mid(t, 3, 2) + u":" + mid(t, 5, 2) + u":" + mid(t, 7, 2);
  return t;
}

void retimeInPlace(Station& st, double offset, int fromFps, int toFps) {
  const ScanTable& tb = st.s.scan;
  InPlaceTimes times(st);
  for (int i = 1; i <= tb.count(); ++i) {
    // The seconds stay; only their frame labels change with the rate.
    const u16 find = timesPattern(SEGaTC(tb.cueIn[i], fromFps), SEGaTC(tb.cueOut[i], fromFps));
    times.rewrite(i, find, tagTimes(SEGaTC(tb.cueIn[i] + offset, toFps), SEGaTC(tb.cueOut[i] + offset, toFps)));
  }
}

void retimeIntoNewDocument(Station& st, double offset, int toFps) {
  const Session& s = st.s;
  const ScanTable& tb = s.scan;
  DocumentService& d = *st.doc;
  d.documentsAdd();
  d.setFontName(u"Arial Unicode MS");
  // The blocks in script order; put at the head of the new document in one
  // go, as block after block put in front from the last to the first.
  u16 out;
  for (int i = 1; i <= tb.count(); ++i) {
    const u16 in = SEGaTC(tb.cueIn[i] + offset, toFps), outTc = SEGaTC(tb.cueOut[i] + offset, toFps);
    if (!tb.isSubtitle[i]) {
      // Every dubbing tag is written with the voice on.
      const int v = static_cast<int>(tb.voiceIndex[i]);
      const u16 name = v >= 1 && v <= kRosterCapacity ? s.roster.voces[v] : u16();
      TimingTag tag = TimingTag::dubbing(u'N', in, outTc);
      tag.trailer = name;
      out += tag.line() + tb.text[i];
    } else {
      // Only N survives as a style; 1 and 2 become I, and the alignment blank.
      TimingTag tag = TimingTag::subtitle(tb.posDigit[i], u' ', tb.styleChar[i] == u'N' ? u'N' : u'I', in, outTc);
      if (!tb.noteText[i].empty()) tag.trailer = tb.noteText[i];
      out += tag.line() + tb.text[i];
    }
  }
  // The scanners need a tag behind the last dubbing text to end it.
  if (tb.count() > 0 && !tb.isSubtitle[tb.count()]) out += tagHead(TimingTag::Kind::Dubbing) + CR;
  d.contentInsertBefore(out);
}

void mnu_tex_off(Station& st) {
  if (!readBlock(st)) return;
  auto answer = st.ui.inputBox(u"Enter new cue-in time code of the first subtitle/dialog in the selected block",
                               g_appTitle, st.view.LabTimecode.caption);
  if (!answer || answer->empty()) return;
  const double target = TCaSEG(*answer, st.fps(), st.ui);
  if (target == -1) return;
  const double offset = target - st.s.scan.cueIn[1];
  if (st.s.inSituOffset)
    retimeInPlace(st, offset, st.fps(), st.fps());
  else
    retimeIntoNewDocument(st, offset, st.fps());
}

void mnu_tex_PALtoNTSC(Station& st) { changeRate(st, 25, 30); }
void mnu_tex_NTSCtoPAL(Station& st) { changeRate(st, 30, 25); }

void mnu_tag_in(Station& st) {
  double entered;
  if (!askBurntIn(st, "Enter burnt-in timecode (in point)...", entered)) return;
  Session& s = st.s;
  s.tcStart = entered - s.g_dblPosActual;
  s.tcEnd = s.tcStart + s.videoDuration;
  showTimecodeWindow(st);
}

void mnu_tag_out(Station& st) {
  double entered;
  if (!askBurntIn(st, "Enter burnt-in timecode (out point)", entered)) return;
  Session& s = st.s;
  s.tcEnd = s.videoDuration - s.g_dblPosActual + entered;
  showTimecodeWindow(st);
}

void mnu_tex_iTC(Station& st) {
  if (!attachDocument(st)) return;
  const int fps = st.fps();
  u16 proposal;
  const u16 sel = st.doc->selection();
  if (sel.size() >= 11 && TCaSEG(left(sel, 11), fps, st.ui) > 0) proposal = left(sel, 11);
  auto answer = st.ui.inputBox(u"Enter destination time code", g_appTitle, proposal);
  if (!answer || answer->empty()) return;
  const double t = TCaSEG(left(expandTypedTimecode(*answer), 11), fps, st.ui);
  const Session& s = st.s;
  if (t >= 0 && t >= s.tcStart && t <= s.tcEnd) goToPosition(st, transformadainversa(s, t));
}

}  // namespace quillon
