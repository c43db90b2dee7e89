// The logic's UTF-16 text and Qt's strings, unit for unit.
#pragma once

#include <QString>

#include "core/text.h"

namespace quillon {

inline QString toQString(u16v text) { return QString::fromUtf16(text.data(), static_cast<qsizetype>(text.size())); }
inline u16 fromQString(const QString& text) {
  return u16(reinterpret_cast<const char16_t*>(text.utf16()), static_cast<size_t>(text.size()));
}

}  // namespace quillon
