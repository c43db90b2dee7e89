#include "formats/sub_export.h"

#include "core/atomic_file.h"
#include "formats/export_frame.h"
#include "script/codepage.h"
#include "script/timing_tag.h"

namespace quillon {

namespace {

const char* const kCRLF = "\r\n";

// The sections of the trailer, in the order they are written.
const char* const kSections[] = {"TextCODE",    "TextCAST",           "TextGENERATOR",
                                 "TextFONTS",   "TextREAD",           "TextTIMING",
                                 "TextTIMEDBACKUPNAME", "TextREADADVANCED", "TextMARKERS"};

std::string vposName(int digit) { return "Text_vpos" + std::to_string(digit); }

// Letters with a code page 850 byte of their own here; the rest goes through
// ANSItoASCII.
std::string subCharacter(char16_t c) {
  switch (c) {
    case u'\u00c1': return "\xB5";  // A acute, 181
    case u'\u00c9': return "\x90";  // E acute, 144
    case u'\u00cd': return "\xD6";  // I acute, 214
    case u'\u00d3': return "\xE0";  // O acute, 224
    case u'\u00da': return "\xE9";  // U acute, 233
    case u'\u00ea': return "\x88";  // e circumflex, 136
    case u'\u00e2': return "\x83";  // a circumflex, 131
    case u'\u00e3': return "\xC6";  // a tilde, 198
    case u'\u00f5': return "\xE4";  // o tilde, 228
    case u'\u2026': return "...";
    default: return ansiToAscii(u16(1, c));
  }
}

std::string timingLine(double in, double out, int fps) {
  return ansiBytes(dottedTimecode(in, fps) + u"\\" + dottedTimecode(out, fps));
}

}  // namespace

FormSUB::FormSUB() {
  windowTitle = u"Quillon: Conversion to .SUB format";
  add("TextCODE", u"*CODE*", u"0000000000000000");
  add("TextCAST", u"*CAST*", u"");
  add("TextGENERATOR", u"*GENERATOR*", u"");
  add("TextFONTS", u"*FONTS*", u"");
  add("TextREAD", u"*READ*", u"0,300 14,000 130,000 100,000 25,000");
  add("TextTIMING", u"*TIMING*", u"1 30 0");
  add("TextTIMEDBACKUPNAME", u"*TIMED BACKUP NAME*", u"C:\\");
  add("TextREADADVANCED", u"*READ ADVANCED*", u"< > 1 1 1,000");
  add("TextMARKERS", u"*MARKERS*", u"");
  // Shown only: the accented letters of code page 850, read as the file's
  // reader will read them.
  add("TextFORMATSAMPLE", u"*FORMAT SAMPLE*", formatSample());
  const char16_t* prefixes[] = {u"",       u"{",      u"{{",     u"{{{",    u"{{{{",
                                u"{{{{{",  u"{{{{{{", u"{{{{{{", u"{{{{{{", u"}"};
  for (int d = 0; d <= 9; ++d) add(vposName(d), u"Position " + numberText(d), prefixes[d], 7);
}

u16 FormSUB::formatSample() { return cp850ToUnicode("\x20\x8F\x86\x90\x82\xDE\x8D\xE5\xE4\xEA\x96\x98*"); }

bool mnuSubSub(Station& st, FormSUB& form) { return openExportForm(st, ListExport::SUB, form); }

WriteResult commandProximoSUB(Station& st, FormSUB& form) {
  return form.pressCommand([&] { return generateSUB(st, form); });
}

WriteResult generateSUB(Station& st, FormSUB& f) {
  std::string& b = f.strarchivoSUB;
  b = std::string("*PART 1*") + kCRLF + "00:00:00.00\\00:00:00.00" + kCRLF;
  llenarSUB(st, f);
  for (const char* section : kSections) {
    b += ansiBytes(f.find(section)->label) + kCRLF;
    if (!f[section].empty()) b += ansiToAscii(f[section]) + kCRLF;
  }
  return f.finishRun([&] {
    WriteResult written = writeFileTelling(st.ui, toUtf8(st.s.g_SUBFileName), b + kCRLF);
    b.clear();
    return written;
  });
}

void llenarSUB(Station& st, FormSUB& f) {
  const ScanTable& t = st.s.scan;
  if (t.count() < 1) return;
  st.ui.setPointer(Pointer::Hourglass);
  const int fps = st.fps();
  double lastOut = 0;
  for (int i = 1; i <= t.count(); ++i) {
    if (f.cancelRequested) return;
    if (!t.isSubtitle[i]) continue;
    f.setProgress(i);
    const char16_t mark = t.styleChar[i];
    int digit = static_cast<int>(leadingNumber(u16(1, t.posDigit[i])));
    std::string block = ansiToAscii(f[vposName(digit >= 0 && digit <= 9 ? digit : 0)]);
    if (italicFirstLine(mark)) block += '[';
    for (char16_t c : subtitleBody(t.text[i])) {
      if (c == CR) {
        block += kCRLF;
        if (italicSecondLine(mark)) block += '[';
      } else {
        block += subCharacter(c);
      }
    }
    block += kCRLF;
    block += timingLine(t.cueIn[i], t.cueOut[i], fps);
    f.strarchivoSUB += block + kCRLF;
    lastOut = t.cueOut[i];
  }
  f.strarchivoSUB += std::string("*END*") + kCRLF + timingLine(lastOut, lastOut, fps) + kCRLF;
  st.ui.setPointer(Pointer::Default);
}

}  // namespace quillon
