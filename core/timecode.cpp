#include "core/timecode.h"

#include <cmath>

#include "core/session.h"
#include "core/ui.h"
#include "core/view_state.h"

namespace quillon {

namespace {

// A short numeric field converted the way the station's byte and integer
// conversions accept it: digits with at most one decimal point and an
// optional minus sign, rounded half to even. Anything else is an error.
bool convertField(u16v f, double& out) {
  if (f.empty()) return false;
  size_t i = 0;
  bool neg = false;
  if (f[0] == u'-') {
    neg = true;
    i = 1;
  }
  bool digits = false, point = false;
  double v = 0, scale = 1;
  for (; i < f.size(); ++i) {
    char16_t c = f[i];
    if (c >= u'0' && c <= u'9') {
      digits = true;
      if (point) {
        scale /= 10;
        v += (c - u'0') * scale;
      } else {
        v = v * 10 + (c - u'0');
      }
    } else if (c == u'.' && !point) {
      point = true;
    } else {
      return false;
    }
  }
  if (!digits) return false;
  v = std::nearbyint(v);  // half to even under the default rounding mode
  out = neg ? -v : v;
  return true;
}

bool charactersPass(u16v text) {
  for (char16_t c : text)
    if (c < 44 || c > 59) return false;
  return true;
}

// Fields of a frame timecode, or false when any test refuses it.
bool splitFrameTC(u16v text, int fps, double& h, double& m, double& s, double& f) {
  if (text.size() != 11) return false;
  if (!charactersPass(text)) return false;
  // Every field is converted, whatever the one before gave.
  bool ok = convertField(text.substr(0, 2), h);
  ok &= convertField(text.substr(3, 2), m);
  ok &= convertField(text.substr(6, 2), s);
  ok &= convertField(text.substr(9, 2), f);
  if (!ok) return false;
  // Byte conversion refuses negatives.
  if (h < 0 || m < 0 || s < 0 || f < 0) return false;
  if (h > 24 || m > 59 || s > 59 || f > fps - 1) return false;
  return true;
}

struct FormatterSpec {
  const char16_t* zeroText;
  const char* hourFormat;
  const char16_t* zeroHour;
  const char16_t* separator;  // before minutes and seconds
  double scale;
  const char* fractionFormat;
  const char16_t* zeroFraction;
};

// Shared decomposition; `repair` appends the fraction field from F.
template <class Repair>
u16 decompose(double r, const FormatterSpec& spec, Repair repair) {
  if (!(r > 0)) return spec.zeroText;
  u16 out;
  double hours = 0, minutes = 0, seconds = 0;
  if (r >= 3600) {
    hours = std::trunc(r / 3600);
    out = formatNumber(hours, spec.hourFormat);
    r -= 3600 * hours;
  } else {
    out = spec.zeroHour;
  }
  if (r >= 60) {
    minutes = std::trunc(r / 60);
    out += spec.separator;
    out += formatNumber(minutes, "00");
    r -= 60 * minutes;
  } else {
    out += spec.separator;
    out += u"00";
  }
  if (r >= 1) {
    seconds = std::trunc(r);
    out += spec.separator;
    out += formatNumber(seconds, "00");
    r -= seconds;
  } else {
    out += spec.separator;
    out += u"00";
  }
  if (r == 0) {
    out += spec.zeroFraction;
    return out;
  }
  u16 F = formatNumber(spec.scale * r, spec.fractionFormat);
  out += repair(F, minutes, seconds);
  return out;
}

}  // namespace

double tcToSeconds(u16v text, int fps) {
  double h, m, s, f;
  if (fps <= 0 || !splitFrameTC(text, fps, h, m, s, f)) return -1;
  return 3600 * h + 60 * m + s + f / fps;
}

double TCaSEG(u16v text, int fps, UserInterface& ui) {
  double r = tcToSeconds(text, fps);
  if (r == -1) critical(ui, u"Error in time code format: [" + u16(text) + u"]");
  return r;
}

double tcaToSeconds(u16v text) {
  if (text.size() != 11 || !charactersPass(text)) return -1;
  double h, m, s, k;
  bool ok = convertField(text.substr(0, 1), h);
  ok &= convertField(text.substr(2, 2), m);
  ok &= convertField(text.substr(5, 2), s);
  ok &= convertField(text.substr(8, 3), k);
  if (!ok) return -1;
  if (h < 0 || h > 9 || m < 0 || m > 59 || s < 0 || s > 59 || k < 0 || k > 999) return -1;
  return 3600 * h + 60 * m + s + k / 1000;
}

double TCAaSEG(u16v text, UserInterface& ui) {
  double r = tcaToSeconds(text);
  if (r == -1) critical(ui, u"Error in time code format SSA: [" + u16(text) + u"]");
  return r;
}

u16 SEGaTC(double seconds, int fps) {
  static const FormatterSpec spec{u"00:00:00:00", "00", u"00", u":", 0, "00", u":00"};
  FormatterSpec sp = spec;
  sp.scale = fps;
  return decompose(seconds, sp, [fps](const u16& F, double minutes, double secs) -> u16 {
    switch (fps) {
      case 24: return F == u"24" ? u":23" : u":" + F;
      case 25: return F == u"25" ? u":24" : u":" + F;
      case 30: {
        if (F == u"29" || F == u"30") return u":29";
        // Labels 00 and 01 do not exist in the first second of a minute
        // that is not a tenth minute.
        bool dropped = secs == 0 && std::fmod(minutes, 10) != 0;
        if (F == u"00") return dropped ? u":02" : u":00";
        if (F == u"01") return dropped ? u":02" : u":01";
        return u":" + F;
      }
      default: return u"";
    }
  });
}

u16 SEGaTCback09(double seconds, int fps) {
  FormatterSpec sp{u"00:00:00:00", "00", u"00", u":", static_cast<double>(fps), "00", u":00"};
  return decompose(seconds, sp, [fps](const u16& F, double, double) -> u16 {
    if (fps == 24 && F == u"24") return u":23";
    if (fps == 25 && F == u"25") return u":24";
    if (fps == 30 && F == u"30") return u":29";
    return u":" + F;
  });
}

u16 SEGaTCA(double seconds) {
  FormatterSpec sp{u"0:00:00:00", "0", u"0", u":", 100, "00", u":00"};
  return decompose(seconds, sp, [](const u16& F, double, double) -> u16 { return F == u"100" ? u":99" : u":" + F; });
}

u16 SEGaTCV(double seconds) {
  FormatterSpec sp{u"0:00:00.000", "0", u"0", u":", 1000, "000", u":00"};
  return decompose(seconds, sp,
                   [](const u16& F, double, double) -> u16 { return F == u"1000" ? u".999" : u"." + F; });
}

u16 SEGaTC8(double seconds, int fps) {
  FormatterSpec sp{u"00000000", "00", u"00", u"", static_cast<double>(fps), "00", u"00"};
  return decompose(seconds, sp, [fps](const u16& F, double, double) -> u16 {
    if (fps == 25) return F == u"25" ? u"24" : F;
    return F == u"30" ? u"29" : F;
  });
}

double SEGaFRAMES(double seconds, int fps) { return fps * seconds; }

double FRAMESaSEG(int16_t frames, int fps) {
  if (fps == 0) return 0;  // the division fails and the result stays empty
  return static_cast<double>(frames) / fps;
}

long TCaFRAMES(u16v text, int fps) {
  double h, m, s, f;
  if (fps <= 0 || !splitFrameTC(text, fps, h, m, s, f)) return -1;
  return static_cast<long>(90000 * h + 1500 * m + fps * s + f);
}

int16_t minimo(int16_t a, int16_t b) { return a > b ? b : a; }
int16_t maximo(int16_t a, int16_t b) { return a > b ? a : b; }

double transformadaTCactual(const Session& s) {
  if (s.videoDuration == 0) return 0;
  double P = s.g_dblPosActual;
  return s.tcStart + P - (s.videoDuration - (s.tcEnd - s.tcStart)) * P / s.videoDuration;
}

double transformadainversa(const Session& s, double t) {
  if (s.videoFile.empty() || s.videoDuration == 0) return 0;
  double denom = 1 - (s.videoDuration - (s.tcEnd - s.tcStart)) / s.videoDuration;
  if (denom == 0) return 0;
  return (t - s.tcStart) / denom;
}

void setVideoTimecodeWindow(Session& s, ViewState& view, u16v w) {
  long f[8];
  bool ok = !w.empty();
  for (int i = 0; ok && i < 8; ++i) ok = toInteger(mid(w, 1 + 2 * i, 2), f[i]);
  if (!ok || s.g_fps == 0) {
    s.tcStart = 0;
    s.tcEnd = s.videoDuration;
  } else {
    s.tcStart = 3600.0 * f[0] + 60.0 * f[1] + f[2] + static_cast<double>(f[3]) / s.g_fps;
    s.tcEnd = 3600.0 * f[4] + 60.0 * f[5] + f[6] + static_cast<double>(f[7]) / s.g_fps;
    if (s.tcEnd == 0) s.tcEnd = s.videoDuration;
  }
  view.LabCom.caption = SEGaTC(s.tcStart, s.g_fps);
  view.LabDur.caption = SEGaTC(s.tcEnd, s.g_fps);
  view.LabTimecode.caption = SEGaTC(transformadaTCactual(s), s.g_fps);
}

}  // namespace quillon
