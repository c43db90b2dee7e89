#include "core/text.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace quillon {

std::string toUtf8(u16v s) {
  std::string out;
  out.reserve(s.size());
  for (size_t i = 0; i < s.size(); ++i) {
    uint32_t c = s[i];
    if (c >= 0xD800 && c <= 0xDBFF && i + 1 < s.size() && s[i + 1] >= 0xDC00 && s[i + 1] <= 0xDFFF) {
      c = 0x10000 + ((c - 0xD800) << 10) + (s[i + 1] - 0xDC00);
      ++i;
    } else if (c >= 0xD800 && c <= 0xDFFF) {
      c = 0xFFFD;  // a lone surrogate cannot be written as UTF-8
    }
    if (c < 0x80) {
      out += static_cast<char>(c);
    } else if (c < 0x800) {
      out += static_cast<char>(0xC0 | (c >> 6));
      out += static_cast<char>(0x80 | (c & 0x3F));
    } else if (c < 0x10000) {
      out += static_cast<char>(0xE0 | (c >> 12));
      out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
      out += static_cast<char>(0x80 | (c & 0x3F));
    } else {
      out += static_cast<char>(0xF0 | (c >> 18));
      out += static_cast<char>(0x80 | ((c >> 12) & 0x3F));
      out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
      out += static_cast<char>(0x80 | (c & 0x3F));
    }
  }
  return out;
}

u16 fromUtf8(std::string_view s) {
  u16 out;
  out.reserve(s.size());
  size_t i = 0;
  while (i < s.size()) {
    unsigned char b = static_cast<unsigned char>(s[i]);
    uint32_t c = 0xFFFD;
    size_t n = 1;
    if (b < 0x80) {
      c = b;
    } else if ((b >> 5) == 6) {
      n = 2;
      c = b & 0x1F;
    } else if ((b >> 4) == 14) {
      n = 3;
      c = b & 0x0F;
    } else if ((b >> 3) == 30) {
      n = 4;
      c = b & 0x07;
    } else {
      out += u'\uFFFD';
      ++i;
      continue;
    }
    if (i + n > s.size()) {
      out += u'\uFFFD';
      break;
    }
    bool ok = true;
    for (size_t k = 1; k < n; ++k) {
      unsigned char t = static_cast<unsigned char>(s[i + k]);
      if ((t >> 6) != 2) {
        ok = false;
        break;
      }
      c = (c << 6) | (t & 0x3F);
    }
    if (!ok) {
      out += u'\uFFFD';
      ++i;
      continue;
    }
    i += n;
    if (c >= 0x10000) {
      c -= 0x10000;
      out += static_cast<char16_t>(0xD800 + (c >> 10));
      out += static_cast<char16_t>(0xDC00 + (c & 0x3FF));
    } else {
      out += static_cast<char16_t>(c);
    }
  }
  return out;
}

u16 fromLatin1(std::string_view s) {
  u16 out(s.size(), u'\0');
  for (size_t i = 0; i < s.size(); ++i) out[i] = static_cast<unsigned char>(s[i]);
  return out;
}

u16 left(u16v s, long n) {
  if (n <= 0) return {};
  return u16(s.substr(0, static_cast<size_t>(n)));
}

u16 right(u16v s, long n) {
  if (n <= 0) return {};
  if (static_cast<size_t>(n) >= s.size()) return u16(s);
  return u16(s.substr(s.size() - static_cast<size_t>(n)));
}

u16 mid(u16v s, long start1, long len) {
  if (start1 < 1) start1 = 1;
  size_t from = static_cast<size_t>(start1 - 1);
  if (from >= s.size()) return {};
  if (len < 0) return u16(s.substr(from));
  return u16(s.substr(from, static_cast<size_t>(len)));
}

long instr(long start1, u16v s, u16v what) {
  if (start1 < 1) start1 = 1;
  size_t from = static_cast<size_t>(start1 - 1);
  if (from > s.size()) return 0;
  if (what.empty()) return start1;
  size_t p = s.find(what, from);
  return p == u16v::npos ? 0 : static_cast<long>(p) + 1;
}

namespace {
// Parsed by hand so that the decimal mark is the period whatever the locale.
template <class CharT>
double leadingNumberImpl(std::basic_string_view<CharT> s) {
  size_t i = 0;
  while (i < s.size() && (s[i] == ' ' || s[i] == '\t')) ++i;
  bool neg = false;
  if (i < s.size() && (s[i] == '-' || s[i] == '+')) neg = s[i++] == '-';
  bool digits = false, point = false;
  double mantissa = 0, scale = 1;
  int fracDigits = 0;
  while (i < s.size()) {
    CharT c = s[i];
    if (c >= '0' && c <= '9') {
      digits = true;
      if (fracDigits < 17) {
        mantissa = mantissa * 10 + (c - '0');
        if (point) {
          scale *= 10;
          ++fracDigits;
        }
      }
    } else if (c == '.' && !point) {
      point = true;
    } else {
      break;
    }
    ++i;
  }
  if (!digits) return 0.0;
  double v = mantissa / scale;
  return neg ? -v : v;
}
}  // namespace

double leadingNumber(u16v s) { return leadingNumberImpl(s); }
double leadingNumber(std::string_view s) { return leadingNumberImpl(s); }

bool toInteger(u16v s, long& out) {
  u16 t = trim(s);
  if (t.empty()) return false;
  size_t i = 0;
  bool neg = false;
  if (t[0] == u'-' || t[0] == u'+') {
    neg = t[0] == u'-';
    i = 1;
  }
  if (i >= t.size()) return false;
  long v = 0;
  for (; i < t.size(); ++i) {
    if (t[i] < u'0' || t[i] > u'9') return false;
    v = v * 10 + (t[i] - u'0');
    if (v > 1000000000L) return false;
  }
  out = neg ? -v : v;
  return true;
}

std::string formatNumber8(double value, std::string_view picture) {
  size_t dot = picture.find('.');
  std::string_view intPic = dot == std::string_view::npos ? picture : picture.substr(0, dot);
  std::string_view fracPic = dot == std::string_view::npos ? std::string_view{} : picture.substr(dot + 1);
  int decimals = static_cast<int>(fracPic.size());
  double scale = std::pow(10.0, decimals);
  bool neg = value < 0;
  double a = std::fabs(value) * scale;
  // Halves go away from zero; a tiny epsilon absorbs binary noise such as 2.675.
  double rounded = std::floor(a + 0.5 + 1e-9);
  double whole = std::floor(rounded / scale);
  double frac = rounded - whole * scale;
  char buf[64];
  std::snprintf(buf, sizeof buf, "%.0f", whole);
  std::string intDigits = buf;
  size_t minInt = 0;
  for (char c : intPic)
    if (c == '0') ++minInt;
  if (intDigits == "0" && minInt == 0) intDigits.clear();
  while (intDigits.size() < minInt) intDigits.insert(intDigits.begin(), '0');
  std::string out;
  if (neg && rounded != 0) out += '-';
  out += intDigits;
  if (decimals > 0) {
    std::snprintf(buf, sizeof buf, "%0*.0f", decimals, frac);
    std::string fd = buf;
    // Trailing '#' places drop their zeros.
    size_t minFrac = 0;
    for (size_t k = 0; k < fracPic.size(); ++k)
      if (fracPic[k] == '0') minFrac = k + 1;
    while (fd.size() > minFrac && fd.back() == '0') fd.pop_back();
    out += '.';
    out += fd;
  } else if (dot != std::string_view::npos) {
    out += '.';
  }
  return out;
}

u16 formatNumber(double value, std::string_view picture) { return fromLatin1(formatNumber8(value, picture)); }

u16 numberText(double value) {
  if (std::isfinite(value) && value == std::floor(value) && std::fabs(value) < 1e15) {
    char buf[32];
    std::snprintf(buf, sizeof buf, "%.0f", value);
    return fromLatin1(buf);
  }
  char buf[40];
  for (int prec = 1; prec <= 17; ++prec) {
    std::snprintf(buf, sizeof buf, "%.*g", prec, value);
    if (std::strtod(buf, nullptr) == value) break;
  }
  std::string t = buf;
  // Keep the period whatever the C locale says.
  for (char& c : t)
    if (c == ',') c = '.';
  return fromLatin1(t);
}

u16 withoutParagraphMark(const u16& paragraph) {
  if (!paragraph.empty() && paragraph.back() == CR) return paragraph.substr(0, paragraph.size() - 1);
  return paragraph;
}

u16 trim(u16v s) {
  size_t a = 0, b = s.size();
  while (a < b && (s[a] == u' ' || s[a] == u'\t')) ++a;
  while (b > a && (s[b - 1] == u' ' || s[b - 1] == u'\t')) --b;
  return u16(s.substr(a, b - a));
}

u16 replaceAll(u16v s, u16v from, u16v to) {
  if (from.empty()) return u16(s);
  u16 out;
  size_t pos = 0;
  while (true) {
    size_t p = s.find(from, pos);
    if (p == u16v::npos) break;
    out.append(s.substr(pos, p - pos));
    out.append(to);
    pos = p + from.size();
  }
  out.append(s.substr(pos));
  return out;
}

bool startsWith(u16v s, u16v prefix) { return s.substr(0, prefix.size()) == prefix; }

}  // namespace quillon
