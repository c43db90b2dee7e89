#include "formats/dvdm_export.h"

#include "core/atomic_file.h"
#include "core/timecode.h"

namespace quillon {

namespace {

const std::vector<u16> kTrueFalse = {u"TRUE", u"FALSE"};
const u16 kCRLF = u"\r\n";

// Key text, equals sign and blanks included, and the control it shows.
struct KeyLine {
  const char16_t* key;
  const char* control;
};
const KeyLine kKeys[] = {
    {u"$FontName            =   ", "TextFontName"},
    {u"$FontSize            =   ", "TextFontSize"},
    {u"$HorzAlign           =   ", "ComboHorzAlign"},
    {u"$VertAlign           =   ", "ComboVertAlign"},
    {u"$Bold            =   ", "ComboBold"},
    {u"$UnderLined          =   ", "ComboUnderLined"},
    {u"$Italic          =   ", "ComboItalic"},
    {u"$XOffset             =   ", "TextXOffset"},
    {u"$YOffset             =   ", "TextYOffset"},
    {u"$TextContrast            =   ", "TextTextContrast"},
    {u"$Outline1Contrast            =   ", "TextOutline1Contrast"},
    {u"$Outline2Contrast            =   ", "TextOutline2Contrast"},
    {u"$BackgroundContrast          =   ", nullptr},  // written without its value
    {u"$ForceDisplay            =   ", "ComboForceDisplay"},
    {u"$FadeIn          =   ", "TextFadeIn"},
    {u"$FadeOut             =   ", "TextFadeOut"},
    {u"$TapeOffset          =   ", "ComboTapeOffset"},
};

}  // namespace

FormDVDMaestro::FormDVDMaestro() {
  windowTitle = u"Quillon: Conversion to DVD Maestro\u00ae format";
  add("TextFontName", u"Font Name", u"Arial");
  add("TextFontSize", u"Font Size", u"33");
  add("ComboHorzAlign", u"", u"Center", 0, {u"Left", u"Center", u"Right"});
  add("ComboVertAlign", u"Vertical Align", u"Bottom", 0, {u"Top", u"Center", u"Bottom"});
  add("ComboBold", u"Bold", u"FALSE", 0, kTrueFalse);
  add("ComboUnderLined", u"Underlined", u"FALSE", 0, kTrueFalse);
  add("ComboItalic", u"Italic", u"FALSE", 0, kTrueFalse);
  add("TextXOffset", u"", u"65");
  add("TextYOffset", u"YOffset", u"0");
  add("TextTextContrast", u"TextContrast", u"15");
  add("TextOutline1Contrast", u"Outline1Contrast", u"15");
  add("TextOutline2Contrast", u"Outline2Contrast", u"15");
  add("TextBackgroudContrast", u"BackgroundContrast", u"0");
  add("ComboForceDisplay", u"ForceDisplay", u"FALSE", 0, kTrueFalse);
  add("TextFadeIn", u"FadeIn", u"2");
  add("TextFadeOut", u"FadeOut", u"1");
  add("ComboTapeOffset", u"TapeOffset", u"FALSE", 0, kTrueFalse);
  add("TextCommentArea", u"", u"", 576).multiLine = true;
}

bool mnuSubDvdm(Station& st, FormDVDMaestro& form) { return openExportForm(st, ListExport::DVDMaestro, form); }

WriteResult commandProximoDVDM(Station& st, FormDVDMaestro& form) {
  return form.pressCommand([&] { return generateDVDM(st, form); });
}

WriteResult generateDVDM(Station& st, FormDVDMaestro& f) {
  if (!nameContains(st.s.g_DVDMFileName, u".txt")) {
    msgBox(st.ui, u"filename is     ");
    msgBox(st.ui, u"Error: Wrong subtitle file extension");
    return {};
  }
  u16& b = f.strarchivo;
  b = u"// Subtitle list in DVD Maestro\u00ae format - Generated on the Norvale Labs Quillon" + kCRLF + kCRLF;
  for (const auto& k : kKeys) b += k.key + (k.control ? f[k.control] : u16()) + kCRLF;
  b += kCRLF;
  if (!f["TextCommentArea"].empty()) b += u"// " + f["TextCommentArea"] + kCRLF;
  llenarDVDM(st, f);
  return f.finishRun([&] {
    b += kCRLF + kCRLF;
    return writeFileTelling(st.ui, toUtf8(st.s.g_DVDMFileName), encodeText(b + kCRLF, f.encoding));
  });
}

void llenarDVDM(Station& st, FormDVDMaestro& f) {
  const ScanTable& t = st.s.scan;
  if (t.count() < 1) return;
  st.ui.setPointer(Pointer::Hourglass);
  const int fps = st.fps();
  for (int i = 1; i <= t.count(); ++i) {
    if (f.cancelRequested) return;  // the pointer stays busy until the next operation
    if (!t.isSubtitle[i]) continue;
    f.setProgress(i);
    f.strarchivo += SEGaTC(t.cueIn[i], fps) + u",   " + SEGaTC(t.cueOut[i], fps) + u",   " +
                    replaceAll(subtitleBody(t.text[i]), u"\r", u"|") + u"         " + kCRLF;
  }
  st.ui.setPointer(Pointer::Default);
}

}  // namespace quillon
