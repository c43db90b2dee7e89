#include "formats/cpc_export.h"

#include "core/atomic_file.h"
#include "core/timecode.h"
#include "formats/export_frame.h"
#include "formats/stl_export.h"
#include "script/document_service.h"

namespace quillon {

namespace {

const char kBar = '\xB3';
const char* const kCRLF = "\r\n";

std::string vposName(int digit) { return "Text_vpos" + std::to_string(digit); }

int digitOf(char16_t position) {
  int d = static_cast<int>(leadingNumber(u16(1, position)));
  return d >= 0 && d <= 9 ? d : 0;
}

}  // namespace

FormCPC::FormCPC() {
  windowTitle = u"Quillon: Conversion to CPC\u00ae format";
  add("ComboVersion", u"VERSION:", u"CPCC6.70", 0, {u"CPCC6.70", u"CPCC6.78"});
  add("TextMOVIE", u"MOVIE:", u"");
  add("TextORIGIN", u"ORIGIN:", u"");
  add("TextGENRE", u"GENRE:", u"");
  add("TextTRT", u"TRT:", u"");
  add("TextLANGUAGE", u"LANGUAGE:", u"");
  add("TextDATE", u"DATE:", u"");
  add("TextSUBTHOUSE", u"SUBT. HOUSE:", u"");
  add("TextCONTACT", u"CONTACT", u"");
  add("ComboQC", u"", u"YES", 0, {u"YES", u"NO"});
  add("TextNotes", u"NOTES:", u"");
  const char16_t* rows[] = {u"F", u"D", u"C", u"A", u"9", u"7", u"6", u"4", u"3", u"1"};
  for (int d = 0; d <= 9; ++d) add(vposName(d), u"Position " + numberText(d), rows[d], 1);
}

bool mnuSubCpc(Station& st, FormCPC& form) {
  return openExportForm(st, ListExport::CPC, form, [&] { fillFormCPC(st, form); });
}

void fillFormCPC(Station& st, FormCPC& f) {
  auto fill = [&](const char* control, const char16_t* name, u16 otherwise) {
    auto v = documentProperty(st, name);
    f[control] = v ? *v : otherwise;
  };
  // An empty label reads as 0 here, without the timecode box.
  auto labelSeconds = [&](const u16& label) {
    double s = tcToSeconds(label, st.fps());
    return s < 0 ? 0.0 : s;
  };
  fill("TextMOVIE", u"MOVIE", documentBaseName(st));
  fill("TextORIGIN", u"ORIGIN", u"");
  fill("TextGENRE", u"GENRE", u"");
  fill("TextTRT", u"TRT", SEGaTC(labelSeconds(st.view.LabDur.caption) - labelSeconds(st.view.LabCom.caption), st.fps()));
  fill("TextLANGUAGE", u"LANGUAGE", u"");
  auto created = builtinDocumentProperty(st, wdPropertyTimeCreated);
  fill("TextDATE", u"DATE", created ? formatPropertyDate(*created, "MMDDYYYY") : u16());
  fill("TextSUBTHOUSE", u"SUBTHOUSE", u"");
  fill("TextCONTACT", u"CONTACT", left(st.doc ? st.doc->userName() : u16(), 32));
}

WriteResult commandProximoCPC(Station& st, FormCPC& form) {
  return form.pressCommand([&] { return generateCPC(st, form); });
}

WriteResult generateCPC(Station& st, FormCPC& f) {
  if (!nameContains(st.s.g_CPCFileName, u".txt")) {
    msgBox(st.ui, u"Error: Wrong subtitle file extension");
    return {};
  }
  std::string& b = f.strarchivoCPC;
  b = "~" + ansiBytes(f["ComboVersion"]) + "~;UpperLower;PopOn;01;" + kCRLF;
  if (f["ComboVersion"] == u"CPCC6.78") {
    const std::string lead = std::string(11, ' ') + kBar + "    " + kBar;
    const std::pair<const char*, const char*> head[] = {
        {"MOVIE:         ", "TextMOVIE"},       {"ORIGIN:        ", "TextORIGIN"}, {"GENRE:         ", "TextGENRE"},
        {"TRT:           ", "TextTRT"},         {"LANGUAGE:      ", "TextLANGUAGE"}, {"DATE:          ", "TextDATE"},
        {"SUBT. HOUSE:   ", "TextSUBTHOUSE"},   {"CONTACT        ", "TextCONTACT"}, {"QC:            ", "ComboQC"},
        {"Notes:         ", "TextNotes"},
    };
    for (const auto& [label, control] : head) b += lead + label + ansiBytes(f[control]) + kCRLF;
    b += lead + kCRLF + lead + kCRLF;
  }
  llenarCPC(st, f);
  return f.finishRun([&] {
    WriteResult written = writeFileTelling(st.ui, toUtf8(st.s.g_CPCFileName), b + kCRLF);
    b.clear();
    return written;
  });
}

u16 cpcStyleCode(const FormCPC& form, bool oneLine, char16_t position, char16_t mark) {
  u16 row = oneLine && position == u'0' ? u16(u"E") : form[vposName(digitOf(position))];
  return u"0C" + row + u16(1, mark);
}

void llenarCPC(Station& st, FormCPC& f) {
  const ScanTable& t = st.s.scan;
  if (t.count() < 1) return;
  st.ui.setPointer(Pointer::Hourglass);
  const int fps = st.fps();
  std::string& b = f.strarchivoCPC;
  u16 style;
  auto line = [&](double at) { return ansiBytes(SEGaTC(at, fps)) + kBar + ansiBytes(style) + kBar; };
  for (int i = 1; i <= t.count(); ++i) {
    if (f.cancelRequested) return;
    if (!t.isSubtitle[i]) continue;
    if (i >= 2 && t.cueIn[i] > t.cueOut[i - 1]) b += line(t.cueOut[i - 1]) + "^N" + kCRLF;
    f.setProgress(i);
    const u16 body = subtitleBody(t.text[i]);
    const long cr = instr(body, u"\r");
    if (cr <= 1) {
      style = cpcStyleCode(f, true, t.posDigit[i], t.styleChar[i]);
      b += line(t.cueIn[i]) + ansiToAscii(body);
    } else {
      style = cpcStyleCode(f, false, t.posDigit[i], t.styleChar[i]);
      b += line(t.cueIn[i]) + ansiToAscii(left(body, cr - 1)) + "\\" + ansiToAscii(mid(body, cr + 1));
    }
    b += kCRLF;
  }
  b += line(t.cueOut[t.count()]) + "^N" + kCRLF;
  st.ui.setPointer(Pointer::Default);
}

}  // namespace quillon
