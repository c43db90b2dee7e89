#include "dubbing/line_count.h"

#include <vector>

#include "script/document_service.h"
#include "script/tag_grammar.h"

namespace quillon {

namespace {

inline constexpr int kNameCapacity = 999;

// The character name field of a DUB[ paragraph (without its mark): behind
// the tab of a short tag, behind the blank of a long one.
u16 tagName(const u16& para) {
  const bool shortTag = tagChar(para, 0, tag_place::kShortClose) == u']';
  const auto at = static_cast<size_t>(shortTag ? tag_place::kShortTrailer : tag_place::kTrailer);
  return at < para.size() ? para.substr(at) : u16();
}

}  // namespace

double actraLines(long words, long characters) {
  if (words == 1 || words == 2) return words * 0.33333333;
  // A dialog with no words is not a line of anyone's.
  if (words == 0) return 0;
  double lines = characters / 50.0;
  return lines < 1 ? 1 : lines;
}

bool mnu_herr_lin(Station& st) {
  if (!scanSubtitles(st, ScanMode::WholeScript)) return false;
  Session& s = st.s;
  DocumentService& d = *st.doc;
  st.ui.setPointer(Pointer::Hourglass);
  s.g_fsim = true;
  std::vector<u16> names(kNameCapacity + 1);
  std::vector<double> lines(kNameCapacity + 1, 0.0);
  double total = 0;

  const long count = d.paragraphsCount();
  long p = 1, dialog = 1;
  u16 report = s.actraGuidelines ? u"Dialog number\tCharacter\tDialog\t# Lines (ACTRA)\r"
                                 : u"Dialog number\tCharacter\tDialog\t# Lines\r";
  while (s.g_fsim && p <= count) {
    st.ui.pumpEvents();
    const TextRange tagRange = d.paragraph(p);
    const auto words = d.words(tagRange);
    if (words.empty() || trim(d.text(words.front())) != u"DUB") {
      ++p;
      continue;
    }
    const u16 name = tagName(withoutParagraphMark(d.text(tagRange)));
    if (name.empty()) {
      ++p;
      continue;
    }
    int j = 1;
    while (j < kNameCapacity && !names[j].empty() && names[j] != name) ++j;
    if (j >= kNameCapacity) critical(st.ui, u"Error: Character does not exist: \r" + name);
    if (names[j].empty()) names[j] = name;
    st.view.panel(3).text = u"Progress... " + formatNumber(p * 100.0 / count, "##") + u"%.";

    u16 dialogText;
    double n = 0;
    if (p + 1 <= count) {
      const TextRange r = d.paragraph(p + 1);
      dialogText = d.text(r);
      if (s.actraGuidelines)
        n = actraLines(d.computeStatistics(wdStatisticWords, r), static_cast<long>(withoutParagraphMark(dialogText).size()));
      else
        n = static_cast<double>(d.computeStatistics(wdStatisticLines, r));
    }
    lines[j] += n;
    total += n;
    report += numberText(static_cast<double>(dialog)) + TAB + name + TAB + withoutParagraphMark(dialogText) + TAB +
              formatNumber(n, "##.###") + CR;
    ++dialog;
    p += 2;
  }
  if (!s.g_fsim) {
    st.ui.setPointer(Pointer::Default);
    st.view.panel(3).text.clear();
    return false;
  }
  st.view.panel(3).text = u"Progress... 100%.";
  for (int j = 1; j <= kNameCapacity && !names[j].empty(); ++j)
    report += names[j] + u":\t" + formatNumber(lines[j], "0") + CR;
  // No paragraph mark after the total: the script's first paragraph goes on
  // from it, as the report has always been written.
  report += u"Total:\t" + formatNumber(total, "0");
  d.insertBefore(d.paragraph(1), report);
  st.view.panel(3).text.clear();
  st.ui.setPointer(Pointer::Default);
  return true;
}

}  // namespace quillon
