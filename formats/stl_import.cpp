#include "formats/stl_import.h"

#include "core/atomic_file.h"
#include "core/timecode.h"
#include "formats/ebu_stl_layout.h"
#include "formats/ebu_text.h"
#include "formats/import_frame.h"
#include "script/document_service.h"
#include "script/timing_tag.h"

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
  if (jc == stl::tti::kJcRight) return u'R';
  if (jc == stl::tti::kJcUnchanged || jc == stl::tti::kJcLeft) return u'L';
  return u' ';
}

int byteAt(std::string_view block, stl::Field f) { return static_cast<unsigned char>(block[f.offset]); }

// A TCI or TCO field: hours, minutes, seconds and frames.
double blockTime(std::string_view block, stl::Field f, double rate) {
  auto byte = [&](size_t k) { return static_cast<double>(static_cast<unsigned char>(block[f.offset + k])); };
  return byte(0) * 3600 + byte(1) * 60 + byte(2) + byte(3) / rate;
}

// The blocks of the image as the reader visits them: tag and text.
template <typename Sink>
void walkBlocks(std::string_view image, int fps, Sink&& sink) {
  using namespace stl;
  std::string gsiBlock(image.substr(0, std::min(kGsiBlockSize, image.size())));
  gsiBlock.resize(kGsiBlockSize, '\0');
  const bool pal = fieldOf(gsiBlock, gsi::DFC) == gsi::kDfc25;
  const double rate = pal ? 25 : 30;
  const long tnb = static_cast<long>(leadingNumber(fieldOf(gsiBlock, gsi::TNB)));
  for (long k = 1; k <= tnb; ++k) {
    size_t at = kGsiBlockSize + static_cast<size_t>(k - 1) * kTtiBlockSize;
    if (at >= image.size()) break;  // the blocks past the end read empty and are skipped
    std::string block(image.substr(at, kTtiBlockSize));
    block.resize(kTtiBlockSize, '\0');
    if (byteAt(block, tti::EBN) != tti::kLastBlock) continue;
    double in = blockTime(block, tti::TCI, rate), out = blockTime(block, tti::TCO, rate);
    bool twoLines = false;
    u16 text = decodeEbuText(fieldOf(block, tti::TF), twoLines);
    const TimingTag tag = TimingTag::subtitle(positionFromVp(byteAt(block, tti::VP), twoLines),
                                              alignmentFromJc(byteAt(block, tti::JC)), u'N', SEGaTC(in, fps),
                                              SEGaTC(out, fps));
    sink(tag.line(), text + CR + CR);
  }
}

}  // namespace

u16 ebuStlToScript(std::string_view image, int fps) {
  u16 out;
  walkBlocks(image, fps, [&](const u16& tag, const u16& text) { out += tag + text; });
  return out;
}

bool isEbuStlImage(std::string_view image) {
  if (image.size() < stl::kGsiBlockSize) return false;
  const std::string_view code = stl::fieldOf(image, stl::gsi::DFC);
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
