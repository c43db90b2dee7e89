#include "formats/stl_import.h"

#include "core/atomic_file.h"
#include "core/timecode.h"
#include "formats/ebu_text.h"
#include "formats/import_frame.h"
#include "script/document_service.h"

namespace quillon {

namespace {

char16_t positionFromVp(int vp, bool twoLines) {
  switch (vp) {
    case 22: return u'0';
    case 20: return twoLines ? u'0' : u'1';
    case 18: return twoLines ? u'1' : u'2';
    case 16: return twoLines ? u'2' : u'3';
    case 14: return twoLines ? u'3' : u'4';
    case 12: return twoLines ? u'4' : u'5';
    case 10: return twoLines ? u'5' : u'6';
    case 8: return twoLines ? u'6' : u'7';
    case 6: return twoLines ? u'7' : u'8';
    case 4: return twoLines ? u'8' : u'9';
    case 2: return u'9';
    default: return u'0';
  }
}

char16_t alignmentFromJc(int jc) {
  if (jc == 3) return u'R';
  if (jc == 0 || jc == 1) return u'L';
  return u' ';
}

double blockTime(std::string_view b, size_t at, double rate) {
  auto byte = [&](size_t k) { return static_cast<double>(static_cast<unsigned char>(b[at + k])); };
  return byte(0) * 3600 + byte(1) * 60 + byte(2) + byte(3) / rate;
}

// The blocks of the image as the reader visits them: tag and text.
template <typename Sink>
void walkBlocks(std::string_view image, int fps, Sink&& sink) {
  std::string gsi(image.substr(0, std::min<size_t>(1024, image.size())));
  gsi.resize(1024, '\0');
  const bool pal = gsi.substr(3, 8) == "STL25.01";
  const double rate = pal ? 25 : 30;
  const long tnb = static_cast<long>(leadingNumber(std::string_view(gsi).substr(238, 5)));
  for (long k = 1; k <= tnb; ++k) {
    size_t at = 1024 + static_cast<size_t>(k - 1) * 128;
    if (at >= image.size()) break;  // the blocks past the end read empty and are skipped
    std::string block(image.substr(at, 128));
    block.resize(128, '\0');
    if (static_cast<unsigned char>(block[3]) != 0xFF) continue;
    double in = blockTime(block, 5, rate), out = blockTime(block, 9, rate);
    bool twoLines = false;
    u16 text = decodeEbuText(std::string_view(block).substr(16, 112), twoLines);
    u16 tag = u"SUB[";
    tag += positionFromVp(static_cast<unsigned char>(block[13]), twoLines);
    tag += alignmentFromJc(static_cast<unsigned char>(block[14]));
    tag += u"N " + SEGaTC(in, fps) + u">" + SEGaTC(out, fps) + u"]" + CR;
    sink(tag, text + CR + CR);
  }
}

}  // namespace

u16 ebuStlToScript(std::string_view image, int fps) {
  u16 out;
  walkBlocks(image, fps, [&](const u16& tag, const u16& text) { out += tag + text; });
  return out;
}

bool isEbuStlImage(std::string_view image) {
  if (image.size() < 1024) return false;
  const std::string_view code = image.substr(3, 8);
  auto digit = [](char c) { return c >= '0' && c <= '9'; };
  return code.substr(0, 3) == "STL" && digit(code[3]) && digit(code[4]) && code.substr(5) == ".01";
}

namespace {
enum class StlRead { Read, Unreadable, NotStl };

StlRead readStlFile(Station& st, const std::string& path) {
  std::string image;
  bool readable = readWholeFile(path, image);
  if (readable && !isEbuStlImage(image)) {
    tellNotOfFormat(st, path, u"an EBU STL file",
                    u"a header of 1024 bytes whose disk format code is STL, the frame rate and .01, as in STL25.01");
    return StlRead::NotStl;
  }
  openNewDocument(st, u"Arial Unicode MS");
  if (!readable) return StlRead::Unreadable;
  walkBlocks(image, st.fps(), [&](const u16& tag, const u16& text) {
    insertAtSelection(st, tag);
    insertAtSelection(st, text);
  });
  st.doc->clearError();
  return StlRead::Read;
}
}  // namespace

bool readEbuStl(Station& st, const std::string& path) { return readStlFile(st, path) == StlRead::Read; }

bool mnuSubImpEBU(Station& st) {
  auto chosen = importFrame(st, u"Open EBU standard subtitle file(*.STL)", u"EBU standard subtitle file(*.STL)|*.STL");
  if (!chosen) return false;
  st.s.g_stlFileName = fromUtf8(*chosen);
  // A file that cannot be read stops as the station always stopped on it:
  // an empty new document and no message.
  return readStlFile(st, *chosen) != StlRead::NotStl;
}

}  // namespace quillon
