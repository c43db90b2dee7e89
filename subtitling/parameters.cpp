#include "subtitling/parameters.h"

#include "core/settings.h"

#include <cmath>
#include <optional>

namespace quillon {

namespace {

// The typed text as a number the way an assignment to a numeric field reads
// it: blanks around, an optional sign, digits with at most one decimal
// point. Anything else fails, which leaves the field as it was.
std::optional<double> typedNumber(const u16& typed) {
  const u16 t = trim(typed);
  size_t i = 0;
  if (i < t.size() && (t[i] == u'-' || t[i] == u'+')) ++i;
  bool digits = false, point = false;
  for (; i < t.size(); ++i) {
    if (t[i] >= u'0' && t[i] <= u'9')
      digits = true;
    else if (t[i] == u'.' && !point)
      point = true;
    else
      return std::nullopt;
  }
  if (!digits) return std::nullopt;
  return std::stod(toUtf8(t));
}

// A whole-number field: rounded half to even, refused outside [lo, hi].
std::optional<double> typedWhole(const u16& typed, double lo, double hi) {
  auto v = typedNumber(typed);
  if (!v) return std::nullopt;
  double r = std::nearbyint(*v);
  if (r < lo || r > hi) return std::nullopt;
  return r;
}

// The input box with the current value; nullopt for an empty answer.
std::optional<u16> ask(Station& st, const char* prompt, double current) {
  auto a = st.ui.inputBox(fromLatin1(prompt), g_appTitle, numberText(current));
  if (!a || a->empty()) return std::nullopt;
  return a;
}

// A real-valued parameter: accepted in [lo, hi], otherwise `reset`.
void askReal(Station& st, const char* prompt, double& value, double lo, double hi, double reset) {
  auto a = ask(st, prompt, value);
  if (!a) return;
  if (auto v = typedNumber(*a)) value = *v;
  if (value < lo || value > hi) value = reset;
}

// A 16-bit parameter. `failedResets`: a refused conversion counts as a bad
// value; otherwise it leaves the old value to the range test.
template <class T>
void askWhole(Station& st, const char* prompt, T& value, double lo, double hi, double reset, bool failedResets) {
  auto a = ask(st, prompt, static_cast<double>(value));
  if (!a) return;
  auto v = typedWhole(*a, -32768, 32767);
  if (v)
    value = static_cast<T>(*v);
  else if (failedResets) {
    value = static_cast<T>(reset);
    return;
  }
  if (value < lo || value > hi) value = static_cast<T>(reset);
}

void toggle(Station& st, const char* item, bool& flag) {
  auto& m = st.view.menu(item);
  m.checked = !m.checked;
  flag = m.checked;
}

// The simulation follows either the subtitles or the dubbing, not both:
// checking one item unchecks the other.
void toggleFollow(Station& st, const char* item, const char* other) {
  auto& m = st.view.menu(item);
  m.checked = !m.checked;
  if (m.checked) st.view.menu(other).checked = false;
}

}  // namespace

int16_t overlayFontSizeFor(int maxChars) {
  if (maxChars >= 39) return 10;
  if (maxChars < 33) return 12;
  return 11;
}

void mnu_tex_par_vel(Station& st) {
  askReal(st, "Enter reading speed (Characters per second, 1-30)", st.s.readingSpeed, 1, 30, 12);
  showReadingSpeedPanel(st);
}

void mnu_sub_par_min(Station& st) {
  askReal(st, "Enter minimun on-air duration of 1-line subtitles (in seconds)", st.s.minOnAir1, 0, 10, 1);
}

void mnu_sub_par_min2(Station& st) {
  askReal(st, "Enter minimun on-air duration of 2-line subtitles (in seconds)", st.s.minOnAir2, 0, 10, 2);
}

void mnu_sub_par_max(Station& st) {
  askReal(st, "Enter maximum on-air duration of subtitle (in seconds)", st.s.maxOnAir, 1, 60, 10);
}

void mnu_sub_par_ilv(Station& st) {
  askWhole(st, "Enter minimum interleave between subtitles (frames)", st.s.minInterleave, 0, 30, 0, false);
}

void mnu_sub_par_fast(Station& st) {
  askWhole(st, "Enter threshold for acceptable fast subtitle", st.s.fastThreshold, 1, 100, 10, true);
}

void mnu_sub_par_slow(Station& st) {
  askWhole(st, "Enter threshold for acceptable slow subtitle", st.s.slowThreshold, 0, 100, 0, true);
}

void mnu_sub_par_cxl(Station& st) {
  askWhole(st, "Enter max number of displayable characters per row", st.s.maxCharsRow, 1, 100, 32, false);
  showMaxCharsPanel(st);
  st.s.overlayFontSize = overlayFontSizeFor(st.s.maxCharsRow);
}

void mnu_sub_par_seq(Station& st) {
  // One byte: a number outside 0 to 255 does not go in at all.
  auto a = ask(st, "Enter next sequential number for subtitle", st.s.nextSeqNumber);
  if (!a) return;
  if (auto v = typedWhole(*a, 0, 255)) st.s.nextSeqNumber = static_cast<int16_t>(*v);
  if (st.s.nextSeqNumber < 1) st.s.nextSeqNumber = 1;
}

void mnu_sub_opc_chk(Station& st) {
  toggle(st, "mnu_sub_opc_chk", st.s.readingSpeedCheck);
  showReadingSpeedCheckPanel(st);
}

void mnu_sub_opc_dis(Station& st) { toggle(st, "mnu_sub_opc_dis", st.s.checksDisabled); }
void mnu_sub_opc_seq(Station& st) { toggle(st, "mnu_sub_opc_seq", st.s.sequentialNumbering); }
void mnu_sub_opc_mtx(Station& st) { toggle(st, "mnu_sub_opc_mtx", st.s.minimiseSubtitleWindow); }
void mnu_sub_opc_col(Station& st) { toggle(st, "mnu_sub_opc_col", st.s.colourFeedback); }
void mnu_situ_off(Station& st) { toggle(st, "mnu_situ_off", st.s.inSituOffset); }

void mnu_sub_opc_sim(Station& st) { toggleFollow(st, "mnu_sub_opc_sim", "mnu_dub_opc_sim"); }
void mnu_dub_opc_sim(Station& st) { toggleFollow(st, "mnu_dub_opc_sim", "mnu_sub_opc_sim"); }

}  // namespace quillon
