#include "formats/export_frame.h"

#include <filesystem>

#include "core/timecode.h"
#include "script/codepage.h"
#include "script/document_ops.h"
#include "script/document_files.h"
#include "script/document_service.h"
#include "script/tag_grammar.h"

namespace quillon {

namespace {

u16 Session::*fileNameVariable(ListExport which) {
  switch (which) {
    case ListExport::EBU: return &Session::g_stlFileName;
    case ListExport::DVDMaestro: return &Session::g_DVDMFileName;
    case ListExport::CPC: return &Session::g_CPCFileName;
    case ListExport::SUB: return &Session::g_SUBFileName;
    case ListExport::SAMI: return &Session::g_SAMIFileName;
    case ListExport::SBV: return &Session::g_SBVFileName;
    case ListExport::SSA: return &Session::g_SSAFileName;
  }
  return &Session::g_stlFileName;
}

std::string folderOf(const std::string& path) {
  return std::filesystem::path(path).parent_path().string();
}

bool fileExists(const std::string& path) {
  std::error_code ec;
  return std::filesystem::exists(path, ec);
}

}  // namespace

const ListExportWords& listExportWords(ListExport which) {
  static const ListExportWords words[] = {
      {u"Create EBU standard subtitle file(*.stl)", u"Create stl file", u"EBU subtitle files (*.stl)|*.stl", u".stl"},
      {u"Create DVD Maestro subtitle list file(*.txt)", u"Create DVDM file.",
       u"DVD Maestro subtitle files (*.txt)|*.txt", u".txt"},
      {u"Create CPC subtitle list file(*.txt)", u"Create CPC file", u"CPC subtitle files (*.txt)|*.txt", u".txt"},
      {u"Create .SUB subtitle list file (*.sub)", u"Create .SUB file", u".SUB subtitle files (*.sub)|*.sub", u".sub"},
      {u"Create SAMI subtitle list file (*.smi)", u"Create .smi file", u"SAMI subtitle files (*.smi)|*.smi", u".smi"},
      // SBV and SSA keep the SAMI question title.
      {u"Create SBV subtitle list file (*.SBV)", u"Create .smi file", u"SBV subtitle files (*.SBV)|*.SBV", u".sbv"},
      {u"Create SSA subtitle list file (*.ssa)", u"Create .smi file", u"SSA subtitle files (*.ssa)|*.ssa", u".ssa"},
  };
  return words[static_cast<int>(which)];
}

u16 documentBaseName(Station& st) {
  u16 name = st.doc ? st.doc->name() : u16();
  if (st.doc) st.doc->clearError();
  return left(name, static_cast<long>(name.size()) - 4);
}

bool scanForExport(Station& st) {
  if (!attachDocument(st)) return false;
  if (scanSubtitles(st, ScanMode::Selection)) return true;
  if (scanSubtitles(st, ScanMode::WholeScript)) return true;
  // A rule check answered No leaves a count of 1 and stops the command; an
  // empty list gets its message.
  if (st.s.scan.subtitleCount < 1) critical(st.ui, u"Error: Invalid subtitle list.");
  return false;
}

std::optional<std::string> exportFrame(Station& st, ListExport which) {
  if (!scanForExport(st)) return std::nullopt;
  const ListExportWords& w = listExportWords(which);

  FileDialogRequest req;
  req.title = w.dialogTitle;
  req.filter = w.filter;
  req.defaultName = documentBaseName(st) + w.extension;
  req.initialDir = fromUtf8(st.s.dialogInitDir);
  std::optional<std::string> chosen = st.ui.saveFileDialog(req);
  u16& variable = st.s.*fileNameVariable(which);
  if (!chosen || chosen->empty()) return std::nullopt;
  variable = fromUtf8(*chosen);
  st.s.dialogInitDir = folderOf(*chosen);

  Answer answer = Answer::No;
  while (fileExists(*chosen) && answer == Answer::No) {
    MessageBoxRequest box;
    box.text = u"Do you want to replace the existing " + fromUtf8(*chosen) + u"?" + CR;
    box.buttons = Buttons::YesNo;
    box.icon = Icon::Exclamation;
    box.title = w.questionTitle;
    answer = st.ui.messageBox(box);
    if (answer == Answer::Cancel || answer == Answer::Abort) return std::nullopt;
    if (answer == Answer::No) {
      req.defaultName.clear();
      req.initialDir = fromUtf8(st.s.dialogInitDir);
      chosen = st.ui.saveFileDialog(req);
      if (!chosen || chosen->empty()) return std::nullopt;
      variable = fromUtf8(*chosen);
      st.s.dialogInitDir = folderOf(*chosen);
    }
  }
  return chosen;
}

bool openExportForm(Station& st, ListExport which, FormModel& form, const std::function<void()>& fill) {
  if (!exportFrame(st, which)) return false;
  st.ui.setPointer(Pointer::Hourglass);
  form.show();
  form.readyToRun();
  if (fill) fill();
  form.progressMax = st.s.scan.count() + 1;
  st.ui.setPointer(Pointer::Default);
  return true;
}

std::optional<u16> documentProperty(Station& st, const u16& name) {
  if (!st.doc) return std::nullopt;
  st.doc->clearError();
  auto v = st.doc->customProperty(name);
  st.doc->clearError();
  return v;
}

std::optional<u16> builtinDocumentProperty(Station& st, int index) {
  if (!st.doc) return std::nullopt;
  st.doc->clearError();
  auto v = st.doc->builtinProperty(index);
  st.doc->clearError();
  return v;
}

bool nameContains(const u16& name, u16v what) {
  auto lower = [](u16v s) {
    u16 out(s);
    for (auto& c : out)
      if (c >= u'A' && c <= u'Z') c = static_cast<char16_t>(c - u'A' + u'a');
    return out;
  };
  return instr(lower(name), lower(what)) > 0;
}

u16 subtitleBody(const u16& text) { return left(text, static_cast<long>(text.size()) - 2); }

u16 dottedTimecode(double seconds, int fps) {
  u16 tc = SEGaTC(seconds, fps);
  return left(tc, 8) + u"." + right(tc, 2);
}

std::string encodeText(u16v text, TextEncoding enc) {
  return enc == TextEncoding::Utf8 ? toUtf8(text) : unicodeToCp1252(text);
}

u16 decodeTextFile(std::string_view bytes) {
  if (bytes.size() >= 3 && bytes.substr(0, 3) == "\xEF\xBB\xBF") return fromUtf8(bytes.substr(3));
  if (isValidUtf8(bytes)) return fromUtf8(bytes);
  return cp1252ToUnicode(bytes);
}

std::string ansiToAscii(u16v text) { return ANSItoASCII(unicodeToCp1252(text)); }
std::string ansiBytes(u16v text) { return unicodeToCp1252(text); }

}  // namespace quillon
