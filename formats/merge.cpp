#include "formats/merge.h"

#include "core/timecode.h"
#include "script/document_ops.h"
#include "script/document_service.h"
#include "script/timing_tag.h"

namespace quillon {

namespace {

constexpr int kTimingRows = 20000;

int cardKey(int c, int n) { return c * kTimingRows + n; }

std::pair<double, double> cardTimes(const Session& s, int c, int n) {
  auto it = s.cardTimes.find(cardKey(c, n));
  return it == s.cardTimes.end() ? std::pair<double, double>{0, 0} : it->second;
}

// The tag ends in a blank: an empty note.
u16 mergeTag(int n, double in, double out, int fps) {
  TimingTag tag = TimingTag::subtitle(positionDigit(n), u' ', u'N', SEGaTC(in, fps), SEGaTC(out, fps));
  tag.trailer = u16();
  return tag.line();
}

}  // namespace

int letterIndex(u16v text) {
  if (text.empty()) return 0;
  char16_t c = text[0];
  if (c >= u'A' && c <= u'Z') return c - u'A' + 1;
  if (c >= u'a' && c <= u'z') return c - u'a' + 1;
  return 0;
}

bool allDigits(u16v text) {
  for (char16_t c : text)
    if (c < u'0' || c > u'9') return false;
  return true;
}

bool cargarTiming(Station& st) {
  if (!attachDocument(st)) return false;
  Session& ss = st.s;
  // Every number, and cards 1 to 9 only: later letters keep what an earlier
  // load left.
  ss.timingPresent.assign(kTimingRows, 0);
  ss.timingHasCard.assign(kTimingRows, 0);
  ss.timingIn.assign(kTimingRows, 0.0);
  ss.timingOut.assign(kTimingRows, 0.0);
  for (auto it = ss.cardTimes.begin(); it != ss.cardTimes.end();) {
    int c = it->first / kTimingRows;
    it = c >= 1 && c <= 9 ? ss.cardTimes.erase(it) : std::next(it);
  }

  DocumentService& d = *st.doc;
  const u16 s = d.content();
  const long len = static_cast<long>(s.size());
  const int fps = st.fps();
  long n = 0;
  if (len > 10) {
    long p = 1;
    while (p <= len && n < kScanCapacity) {
      long k = 0;
      char16_t taken = 0;
      do {
        taken = s[static_cast<size_t>(p + k - 1)];
        ++k;
      } while (taken != TAB && taken != CR && p + k <= len);
      u16 token = mid(s, p, k - 1);
      // Clamped before the conversion: a huge number in a damaged file must
      // not overflow, and still ends the walk as any number past the table does.
      const double number = leadingNumber(token);
      n = number >= kScanCapacity ? kScanCapacity : number < 1 ? 0 : static_cast<long>(number);
      if (n < 1 || n >= kScanCapacity) {
        p += static_cast<long>(token.size()) + 1;
        continue;
      }
      ss.timingPresent[n] = 1;
      const bool card = token.size() >= 2 && token[token.size() - 2] == u'.';
      double in = TCaSEG(mid(s, p + k, 11), fps, st.ui);
      if (in == -1) {
        warning(st.ui, u"Format error in timing file.");
        return false;
      }
      double out = TCaSEG(mid(s, p + k + 12, 11), fps, st.ui);
      if (card) {
        ss.timingHasCard[n] = 1;
        ss.cardTimes[cardKey(letterIndex(right(token, 1)), static_cast<int>(n))] = {in, out};
      } else {
        ss.timingHasCard[n] = 0;
        ss.timingIn[n] = in;
        ss.timingOut[n] = out;
        if (out == -1) return false;  // TCaSEG has told the operator
      }
      p += k + 24;
    }
  }
  if (d.pendingError() == 0 && n > 1) {
    ss.lastTimingNumber = static_cast<int16_t>(n);
    msgBox(st.ui, u"Operation complete. Last subtitle loaded: " + numberText(n) + u". ");
    st.view.menu("mnu_sub_mge_mge").enabled = true;
    return true;
  }
  warning(st.ui, u"Subtitle File Error: No subtitles loaded. ");
  return false;
}

u16 mergeTiming(Station& st) {
  if (!attachDocument(st)) return {};
  Session& ss = st.s;
  DocumentService& d = *st.doc;
  const int fps = st.fps();
  u16 report;
  long lastNumber = 0;
  int lastCard = 0;
  if (ss.lastTimingNumber >= 2 && static_cast<long>(ss.timingIn.size()) >= kTimingRows) {
    const long count = d.paragraphsCount();
    long i = 1;
    while (d.pendingError() == 0 && i <= count) {
      TextRange r = d.paragraph(i);
      if (d.pendingError() != 0) break;
      const u16 line = left(d.text(r), r.length() - 1);
      const long len = static_cast<long>(line.size());
      if ((len == 4 || len == 5) && allDigits(line)) {
        long N = static_cast<long>(leadingNumber(line));
        if (N > 0 && N < kScanCapacity) {
          if (N != lastNumber + 1) report += u"Warning: Missing subtitle(s): " + numberText(lastNumber + 1) + CR;
          d.insertBefore(r, mergeTag(static_cast<int>(N), ss.timingIn[N], ss.timingOut[N], fps));
          if (ss.timingIn[N] == 0 && ss.timingOut[N] == 0)
            report += u"Warning: Invalid time code in subtitle#: " + numberText(N) + u"." + CR;
          st.view.panel(3).text = numberText(N);
          lastNumber = N;
        } else {
          report += u"Error: Subtitle number out of range: normal[" + line + u"]" + CR;
        }
        i += 2;
      } else if ((len == 6 || len == 7) && allDigits(left(line, 4)) && instr(line, u".") > 0) {
        long N = static_cast<long>(leadingNumber(left(line, len - 2)));
        if (N > 0 && N < kScanCapacity) {
          const int c = letterIndex(right(line, 1));
          if (c != lastCard + 1) {
            report += u"Warning: Missing card subtitle(s): " + numberText(N) + u"." +
                      u16(1, static_cast<char16_t>(u'A' + lastCard)) + CR;
          } else if (c == 0) {
            report += u"Error: Missing Card subtitle " + numberText(N) + CR;
          }
          if (c >= 1 && c <= 27) {
            auto [in, out] = cardTimes(ss, c, static_cast<int>(N));
            d.insertBefore(r, mergeTag(static_cast<int>(N), in, out, fps));
            if (in == 0 && out == 0) report += u"Warning: Invalid time code in subtitle: " + line + u"." + CR;
          }
          st.view.panel(3).text = right(line, 1) + numberText(N);
          lastNumber = N;
          lastCard = c;
        } else {
          report += u"Error: Subtitle number out of range: acard[" + line + u"]" + CR;
        }
        i += 2;
      } else {
        i += 1;
      }
    }
    if (ss.lastTimingNumber != lastNumber)
      report += u"Warning: Different number of subtitles in timing file (" + numberText(ss.lastTimingNumber) +
                u") and text files (" + numberText(lastNumber) + u")." + CR;
  }
  d.clearError();
  msgBox(st.ui, report.empty() ? u16(u"MERGE OPERATION COMPLETED SUCCESSFULLY.")
                               : u"MERGE OPERATION DISCREPANCY REPORT" + u16(1, CR) + CR + report);
  st.ui.clearClipboard();
  st.ui.setClipboard(report);
  st.ui.setPointer(Pointer::Default);
  st.view.panel(3).text.clear();
  return report;
}

void mnuSubMgeOff(Station&) {}

void prepareMergeMenus(Station& st) {
  st.view.menu("mnu_sub_mge_mge").enabled = false;
  st.view.menu("mnu_sub_mge_off").enabled = false;
}

}  // namespace quillon
