#include "formats/stl_export.h"

#include <utility>
#include <vector>

#include "core/atomic_file.h"
#include "core/timecode.h"
#include "formats/ebu_stl_layout.h"
#include "formats/ebu_text.h"
#include "formats/export_frame.h"
#include "script/document_service.h"
#include "script/timing_tag.h"

namespace quillon {

namespace {

using CodeRow = std::pair<const char16_t*, const char16_t*>;

const std::vector<CodeRow>& languages() {
  static const std::vector<CodeRow> rows = {
      {u"Albanian", u"01"},   {u"Basque", u"0D"},     {u"Breton", u"02"},        {u"Catalan", u"03"},
      {u"Croatian", u"04"},   {u"Czech", u"06"},      {u"Danish", u"07"},        {u"Dutch", u"1D"},
      {u"English", u"09"},    {u"Esperanto", u"0B"},  {u"Estonian", u"0C"},      {u"Faroese", u"0E"},
      {u"Finnish", u"27"},    {u"Flemish", u"2A"},    {u"French", u"0F"},        {u"Frisian", u"10"},
      {u"Gaelic", u"12"},     {u"Galician", u"13"},   {u"German", u"08"},        {u"Hungarian", u"1B"},
      {u"Icelandic", u"14"},  {u"Irish", u"11"},      {u"Italian", u"15"},       {u"Lappish", u"16"},
      {u"Latin", u"17"},      {u"Latvian", u"18"},    {u"Lithuanian", u"1A"},    {u"Luxembourgian", u"19"},
      {u"Maltese", u"1C"},    {u"Norwegian", u"1E"},  {u"Occitan", u"1F"},       {u"Polish", u"20"},
      {u"Portuguese", u"21"}, {u"Romanian", u"22"},   {u"Romansh", u"23"},       {u"Serbian", u"24"},
      {u"Slovak", u"25"},     {u"Slovenian", u"26"},  {u"Spanish", u"0A"},       {u"Swedish", u"28"},
      {u"Turkish", u"29"},    {u"Wallon", u"2B"},     {u"Welsh", u"05"},
  };
  return rows;
}

const std::vector<CodeRow>& countries() {
  static const std::vector<CodeRow> rows = {
      {u"Argentina", u"ARG"},   {u"Australia", u"AUS"},          {u"Austria", u"AUT"},
      {u"Belgium", u"BEL"},     {u"Bolivia", u"BOL"},            {u"Brazil", u"BRA"},
      {u"Chile", u"CHL"},       {u"Colombia", u"COL"},           {u"Costa Rica", u"CRI"},
      {u"Cuba", u"CUB"},        {u"Dominican Republic", u"DOM"}, {u"Ecuador", u"ECU"},
      {u"El Salvador", u"SLV"}, {u"Finland", u"FIN"},            {u"France", u"FRA"},
      {u"Germany", u"DEU"},     {u"Greece", u"GRC"},             {u"Guatemala", u"GTM"},
      {u"Haiti", u"HTI"},       {u"Honduras", u"HND"},           {u"Ireland", u"IRL"},
      {u"Israel", u"ISR"},      {u"Italy", u"ITA"},              {u"Mexico", u"MEX"},
      {u"Netherlands", u"NLD"}, {u"New Zealand", u"NZL"},        {u"Nicaragua", u"NIC"},
      {u"Panama", u"PAN"},      {u"Paraguay", u"PRY"},           {u"Peru", u"PER"},
      {u"Philippines", u"PHL"}, {u"Poland", u"POL"},             {u"Portugal", u"PRT"},
      {u"Puerto Rico", u"PRI"}, {u"Spain", u"ESP"},              {u"Switzerland", u"CHE"},
      {u"United Kingdom", u"GBR"}, {u"United States", u"USA"},   {u"Uruguay", u"URY"},
      {u"Venezuela", u"VEN"},
  };
  return rows;
}

std::vector<u16> names(const std::vector<CodeRow>& rows) {
  std::vector<u16> out;
  for (const auto& r : rows) out.emplace_back(r.first);
  return out;
}

const char16_t* lookUp(const std::vector<CodeRow>& rows, const u16& key, const char16_t* otherwise) {
  for (const auto& r : rows)
    if (key == r.first) return r.second;
  return otherwise;
}

// A GSI text field: through code page 850 or as typed, blank-padded, cut.
std::string textField(const u16& text, stl::Field f, bool dos850) {
  std::string b = dos850 ? ansiToAscii(text) : ansiBytes(text);
  b.resize(f.width, ' ');
  return b;
}

// A numeric GSI field, zero-padded to its width; more digits make it longer.
std::string numberField(const u16& text, stl::Field f) {
  return formatNumber8(leadingNumber(text), std::string(f.width, '0'));
}

// Characters 1-2, 4-5, 7-8 and 10-11 of a timecode text.
std::string timecodeField(const u16& tc) {
  return ansiBytes(mid(tc, 1, 2) + mid(tc, 4, 2) + mid(tc, 7, 2) + mid(tc, 10, 2));
}

// CustomDocumentProperties.Add: an entry that already exists keeps its value.
void addProperty(Station& st, const u16& name, const u16& value) {
  if (!st.doc) return;
  if (!st.doc->customProperty(name)) st.doc->setCustomProperty(name, value);
  st.doc->clearError();
}

std::optional<u16> property(Station& st, const char16_t* name) { return documentProperty(st, name); }
std::optional<u16> builtin(Station& st, int index) { return builtinDocumentProperty(st, index); }

// A TCI or TCO field: one byte each for hours, minutes, seconds and frames.
std::string timecodeBytes(double seconds, int fps) {
  u16 tc = SEGaTC(seconds, fps);
  std::string b;
  for (long at : {1, 4, 7, 10}) b += static_cast<char>(static_cast<int>(leadingNumber(mid(tc, at, 2))) & 0xFF);
  return b;
}

// A TTI block: subtitle number, times, vertical position and justification in
// front of the text field, which is padded and cut to its width.
std::string ttiBlock(int number, std::string_view tci, std::string_view tco, int vp, int jc, std::string_view text) {
  using namespace stl::tti;
  std::string b(TF.offset, '\0');
  b[SN.offset] = static_cast<char>(number & 0xFF);
  b[SN.offset + 1] = static_cast<char>((number >> 8) & 0xFF);
  b[EBN.offset] = static_cast<char>(kLastBlock);
  b.replace(TCI.offset, TCI.width, tci);
  b.replace(TCO.offset, TCO.width, tco);
  b[VP.offset] = static_cast<char>(vp);
  b[JC.offset] = static_cast<char>(jc);
  b += text;
  b.resize(stl::kTtiBlockSize, stl::kUnused);
  return b;
}

// Between two lines of a text field.
const std::string kNextLine{stl::kEndBox, stl::kLineBreak, stl::kStartBox, stl::kStartBox};
const std::string kLineStart{stl::kStartBox, stl::kStartBox};

}  // namespace

FormaSTL::FormaSTL() {
  windowTitle = u"Quillon: Conversion to EBU Subtitling data exchange format";
  add("TextOPT", u"OPT (Original Programme Title)", u"", stl::gsi::OPT.width);
  add("TextOET", u"OET (Original Episode Title)", u"", stl::gsi::OET.width);
  add("TextTPT", u"TPT (Translated Programme Title)", u"", stl::gsi::TPT.width);
  add("TextTET", u"TET (Translated Episode Title)", u"", stl::gsi::TET.width);
  add("TextTN", u"TN (Translator's Name)", u"", stl::gsi::TN.width);
  add("TextTCD", u"TCD (Translator's Contact Details)", u"", stl::gsi::TCD.width);
  add("TextSLR", u"SLR (Subtitle List Reference Code)", u"", stl::gsi::SLR.width);
  add("TextCD", u"CD (Creation Date)", u"", stl::gsi::CD.width);
  add("TextRD", u"RD (Revision Date)", u"", stl::gsi::RD.width);
  add("TextRN", u"RN (Revision Number)", u"", stl::gsi::RN.width);
  add("TextTNB", u"TNB (# Blocks)", u"");
  add("TextTNS", u"TNS (# Subtitles)", u"");
  add("TextTNG", u"TNG (# Groups)", u"1");
  add("TextMNC", u"MNC", u"40");
  add("TextMNR", u"MNR", u"23");
  add("TextTCP", u"TC Start Progr.", u"00:00:00:00");
  add("TextTCF", u"TC First in Cue", u"00:00:00:00");
  add("TextTND", u"TND (No. Discs)", u"1");
  add("TextDSN", u"DSN (Disc No.)", u"1");
  add("TextPUB", u"PUB (Publisher)", u"", stl::gsi::PUB.width);
  add("TextEN", u"EN (Editor's Name)", u"", stl::gsi::EN.width);
  add("TextECD", u"ECD (Editor's Contact Details)", u"", stl::gsi::ECD.width);
  add("TextUDA", u"UDA (User Defined Area)", u"", stl::gsi::UDA.width);
  add("LabTitle", u"Title in page 0", u"");
  add("LabEpisode", u"Episode in page 0", u"");
  add("LabStory", u"Story in page 0", u"");
  add("TextPage0", u"Text in Subtitle (Page) 0", u"").multiLine = true;
  add("Baserow", u"Base Row (Dec)", u"22");
  add("ComboCPN", u"CPN", u"Multilingual", 0,
      {u"United States", u"Multilingual", u"Portugal", u"Canada-French", u"Nordic"});
  add("ComboDFC", u"DFC", u"30", 0, {u"30", u"25"});
  add("ComboDSC", u"DSC", u"Open subtitling", 0,
      {u"Undefined", u"Open subtitling", u"Level-1 teletext", u"Level-2 teletext"});
  add("ComboCCT", u"CCT", u"Latin", 0, {u"Latin", u"Latin/Cyrillic", u"Latin/Arabic", u"Latin/Greek", u"Latin/Hebrew"});
  add("ComboLC", u"LC", u"Spanish", 0, names(languages()));
  add("ComboCO", u"CO", u"United States", 0, names(countries()));
  add("ComboTCS", u"TCS", u"1", 0, {u"0", u"1"});
}

u16 cpnCode(const u16& c) {
  if (c == u"Multilingual") return u"850";
  if (c == u"Portugal") return u"860";
  if (c == u"Canada-French") return u"863";
  if (c == u"Nordic") return u"865";
  return u"437";
}

u16 dfcCode(const u16& c) { return fromLatin1(c == u"25" ? stl::gsi::kDfc25 : stl::gsi::kDfc30); }

u16 dscCode(const u16& c) {
  if (c == u"Undefined") return u" ";
  if (c == u"Level-1 teletext") return u"1";
  if (c == u"Level-2 teletext") return u"2";
  return u"0";
}

u16 cctCode(const u16& c) {
  if (c == u"Latin/Cyrillic") return u"01";
  if (c == u"Latin/Arabic") return u"02";
  if (c == u"Latin/Greek") return u"03";
  if (c == u"Latin/Hebrew") return u"04";
  return u"00";
}

u16 lcCode(const u16& c, u16& sublanguage) {
  if (c == u"English") sublanguage = u"ENG";
  if (c == u"Portuguese") sublanguage = u"PRT";
  if (c == u"Spanish") sublanguage = u"ESP";
  return lookUp(languages(), c, u"0A");
}

u16 coCode(const u16& c) { return lookUp(countries(), c, u"VEN"); }

u16 formatPropertyDate(const u16& value, std::string_view picture) {
  long y = 0, m = 0, d = 0;
  if (value.size() < 10 || !toInteger(mid(value, 1, 4), y) || value[4] != u'-' || !toInteger(mid(value, 6, 2), m) ||
      value[7] != u'-' || !toInteger(mid(value, 9, 2), d))
    return value;
  u16 out;
  size_t i = 0;
  while (i < picture.size()) {
    char k = picture[i];
    size_t n = 0;
    while (i + n < picture.size() && picture[i + n] == k) ++n;
    long v = k == 'Y' ? y : k == 'M' ? m : k == 'D' ? d : 0;
    u16 digits = formatNumber(static_cast<double>(v), std::string(n < 2 ? 2 : n, '0'));
    out += k == 'Y' && n == 2 ? right(digits, 2) : digits;
    i += n;
  }
  return out;
}

bool mnuSubEbu(Station& st, FormaSTL& form) {
  return openExportForm(st, ListExport::EBU, form, [&] {
    // The combos are never filled from the document: each export starts them
    // from their defaults, whatever the last one chose.
    for (const char* combo : {"ComboCPN", "ComboDFC", "ComboDSC", "ComboCCT", "ComboLC", "ComboCO", "ComboTCS"})
      form[combo] = form.find(combo)->defaultText;
    fillFormaSTL(st, form);
  });
}

void fillFormaSTL(Station& st, FormaSTL& form) {
  auto fromProperty = [&](const char* control, const char16_t* name, std::optional<u16> otherwise) {
    if (auto v = property(st, name)) form[control] = *v;
    else form[control] = otherwise.value_or(u16());
  };
  auto cut = [](std::optional<u16> v, stl::Field field) -> std::optional<u16> {
    if (!v) return std::nullopt;
    return left(*v, static_cast<long>(field.width));
  };
  auto date = [&](int index) -> std::optional<u16> {
    auto v = builtin(st, index);
    if (!v) return std::nullopt;
    return formatPropertyDate(*v, "YYMMDD");
  };
  u16 user = st.doc ? st.doc->userName() : u16();
  u16 address = st.doc ? st.doc->userAddress() : u16();

  fromProperty("TextOPT", u"OPT", std::nullopt);
  fromProperty("TextOET", u"OET", std::nullopt);
  fromProperty("TextTPT", u"TPT", std::nullopt);
  fromProperty("TextTET", u"TET", cut(builtin(st, wdPropertyTitle), stl::gsi::TET));
  fromProperty("TextTN", u"TN", cut(builtin(st, wdPropertyAuthor), stl::gsi::TN));
  fromProperty("TextTCD", u"TCD", cut(builtin(st, wdPropertyCompany), stl::gsi::TCD));
  fromProperty("TextSLR", u"SLR", std::nullopt);
  fromProperty("TextCD", u"CD", date(wdPropertyTimeCreated));
  fromProperty("TextRD", u"RD", date(wdPropertyTimeLastSaved));
  fromProperty("TextRN", u"RN", builtin(st, wdPropertyRevision));
  u16 blocks = numberText(st.s.totalbloq2lineas + st.s.totalbloq1linea + 1);
  form["TextTNB"] = blocks;
  form["TextTNS"] = blocks;
  form["TextTCP"] = st.view.LabCom.caption.empty() ? u16(u"00:00:00:00") : st.view.LabCom.caption;
  form["TextTCF"] = SEGaTC(st.s.TCF, st.fps());
  fromProperty("TextPUB", u"PUB", cut(user, stl::gsi::PUB));
  fromProperty("TextEN", u"EN", cut(user, stl::gsi::EN));
  fromProperty("TextECD", u"ECD", cut(address, stl::gsi::ECD));
  fromProperty("TextUDA", u"UDA", cut(builtin(st, wdPropertyComments), stl::gsi::UDA));
  form["LabTitle"] = left(documentBaseName(st), 32);
  form["LabEpisode"].clear();
  form["LabStory"].clear();
  form["TextPage0"].clear();
}

WriteResult commandProximoSTL(Station& st, FormaSTL& form) {
  return form.pressCommand([&] { return generateSTL(st, form); });
}

WriteResult generateSTL(Station& st, FormaSTL& f) {
  if (!nameContains(st.s.g_stlFileName, u".stl")) {
    msgBox(st.ui, u"Error: Wrong subtitle file extension");
    return {};
  }
  std::string& b = f.strarchivo;
  b.clear();
  using namespace stl;
  auto text = [&](const char* control, const char16_t* propertyName, Field field, bool dos850) {
    b += textField(f[control], field, dos850);
    if (propertyName) addProperty(st, propertyName, f[control]);
  };
  b += ansiBytes(cpnCode(f["ComboCPN"]));
  b += ansiBytes(dfcCode(f["ComboDFC"]));
  b += ansiBytes(dscCode(f["ComboDSC"]));
  b += ansiBytes(cctCode(f["ComboCCT"]));
  b += ansiBytes(lcCode(f["ComboLC"], f.sublanguage));
  text("TextOPT", u"OPT", gsi::OPT, true);
  text("TextOET", u"OET", gsi::OET, true);
  text("TextTPT", u"TPT", gsi::TPT, true);
  text("TextTET", u"TET", gsi::TET, true);
  text("TextTN", u"TN", gsi::TN, true);
  text("TextTCD", u"TCD", gsi::TCD, true);
  text("TextSLR", u"SLR", gsi::SLR, false);
  text("TextCD", u"CD", gsi::CD, false);
  text("TextRD", u"RD", gsi::RD, false);
  b += numberField(f["TextRN"], gsi::RN);
  addProperty(st, u"RN", f["TextRN"]);
  b += numberField(f["TextTNB"], gsi::TNB);
  b += numberField(f["TextTNS"], gsi::TNS);
  b += numberField(f["TextTNG"], gsi::TNG);
  b += numberField(f["TextMNC"], gsi::MNC);
  b += numberField(f["TextMNR"], gsi::MNR);
  b += ansiBytes(left(f["ComboTCS"], gsi::TCS.width));
  b += timecodeField(f["TextTCP"]);
  b += timecodeField(f["TextTCF"]);
  b += numberField(f["TextTND"], gsi::TND);
  b += numberField(f["TextDSN"], gsi::DSN);
  b += ansiBytes(coCode(f["ComboCO"]));
  auto padded = [&](const char* control, const char16_t* name, Field field) {
    const auto width = static_cast<long>(field.width);
    u16 v = left(f[control] + u16(field.width, u' '), width);
    addProperty(st, name, v);
  };
  b += textField(f["TextPUB"], gsi::PUB, true);
  padded("TextPUB", u"PUB", gsi::PUB);
  b += textField(f["TextEN"], gsi::EN, true);
  padded("TextEN", u"EN", gsi::EN);
  b += textField(f["TextECD"], gsi::ECD, true);
  padded("TextECD", u"ECD", gsi::ECD);
  b += std::string(gsi::spare.width, ' ');
  std::string uda = "NORVALELB" + ansiToAscii(f["TextUDA"]);
  uda.resize(gsi::UDA.width, ' ');
  b += uda;
  padded("TextUDA", u"UDA", gsi::UDA);

  llenarTTI(st, f);
  return f.finishRun([&] {
    std::string file = b.size() >= 2 ? b.substr(0, b.size() - 2) : std::string();
    file += "\r\n";
    return writeFileTelling(st.ui, toUtf8(st.s.g_stlFileName), file);
  });
}

void llenarTTI(Station& st, FormaSTL& f) {
  const ScanTable& t = st.s.scan;
  if (t.count() < 1) return;
  st.ui.setPointer(Pointer::Hourglass);
  std::string& out = f.strarchivo;

  // Page 0: the programme's particulars, centred on row 17 for eight frames
  // from zero.
  std::string page0 = kLineStart;
  const u16& typed = f["TextPage0"];
  if (typed.empty()) {
    page0 += "Title: " + ansiBytes(left(f["LabTitle"], 32)) + kNextLine;
    page0 += "Episode: " + ansiBytes(left(f["LabEpisode"], 16)) + kNextLine;
    page0 += "Story: " + ansiBytes(left(f["LabStory"], 16)) + kNextLine;
    page0 += "Lang: " + ansiBytes(f.sublanguage) + stl::kEndBox;
  } else {
    for (char16_t c : typed) page0 += c == CR ? std::string{stl::kEndBox, stl::kLineBreak} : ansiBytes(u16(1, c));
    page0 += stl::kEndBox;
  }
  out += ttiBlock(0, std::string{0, 0, 0, 0}, std::string{0, 0, 0, 8}, 17, stl::tti::kJcCentre, page0);

  const int fps = st.fps();
  for (int i = 1; i <= t.count(); ++i) {
    if (f.cancelRequested) break;
    if (!t.isSubtitle[i]) continue;
    f.setProgress(i);
    const u16& text = t.text[i];
    const long n = static_cast<long>(text.size()) - 2;
    const u16 body = left(text, n);
    const bool twoLines = instr(body, u"\r") > 0;
    const char16_t pos = t.posDigit[i];
    int vp = 6;
    if (pos >= u'0' && pos <= u'3') vp = twoLines ? 20 : 22;
    else if (pos >= u'4' && pos <= u'6') vp = 16;
    else if (pos == u'7') vp = 7;
    // Left goes out as 0, "unchanged", not as the standard's 1.
    const char16_t align = t.alignChar[i];
    const int jc = align == u'L' ? stl::tti::kJcUnchanged : align == u'R' ? stl::tti::kJcRight : stl::tti::kJcCentre;

    const char16_t mark = t.styleChar[i];
    std::string tf;
    if (italicFirstLine(mark)) tf += stl::kItalicOn;
    tf += kLineStart;
    bool broke = false;
    for (char16_t c : body) {
      if (c == CR) {
        if (italicFirstLine(mark)) tf += stl::kItalicOff;
        tf += stl::kEndBox;
        tf += stl::kLineBreak;
        if (italicSecondLine(mark)) tf += stl::kItalicOn;
        tf += kLineStart;
        broke = true;
      } else {
        tf += ANSItoEBU(c);
      }
    }
    // Style 1 on a subtitle of one line leaves its italics open.
    if (italicWhole(mark) || (broke && italicSecondLine(mark))) tf += stl::kItalicOff;
    tf += stl::kEndBox;
    tf += stl::kUnused;
    out += ttiBlock(i, timecodeBytes(t.cueIn[i], fps), timecodeBytes(t.cueOut[i], fps), vp, jc, tf);
  }
  st.ui.setPointer(Pointer::Default);
}

}  // namespace quillon
