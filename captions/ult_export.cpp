#include "captions/ult_export.h"

#include "captions/caption_file_dialog.h"
#include "captions/caption_layout.h"
#include "captions/cea608.h"
#include "core/atomic_file.h"
#include "core/timecode.h"
#include "script/codepage.h"
#include "script/document_ops.h"
#include "script/tag_grammar.h"

namespace quillon {

namespace {

// The record as byte characters: mark, length, four time bytes, the data,
// an end byte. The length counts what follows it.
void addRecord(std::string& buffer, const u16& tc, const u16& data) {
  const std::string bytes = captionBytes(data);
  buffer += '\xf1';
  buffer += word16LE(static_cast<uint32_t>(bytes.size() + 5));
  for (long at : {1, 4, 7, 10}) buffer += static_cast<char>(static_cast<uint8_t>(leadingNumber(mid(tc, at, 2))));
  buffer += bytes;
  buffer += '\0';
}

const int kWriteStep = 1024;  // bytes between looks at the Cancel button

}  // namespace

FormCCult::FormCCult() {
  windowTitle = u"Quillon: Conversion to .ULT Closed caption file format";
  std::vector<u16> lines;
  for (int l = 14; l <= 21; ++l) lines.push_back(numberText(l));
  auto choice = [&](std::string name, u16 label, u16 defaultText, std::vector<u16> list) {
    add(std::move(name), std::move(label), std::move(defaultText), 0, std::move(list)).listOnly = true;
  };
  choice("DoubleCC", u"Double CC", u"YES", {u"YES", u"NO"});
  choice("NoUpstream", u"No Upstream", u"YES", {u"YES", u"NO"});
  add("NumberCaptions", u"Number of captions:", u"0");
  choice("FField", u"Field:", u"1", {u"1", u"2"});
  choice("VILine", u"Vertical Interval Line:", u"21", lines);
  choice("FPS", u"FPS:", u"30", {u"30", u"25"});
  choice("DataService", u"Data service:", u"CC1", {u"CC1", u"CC2", u"CC3", u"CC4"});
  choice("NumberStreams", u"Number of streams:", u"1", {u"1", u"2"});
  add("DataChannel", u"Data channel:", u"65");
  add("ProgramInfo", u"Program info:", u"");
}

std::string ultHeader(uint32_t recordCount) {
  std::string h("ULTECH\0" "1.30\0", 12);
  h += std::string("\x00\x02\x1e\x00", 4);
  h += word32LE(recordCount);
  h += std::string("\x00\x00\x01\x00", 4);
  h += '\x0f';
  h += std::string("\x15\x00\x01\x00\x00\x00\x01\x00\x01\x00\x00\x00", 12);
  for (int row = 0; row < 15; ++row) {
    h += std::string(12, '\0');
    h += '\xff';
  }
  return h;
}

std::string llenarULT(Station& st, std::string& programInfo) {
  const ScanTable& t = st.s.scan;
  const int fps = st.fps();
  uint32_t count = 0;
  bool first = true;
  double lastOut = 0;
  for (int i = 1; i <= t.count(); ++i) {
    if (!t.isSubtitle[i]) continue;
    const CaptionBlock b = captionBlock(st, i);
    if (first) {
      first = false;
      addRecord(programInfo, SEGaTC(b.in - 2.0, fps), u"\x14\x2e\x14\x2c");
      ++count;
    } else if (lastOut + 0.1 < b.in) {
      addRecord(programInfo, SEGaTC(lastOut, fps), u"\x14\x2c");
      ++count;
    }
    // Loaded at the cue-in itself: the encoder is told when to start.
    u16 data = u"\x14\x20";
    for (int r = 1; r <= b.rows; ++r) {
      data += FIRSTBYTE(st.ui, r, b.rows, b.position, b.align, b.longest);
      data += captionCharacters(t.captionRows[i][r - 1]);
    }
    data += u"\x14\x2c\x14\x2f";
    addRecord(programInfo, SEGaTC(b.in, fps), data);
    ++count;
    lastOut = b.out;
  }
  addRecord(programInfo, SEGaTC(t.cueOut[t.count()], fps), u"\x14\x2c");
  ++count;
  return word32LE(count);
}

bool mnu_cc_ult(Station& st, FormCCult& form) {
  if (!attachDocument(st)) return false;
  if (!scanCaptions(st, ScanMode::WholeScript)) return false;
  auto path = chooseCaptionFile(st, {u"Create ULTECH Closed Caption file (*.ult)",
                                     u"ULTECH closed caption files (*.ult)|*.ult", u".ult", u"Create .ult file"});
  if (!path) return false;
  st.s.g_ULTFileName = fromUtf8(*path);
  // Shown without loading: the operator's fields stay as the last export
  // left them.
  form.visible = true;
  form.readyToRun();
  return true;
}

WriteResult formCCultProximo(Station& st, FormCCult& form) {
  return form.pressCommand([&] { return writeUlt(st, form); });
}

WriteResult writeUlt(Station& st, FormCCult& form) {
  WriteResult written;
  const std::string path = toUtf8(st.s.g_ULTFileName);
  if (instr(st.s.g_ULTFileName, u".ult") > 0) {
    // The form's text is the record buffer for this run only; the operator's
    // program info stays as typed for the next export.
    std::string buffer = unicodeToCp1252(form.programInfo());
    const std::string count = llenarULT(st, buffer);
    std::string bytes = ultHeader(0);
    bytes.replace(16, 4, count);
    bytes += buffer;
    form.progressMax = static_cast<int>(bytes.size());
    form.progressValue = 0;
    bool cancelled = false;
    for (int done = 0; done < form.progressMax && !cancelled; done += kWriteStep) {
      form.setProgress(std::min(form.progressMax, done + kWriteStep));
      st.ui.pumpEvents();
      cancelled = form.cancelRequested;
    }
    // A stopped export leaves the file empty, as a half-written one would be
    // cut back to nothing.
    written = writeFileTelling(st.ui, path, cancelled ? std::string() : bytes);
    if (cancelled) written.written = false;
  } else {
    msgBox(st.ui, u"Error: Wrong closed caption file extension");
  }
  // Unlike the list forms, the button reads "OK" again at once, and a
  // cancelled run has still written its (empty) file.
  form.commandCaption = u"OK";
  form.cancelRequested = false;
  form.hide();
  return written;
}

}  // namespace quillon
