#include "reliability_support.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>

#include "support/station_fixture.h"

namespace quillon::testing {

std::string quoted(const std::string& word) {
  std::string q = "'";
  for (char c : word) q += c == '\'' ? std::string("'\\''") : std::string(1, c);
  return q + "'";
}

CliResult runCli(const std::string& dir, const std::string& args, const std::string& prefix,
                 const std::string& wrapper) {
  const std::string err = dir + "/cli-stderr.txt";
  // Standard error goes through a pipe, so that a file-size limit on the
  // command does not stop its message.
  std::string inner = prefix + (prefix.empty() ? "" : "; ") + "exec " + wrapper + (wrapper.empty() ? "" : " ") +
                      quoted(QUILLON_CLI_PATH) + " " + args;
  std::string cmd = "set -o pipefail; (" + inner + ") 2>&1 >/dev/null | cat >" + quoted(err);
  int status = std::system(("bash -c " + quoted(cmd)).c_str());
  return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, readFile(err)};
}

std::string unprivilegedWrapper() {
  return ::geteuid() == 0 ? "setpriv --reuid=65534 --regid=65534 --clear-groups" : "";
}

void makeSparseFile(const std::string& path, long long size, const std::string& head, const std::string& tail) {
  int fd = ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
  if (fd < 0) return;
  if (!head.empty()) (void)!::pwrite(fd, head.data(), head.size(), 0);
  if (::ftruncate(fd, size) == 0 && !tail.empty())
    (void)!::pwrite(fd, tail.data(), tail.size(), size - static_cast<long long>(tail.size()));
  ::close(fd);
}

bool withReadOnlyFolder(const std::string& dir, const std::function<bool()>& body, unsigned mode) {
  ::chmod(dir.c_str(), static_cast<mode_t>(mode));
  bool ok;
  if (::geteuid() != 0) {
    ok = body();
  } else {
    pid_t pid = ::fork();
    if (pid == 0) {
      // "nobody": the folder, owned by root, is read-only to it.
      if (::setgid(65534) != 0 || ::setuid(65534) != 0) ::_exit(3);
      ::_exit(body() ? 0 : 1);
    }
    int status = 0;
    ::waitpid(pid, &status, 0);
    ok = WIFEXITED(status) && WEXITSTATUS(status) == 0;
  }
  ::chmod(dir.c_str(), 0755);
  return ok;
}

bool withFullDisk(long long bytes, const std::function<bool()>& body) {
  struct rlimit saved {};
  ::getrlimit(RLIMIT_FSIZE, &saved);
  auto oldHandler = ::signal(SIGXFSZ, SIG_IGN);
  struct rlimit limited = saved;
  limited.rlim_cur = static_cast<rlim_t>(bytes);
  ::setrlimit(RLIMIT_FSIZE, &limited);
  bool ok = body();
  ::setrlimit(RLIMIT_FSIZE, &saved);
  ::signal(SIGXFSZ, oldHandler);
  return ok;
}

}  // namespace quillon::testing
