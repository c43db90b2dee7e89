#include "formats/line_imports.h"

#include <cfenv>
#include <cmath>
#include <vector>

#include "core/atomic_file.h"
#include "core/timecode.h"
#include "formats/export_frame.h"
#include "formats/import_frame.h"
#include "script/codepage.h"
#include "script/document_ops.h"
#include "script/document_service.h"
#include "script/timing_tag.h"

namespace quillon {

namespace {

// Line Input over a whole file: CR LF, CR or LF ends a line; `eof` is true
// once the last line has been read. Reading past the end gives "".
template <typename Str>
class LineReader {
 public:
  explicit LineReader(Str text) : text_(std::move(text)) {}
  bool eof() const { return pos_ >= text_.size(); }
  Str read() {
    if (eof()) return {};
    size_t start = pos_;
    while (pos_ < text_.size() && text_[pos_] != '\r' && text_[pos_] != '\n') ++pos_;
    Str line = text_.substr(start, pos_ - start);
    if (pos_ < text_.size()) {
      if (text_[pos_] == '\r' && pos_ + 1 < text_.size() && text_[pos_ + 1] == '\n') ++pos_;
      ++pos_;
    }
    return line;
  }

 private:
  Str text_;
  size_t pos_ = 0;
};

u16 tag(char16_t position, char16_t style, const u16& in, const u16& out) {
  return TimingTag::subtitle(position, u' ', style, in, out).line();
}

// A list read whole before anything is written: the blocks in order, how
// many had a timing of the format's own shape, and whether the reader stopped
// on a format error after its message.
struct ReadList {
  std::vector<std::pair<u16, std::vector<u16>>> blocks;  // tag, text lines
  int timed = 0;
  bool formatError = false;

  void add(u16 tagText, std::vector<u16> lines, bool timingHasItsShape) {
    blocks.emplace_back(std::move(tagText), std::move(lines));
    if (timingHasItsShape) ++timed;
  }
};

// What the file imports differ in: their dialog, their reader, the count
// they leave in panel 3 and the words of the box for a file of another kind.
struct ListFormat {
  const char16_t* title;
  const char16_t* filter;
  ReadList (*parse)(Station&, std::string_view);
  const char16_t* countSuffix;  // nullptr: no count is shown
  const char16_t* name;         // "an SRT file"
  const char16_t* expected;     // what such a file holds
};

// Each block as the station always wrote it: the tag, each text line and
// one more paragraph mark, through the selection.
int writeList(Station& st, const ReadList& list, const ListFormat& format) {
  int n = 0;
  for (const auto& [tagText, lines] : list.blocks) {
    insertAtSelection(st, tagText);
    for (const auto& l : lines) insertAtSelection(st, l + CR);
    insertAtSelection(st, u16(1, CR));
    st.view.panel(3).text = u"Loading sub#" + numberText(++n);
  }
  if (format.countSuffix) st.view.panel(3).text = numberText(n) + format.countSuffix;
  return n;
}

// Text lines up to the first empty one. False when the file ended first: the
// block's last line had nothing behind it.
template <typename Str, typename Convert>
bool textLines(LineReader<Str>& r, std::vector<u16>& lines, Convert convert) {
  while (!r.eof()) {
    Str l = r.read();
    if (l.empty()) return true;
    if (r.eof()) return false;
    lines.push_back(convert(l));
  }
  return false;
}

// Skips empty lines; the first other line, or "" at the end.
template <typename Str>
Str nextNonEmpty(LineReader<Str>& r) {
  Str l;
  while (!r.eof() && (l = r.read()).empty()) {
  }
  return l;
}

u16 fromDos850(std::string_view line) { return cp1252ToUnicode(ASCIItoANSI(line)); }

// "HH:MM:SS:FF" with any separators: digits where a timecode has them.
bool timecodeShaped(u16v t) {
  if (t.size() != 11) return false;
  for (size_t i : {0, 1, 3, 4, 6, 7, 9, 10})
    if (t[i] < u'0' || t[i] > u'9') return false;
  return true;
}

// The .SUB decoder: italics brackets go, a few letters of code page 850 are
// named, the rest goes through ASCIItoANSI.
u16 decodeDotSub(std::string_view line) {
  u16 out;
  for (char ch : line) {
    auto b = static_cast<unsigned char>(ch);
    switch (b) {
      case '[': case ']': break;
      case 181: out += u'\u00c1'; break;
      case 144: out += u'\u00c9'; break;
      case 214: out += u'\u00cd'; break;
      case 224: out += u'\u00d3'; break;
      case 233: out += u'\u00da'; break;
      case 228: out += u'\u00f5'; break;
      default: out += fromDos850(std::string_view(&ch, 1));
    }
  }
  return out;
}

// Milliseconds to a frame number always counted at 30 a second, halves to
// the even one, then held below the session's rate.
u16 srtFrame(const u16& millis, int fps) {
  const int saved = std::fegetround();
  std::fesetround(FE_TONEAREST);
  double f = std::nearbyint(leadingNumber(millis) / 1000.0 * 30.0);
  std::fesetround(saved);
  int16_t frame = minimo(static_cast<int16_t>(f), static_cast<int16_t>(fps - 1));
  return formatNumber(frame, "00");
}

ReadList parseSubList(Station& st, std::string_view bytes) {
  LineReader<u16> r(decodeTextFile(bytes));
  const int fps = st.fps();
  ReadList list;
  u16 s = r.read();
  while (!r.eof() && list.blocks.size() < 9999) {
    long close1 = instr(2, s, u"}");
    u16 start = close1 > 0 ? mid(s, 2, close1 - 2) : u16();
    long close2 = close1 > 0 ? instr(close1 + 1, s, u"}") : 0;
    u16 end = close2 > 0 ? mid(s, close1 + 2, close2 - close1 - 2) : u16();
    u16 text = close2 > 0 ? mid(s, close2 + 1) : u16();
    std::vector<u16> lines;
    if (long bar = instr(text, u"|"); bar > 0) lines = {left(text, bar - 1), mid(text, bar + 1)};
    else lines = {text};
    list.add(tag(u'0', u'N', SEGaTC(leadingNumber(start) / fps, fps), SEGaTC(leadingNumber(end) / fps, fps)),
             std::move(lines), left(s, 1) == u"{" && close2 > 0);
    s = r.read();
  }
  return list;
}

ReadList parseDos850List(Station&, std::string_view bytes) {
  LineReader<std::string> r{std::string(bytes)};
  ReadList list;
  std::string header = nextNonEmpty(r);
  while (!r.eof() && list.blocks.size() < 9999) {
    std::vector<u16> lines;
    if (!textLines(r, lines, fromDos850)) break;
    u16 h = fromDos850(header);
    const u16 in = mid(h, 11, 11), out = mid(h, 26, 11);
    list.add(tag(u'0', u'N', in, out), std::move(lines), timecodeShaped(in) && timecodeShaped(out));
    header = nextNonEmpty(r);
  }
  return list;
}

ReadList parseSrt(Station& st, std::string_view bytes) {
  LineReader<u16> r(decodeTextFile(bytes));
  const int fps = st.fps();
  ReadList list;
  r.read();  // the number line
  while (!r.eof() && list.blocks.size() < 4999) {
    u16 time = r.read();
    std::vector<u16> lines;
    if (r.eof() || !textLines(r, lines, [](const u16& l) { return l; })) break;
    u16 in = left(time, 8) + u":" + srtFrame(mid(time, 10, 3), fps);
    u16 out = mid(time, 18, 8) + u":" + srtFrame(mid(time, 27, 3), fps);
    list.add(tag(u'0', u'N', in, out), std::move(lines), instr(time, u"-->") > 0);
    nextNonEmpty(r);  // the next number line
  }
  return list;
}

ReadList parseDotSubList(Station& st, std::string_view bytes) {
  LineReader<std::string> r{std::string(bytes)};
  ReadList list;
  std::string first = r.read();
  if (first != "*PART 1*" && first != "*PART ONE*" && first != "*PART1*" && first != "*PART 1") {
    msgBox(st.ui, u"Format Error 001");
    list.formatError = true;
    return list;
  }
  auto isStart = [](const std::string& l) { return l == "00:00:00.00\\00:00:00.00" || l == "01:00:00.00\\01:00:00.00"; };
  std::string l = r.read();
  for (int more = 0; !isStart(l) && more < 3; ++more) l = r.read();
  if (!isStart(l)) {
    msgBox(st.ui, u"Format error 002");
    list.formatError = true;
    return list;
  }
  auto isTiming = [](const std::string& line) { return line.size() >= 12 && line[11] == '\\'; };
  while (!r.eof()) {
    std::string line1 = r.read();
    if (line1 == "*End*") break;
    std::string next = r.read();
    std::string timing;
    std::vector<std::string> lines{line1};
    if (!isTiming(next)) {
      lines.push_back(next);
      timing = r.read();
    } else {
      timing = next;
    }
    const bool second = lines.size() == 2;
    char16_t position = !line1.empty() && line1[0] == '}' ? u'1' : u'0';
    char16_t style;
    if (!line1.empty() && line1[0] == '[') style = second && (lines[1].empty() || lines[1][0] != '[') ? u'1' : u'I';
    else style = second && !lines[1].empty() && lines[1][0] == '[' ? u'2' : u'N';
    u16 t = fromDos850(timing);
    std::vector<u16> decoded;
    for (const auto& x : lines) decoded.push_back(decodeDotSub(x));
    list.add(tag(position, style, left(t, 11), right(t, 11)), std::move(decoded), isTiming(timing));
  }
  return list;
}

const ListFormat kSubList{u"Open {SUB} subtitle list file(*.sub)", u"{SUB} subtitle list files (*.sub)|*.txt|All files|*.*",
                          parseSubList, u"subs loaded.#", u"a {SUB} subtitle list",
                          u"lines such as {25}{50}First line|second line, frames in braces"};
const ListFormat kDos850List{u"Open DOS 850 subtitle list file(*.txt)",
                             u"DOS 850 subtitle list files (*.txt)|*.txt|All files|*.*", parseDos850List,
                             u" subs loaded.", u"a DOS 850 subtitle list",
                             u"blocks of a header line with the cue-in at column 11 and the cue-out at column 26, "
                             u"the text lines and an empty line"};
const ListFormat kSrt{u"Open .SRT subtitle list file(*.srt)", u".SRT subtitle list files (*.srt)|*.srt|All files|*.*",
                      parseSrt, u" subs loaded.", u"an SRT file",
                      u"numbered blocks of a time line such as 00:00:01,000 --> 00:00:02,500, the text lines and an "
                      u"empty line"};
const ListFormat kDotSubList{u"Open .SUB subtitle list file(*.SUB)",
                             u".SUB subtitle list files (*.SUB)|*.SUB|All files|*.*", parseDotSubList, nullptr,
                             u"a .SUB subtitle list",
                             u"a *PART 1* head, then text lines each followed by a timing line such as "
                             u"00:00:01.00\\00:00:02.05"};

// The readers on bytes, into the active document.
int readList(Station& st, std::string_view bytes, const ListFormat& format) {
  ReadList list = format.parse(st, bytes);
  if (list.formatError) return -1;
  return writeList(st, list, format);
}

// The file imports: open dialog, the file read whole, then a new document in
// Courier New for what the reader found. A file in which not one entry has
// the format's timing is named in a box and opens no document. False when
// it stopped before a new document was opened.
bool importList(Station& st, const ListFormat& format) {
  auto chosen = importFrame(st, format.title, format.filter);
  if (!chosen) return false;
  std::string bytes;
  if (!readWholeFile(*chosen, bytes)) return false;
  ReadList list = format.parse(st, bytes);
  if (!list.formatError && list.timed == 0) {
    tellNotOfFormat(st, *chosen, format.name, format.expected);
    return false;
  }
  openNewDocument(st, u"Courier New");
  // A format error has shown its message; the new document stays empty.
  if (!list.formatError) writeList(st, list, format);
  return true;
}

}  // namespace

int readSubList(Station& st, std::string_view bytes) { return readList(st, bytes, kSubList); }
int readDos850List(Station& st, std::string_view bytes) { return readList(st, bytes, kDos850List); }
int readSrt(Station& st, std::string_view bytes) { return readList(st, bytes, kSrt); }
int readDotSubList(Station& st, std::string_view bytes) { return readList(st, bytes, kDotSubList); }

bool mnuSubImpSUBL(Station& st) { return importList(st, kSubList); }
bool mnuSubImp850(Station& st) { return importList(st, kDos850List); }
bool mnuSubImpSRT(Station& st) { return importList(st, kSrt); }
bool mnuSubImpSUB(Station& st) { return importList(st, kDotSubList); }

// Where each number written with `digits` digits first stands in the text
// (1-based, 0 where it does not): what instr from the top gives for each
// entry number, found in one pass instead of one search a number.
static std::vector<long> firstPlaces(const u16& s, int digits) {
  size_t count = 1;
  for (int k = 0; k < digits; ++k) count *= 10;
  std::vector<long> first(count, 0);
  for (size_t i = 0; i + static_cast<size_t>(digits) <= s.size(); ++i) {
    size_t v = 0;
    int k = 0;
    for (; k < digits && s[i + k] >= u'0' && s[i + k] <= u'9'; ++k) v = v * 10 + (s[i + k] - u'0');
    if (k == digits && first[v] == 0) first[v] = static_cast<long>(i) + 1;
  }
  return first;
}

bool mnuSubImpunitxt(Station& st) {
  if (!attachDocument(st)) return false;
  const u16 s = st.doc->content();
  const long len = static_cast<long>(s.size());
  const int fps = st.fps();
  u16 blocks;
  const std::vector<long> four = firstPlaces(s, 4);
  std::vector<long> five;  // entry numbers from 10000 on, read when reached
  long p = four[1];
  int n = 1;
  while (p > 0 && n <= kScanCapacity) {
    u16 in = SEGaTC(TCaSEG(mid(s, p + 5, 11), fps, st.ui), fps);
    u16 out = SEGaTC(TCaSEG(mid(s, p + 17, 11), fps, st.ui), fps);
    if (n + 1 > 9999 && five.empty()) five = firstPlaces(s, 5);
    long next = n + 1 <= 9999 ? four[n + 1] : five[n + 1];
    long textLength = (next > 0 ? next : len) - p - 30;
    u16 text = textLength > 0 ? mid(s, p + 29, textLength) : u16();
    blocks += tag(u'0', u'N', in, out) + text + CR;
    ++n;
    p = next;
  }
  if (n == 1) return false;
  // Inserted last first ahead of a closing "SUB[" line, so they read in order.
  openNewDocument(st, u"Arial Unicode MS");
  st.doc->contentInsertBefore(tagHead(TimingTag::Kind::Subtitle) + CR);
  st.doc->contentInsertBefore(blocks);
  return true;
}

}  // namespace quillon
