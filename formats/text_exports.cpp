#include "formats/text_exports.h"

#include "core/atomic_file.h"
#include "core/timecode.h"
#include "formats/import_frame.h"
#include "script/document_service.h"
#include "script/timing_tag.h"

namespace quillon {

namespace {

const u16 kCRLF = u"\r\n";

double t(const Station& st, double x) { return transformadainversa(st.s, x); }

u16 milliseconds(double seconds) { return formatNumber(seconds * 1000, "0"); }

// Writes the file of a frame export and shows its message, or the box of
// the failed write in its place.
WriteResult writeTextExport(Station& st, const u16& name, const u16& text, TextEncoding enc, const char16_t* done) {
  WriteResult r = writeFile(toUtf8(name), encodeText(text + kCRLF, enc));
  st.ui.setPointer(Pointer::Default);
  if (r.failed())
    tellWriteFailure(st.ui, r);
  else
    msgBox(st.ui, done);
  return r;
}

}  // namespace

u16 samiText(const Station& st) {
  const ScanTable& tb = st.s.scan;
  u16 b = u"<SAMI><Head><STYLE TYPE=\"text/css\"> <!-- P {margin-left:  8pt;margin-right: 8pt;margin-bottom: 2pt; "
          u"margin-top:10pt;text-align: center; font-size: 12pt; font-family: arial Unicode, sans-serif; "
          u"font-weight: bold;color: #fee8c6; }.ENCC {Name:English; lang: en-US; SAMI_Type: CC;}--> "
          u"</Style></Head><BODY>" + kCRLF;
  for (int i = 1; i <= tb.count(); ++i) {
    if (!tb.isSubtitle[i]) continue;
    const char16_t mark = tb.styleChar[i];
    b += u"<Sync Start=" + milliseconds(t(st, tb.cueIn[i])) + u"><P Class=ENCC>";
    if (italicFirstLine(mark)) b += u"<I>";
    for (char16_t c : subtitleBody(tb.text[i])) {
      if (c == CR) {
        if (italicFirstLine(mark) && !italicSecondLine(mark)) b += u"</I>";
        b += u"<br>";
        if (italicSecondLine(mark)) b += u"<I>";
      } else {
        b += c;
      }
    }
    b += kCRLF + u"<Sync Start=" + milliseconds(t(st, tb.cueOut[i])) + u"><P Class=ENCC>&nbsp;" + kCRLF;
  }
  return b + u"</Body></SAMI>";
}

u16 sbvText(const Station& st) {
  const ScanTable& tb = st.s.scan;
  u16 b;
  for (int i = 1; i <= tb.count(); ++i) {
    if (tb.isSubtitle[i])
      b += SEGaTCV(t(st, tb.cueIn[i])) + u"," + SEGaTCV(t(st, tb.cueOut[i])) + kCRLF +
           replaceAll(subtitleBody(tb.text[i]), u"\r", kCRLF);
    b += kCRLF;
  }
  return b;
}

u16 ssaText(const Station& st) {
  const ScanTable& tb = st.s.scan;
  u16 b;
  for (const char16_t* line :
       {u"[Script Info]", u"Collisions: Normal", u"PlayResY: 640", u"", u"[V4 Styles]",
        u"Format: Name, Fontname, Fontsize, PrimaryColour, SecondaryColour, TertiaryColour, BackColour, Bold, "
        u"Italic, BorderStyle, Outline, Shadow, Alignment, MarginL, MarginR, MarginV, AlphaLevel, Encoding",
        u"Style: Default,Arial,36,16777215,16777215,16777215,-2147483640,-1,0,1,4,0,2,30,30,40,0,0", u"",
        u"[Events]", u"Format: Marked, Start, End, Style, Name, MarginL, MarginR, MarginV, Effect, Text"})
    b += line + kCRLF;
  for (int i = 1; i <= tb.count(); ++i) {
    if (!tb.isSubtitle[i]) continue;
    const char16_t mark = tb.styleChar[i];
    b += u"Dialogue: Marked=0," + SEGaTCA(t(st, tb.cueIn[i])) + u"," + SEGaTCA(t(st, tb.cueOut[i])) +
         u",*Default,Name,0000,0000,0000,,";
    if (tb.posDigit[i] == u'9') b += u"{\\a6}";
    if (italicFirstLine(mark)) b += u"{\\i1}";
    for (char16_t c : subtitleBody(tb.text[i])) {
      if (c == CR) {
        b += u"\\N";
        if (italicFirstLine(mark) && !italicSecondLine(mark)) b += u"{\\i0}";
        if (italicSecondLine(mark) && !italicFirstLine(mark)) b += u"{\\i1}";
      } else {
        b += c;
      }
    }
    b += kCRLF;
  }
  return b;
}

WriteResult mnuSubSami(Station& st, TextEncoding enc) {
  if (!exportFrame(st, ListExport::SAMI)) return {};
  st.ui.setPointer(Pointer::Hourglass);
  return writeTextExport(st, st.s.g_SAMIFileName, samiText(st), enc, u"SAMI file created.");
}

WriteResult mnuSubSbv(Station& st, TextEncoding enc) {
  if (!exportFrame(st, ListExport::SBV)) return {};
  return writeTextExport(st, st.s.g_SBVFileName, sbvText(st), enc, u"SBV file created.");
}

WriteResult mnuSubSsa(Station& st, TextEncoding enc) {
  if (!exportFrame(st, ListExport::SSA)) return {};
  return writeTextExport(st, st.s.g_SSAFileName, ssaText(st), enc, u"SSA file created.");
}

namespace {

u16 qtText(const Station& st) {
  const ScanTable& tb = st.s.scan;
  const int fps = st.fps();
  u16 text = u"{QTtext}{font: Arial}{size:22}{bold}{justify: center}{textColor: 65535, 65535, 65535}"
             u"{backColor: 0, 0, 0} {timescale: 30}{width: 720}{height: 480}{keyedText: on}{anti-alias: On}\r\r";
  for (int i = 1; i <= tb.count(); ++i) {
    if (!tb.isSubtitle[i]) continue;
    text += u"[" + dottedTimecode(t(st, tb.cueIn[i]), fps) + u"]\r" + tb.text[i];
    text += u"[" + dottedTimecode(t(st, tb.cueOut[i]), fps) + u"]\r\r\r";
  }
  text += u"[end=" + dottedTimecode(st.s.videoDuration, fps) + u"]\r";
  return text;
}

u16 unicodeText(const Station& st) {
  const ScanTable& tb = st.s.scan;
  const int fps = st.fps();
  u16 text;
  for (int i = 1; i <= tb.count(); ++i) {
    if (!tb.isSubtitle[i]) continue;
    text += right(formatNumber(i, "0000"), 4) + TAB + SEGaTC(tb.cueIn[i], fps) + TAB + SEGaTC(tb.cueOut[i], fps) + CR +
            tb.text[i];
  }
  return text;
}

// Both documents are told from the end backwards with Content.InsertBefore;
// the same text is built here front to back and inserted once.
bool documentExport(Station& st, u16 (*build)(const Station&)) {
  if (!scanForExport(st)) return false;
  openNewDocument(st, u"Arial Unicode MS");
  st.doc->contentInsertBefore(build(st));
  st.ui.setPointer(Pointer::Default);
  return true;
}

}  // namespace

bool mnuSubQt(Station& st) { return documentExport(st, qtText); }
bool mnuSubUnitext(Station& st) { return documentExport(st, unicodeText); }

}  // namespace quillon
