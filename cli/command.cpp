#include "cli/command.h"

#include <cstdio>
#include <ostream>

#include "cli/wiring.h"
#include "cli/writer_option.h"
#include "script/document_files.h"
#include "script/user_identity.h"

namespace quillon::cli {

namespace {
std::vector<CommandSpec>& registry() {
  static std::vector<CommandSpec> r;
  return r;
}
}  // namespace

CommandRegistrar::CommandRegistrar(const CommandSpec& spec) { registry().push_back(spec); }
const std::vector<CommandSpec>& commands() { return registry(); }

Invocation::Invocation(std::ostream& out_, std::ostream& err_) : out(out_), err(err_), ui(err_), st(ui) {
  st.doc = &docs;
  docs.user = accountUserName();  // UserName from the account; no source gives UserAddress
  wireStation(st);
}

int Invocation::fail(const std::string& message) {
  err << "quillon-cli: " << message << '\n';
  return kExitUsage;
}

bool Invocation::loadScript(const std::string& path) {
  if (inWriter()) return useWriterScript(*this, path);
  std::string error;
  auto doc = loadDocumentFile(path, error);
  if (!doc) {
    fail(error.empty() ? "cannot read " + path : error);
    return false;
  }
  docs.addDocument(std::move(doc));
  return true;
}

bool Invocation::scriptArgs(size_t n) {
  if (inWriter() && args.size() + 1 == n) args.emplace_back();
  return args.size() == n;
}

int Invocation::loadOneScript(const char* command) {
  std::string error;
  if (rejectUnknownOptions(error)) return fail(error);
  if (!scriptArgs(1)) return fail(std::string(command) + " wants one SCRIPT (see " + command + " --help)");
  return loadScript(args[0]) ? kExitOk : kExitUsage;
}

int Invocation::exitFor(bool ok) const {
  if (ui.answeredNo) return kExitStopped;
  if (!ok && ui.boxesShown > 0) return kExitStopped;
  return kExitOk;
}

bool Invocation::takeOption(const std::string& name, std::string& value, std::string& error) {
  for (size_t i = 0; i < args.size(); ++i) {
    if (args[i] == name) {
      if (i + 1 >= args.size()) {
        error = name + " wants a value";
        return false;
      }
      value = args[i + 1];
      args.erase(args.begin() + static_cast<long>(i), args.begin() + static_cast<long>(i) + 2);
      return true;
    }
    if (args[i].rfind(name + "=", 0) == 0) {
      value = args[i].substr(name.size() + 1);
      args.erase(args.begin() + static_cast<long>(i));
      return true;
    }
  }
  return false;
}

bool Invocation::takeFlag(const std::string& name) {
  for (size_t i = 0; i < args.size(); ++i)
    if (args[i] == name) {
      args.erase(args.begin() + static_cast<long>(i));
      return true;
    }
  return false;
}

bool Invocation::rejectUnknownOptions(std::string& error) const {
  for (const auto& a : args)
    if (a.size() > 2 && a.rfind("--", 0) == 0) {
      error = "unknown option '" + a + "'";
      return true;
    }
  return false;
}

std::string reportText(const u16& text) {
  std::string out = toUtf8(text);
  for (char& c : out)
    if (c == '\r') c = '\n';
  return out;
}

std::string secondsText(double seconds) {
  if (seconds == -1) return "-1";
  char buf[64];
  std::snprintf(buf, sizeof buf, "%.6f", seconds);
  return buf;
}

}  // namespace quillon::cli
