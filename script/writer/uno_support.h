// What the Writer adapter's sources share of UNO: the headers cppumaker
// generated at build time, strings both ways, and the few shorthands for
// the interfaces used everywhere. Only this folder includes it.
#pragma once

#include <rtl/ustring.hxx>

#include <com/sun/star/beans/PropertyValue.hpp>
#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/frame/XModel.hpp>
#include <com/sun/star/lang/DisposedException.hpp>
#include <com/sun/star/text/XText.hpp>
#include <com/sun/star/text/XTextCursor.hpp>
#include <com/sun/star/text/XTextDocument.hpp>
#include <com/sun/star/uno/Reference.hxx>
#include <com/sun/star/uno/Sequence.hxx>

#include <string>
#include <utility>
#include <vector>

#include "core/text.h"

namespace quillon::uno {

namespace css = ::com::sun::star;
using ::com::sun::star::uno::Any;
using ::com::sun::star::uno::Reference;
using ::com::sun::star::uno::Sequence;
using ::com::sun::star::uno::UNO_QUERY;
using ::com::sun::star::uno::UNO_QUERY_THROW;
using ::rtl::OUString;

inline OUString ou(u16v s) {
  return OUString(reinterpret_cast<const sal_Unicode*>(s.data()), static_cast<sal_Int32>(s.size()));
}
inline OUString ou(const std::string& utf8) {
  return OUString(utf8.data(), static_cast<sal_Int32>(utf8.size()), RTL_TEXTENCODING_UTF8);
}
inline u16 fromOu(const OUString& s) {
  return u16(reinterpret_cast<const char16_t*>(s.getStr()), static_cast<size_t>(s.getLength()));
}
inline std::string utf8(const OUString& s) { return OUStringToOString(s, RTL_TEXTENCODING_UTF8).getStr(); }

// An exception's message for the operator, without the office's source
// file and line.
template <class E>
std::string reason(const E& e) {
  std::string m = utf8(e.Message);
  if (auto at = m.find(" at ./"); at != std::string::npos) m.erase(at);
  return m;
}

// A text range as the argument Writer's calls take, from any cursor.
template <class T>
Reference<css::text::XTextRange> range(const Reference<T>& r) {
  return Reference<css::text::XTextRange>(r.get());
}

inline Sequence<css::beans::PropertyValue> properties(
    const std::vector<std::pair<const char*, Any>>& values) {
  Sequence<css::beans::PropertyValue> s(static_cast<sal_Int32>(values.size()));
  for (size_t i = 0; i < values.size(); ++i) {
    s.getArray()[i].Name = OUString::createFromAscii(values[i].first);
    s.getArray()[i].Value = values[i].second;
  }
  return s;
}

// A file's URL for Writer, and back; empty when the path cannot be one.
OUString fileUrl(const std::string& path);
std::string systemPath(const OUString& url);

}  // namespace quillon::uno
