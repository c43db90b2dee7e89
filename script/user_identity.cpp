#include "script/user_identity.h"

#include <pwd.h>
#include <unistd.h>

#include <vector>

#include "script/document_files.h"

namespace quillon {

u16 gecosFullName(std::string_view gecos, std::string_view login) {
  std::string_view full = gecos.substr(0, gecos.find(','));
  std::string out;
  for (char c : full) {
    if (c != '&') {
      out += c;
      continue;
    }
    std::string l(login);
    if (!l.empty() && l[0] >= 'a' && l[0] <= 'z') l[0] = static_cast<char>(l[0] - 32);
    out += l;
  }
  while (!out.empty() && out.back() == ' ') out.pop_back();
  return isValidUtf8(out) ? fromUtf8(out) : fromLatin1(out);
}

u16 accountUserName() {
  long size = sysconf(_SC_GETPW_R_SIZE_MAX);
  std::vector<char> buf(static_cast<size_t>(size > 0 ? size : 16384));
  struct passwd pw {};
  struct passwd* found = nullptr;
  if (getpwuid_r(getuid(), &pw, buf.data(), buf.size(), &found) != 0 || !found || !pw.pw_gecos) return {};
  return gecosFullName(pw.pw_gecos, pw.pw_name ? pw.pw_name : "");
}

u16 accountUserAddress() { return {}; }

}  // namespace quillon
