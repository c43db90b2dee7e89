#include "script/writer/office_process.h"

#include <fcntl.h>
#include <pwd.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <thread>
#include <vector>

namespace quillon {

std::string defaultWriterConnection() {
  std::string user;
  if (const passwd* pw = getpwuid(getuid()); pw && pw->pw_name) user = pw->pw_name;
  if (user.empty()) user = std::to_string(getuid());
  // Pipe names travel inside a connection string: keep to safe characters.
  for (char& c : user)
    if (!((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' || c == '_')) c = '_';
  return "pipe,name=quillon-" + user;
}

std::string findProgram(const std::string& program) {
  auto executable = [](const std::string& p) {
    struct stat st {};
    return stat(p.c_str(), &st) == 0 && S_ISREG(st.st_mode) && access(p.c_str(), X_OK) == 0;
  };
  if (program.find('/') != std::string::npos) return executable(program) ? program : std::string();
  const char* path = std::getenv("PATH");
  std::string dirs = path ? path : "/usr/local/bin:/usr/bin:/bin";
  size_t start = 0;
  while (start <= dirs.size()) {
    size_t end = dirs.find(':', start);
    if (end == std::string::npos) end = dirs.size();
    std::string dir = dirs.substr(start, end - start);
    if (dir.empty()) dir = ".";
    if (executable(dir + "/" + program)) return dir + "/" + program;
    start = end + 1;
  }
  return {};
}

OfficeProcess::~OfficeProcess() { reap(); }

bool OfficeProcess::start(const OfficeLaunch& launch, std::string& error) {
  const std::string program = findProgram(launch.program);
  if (program.empty()) {
    error = "LibreOffice (" + launch.program + ") is not installed";
    return false;
  }
  std::vector<std::string> args{program};
  if (!launch.profileDir.empty()) args.push_back("-env:UserInstallation=file://" + launch.profileDir);
  if (launch.headless) {
    args.push_back("--headless");
    args.push_back("--invisible");
  }
  if (!launch.restore) args.push_back("--norestore");
  args.push_back("--nologo");
  if (launch.initialiseOnly) args.push_back("--terminate_after_init");
  else args.push_back("--accept=" + launch.connection + ";urp;StarOffice.ComponentContext");
  std::vector<char*> argv;
  for (auto& a : args) argv.push_back(a.data());
  argv.push_back(nullptr);

  pid_t child = fork();
  if (child < 0) {
    error = std::string("cannot start LibreOffice: ") + std::strerror(errno);
    return false;
  }
  if (child == 0) {
    // A group of its own, so that stopping it reaches the office it starts.
    setpgid(0, 0);
    int null = open("/dev/null", O_RDWR);
    if (null >= 0) {
      dup2(null, 0);
      dup2(null, 1);
      dup2(null, 2);
    }
    execv(program.c_str(), argv.data());
    _exit(127);
  }
  setpgid(child, child);
  pid_ = child;
  group_ = child;
  if (launch.endsWithThisProcess) watchOver(child);
  return true;
}

// A watcher of its own waits on a pipe only this process writes to; when the
// pipe closes, this process has ended, and the watcher ends the office.
void OfficeProcess::watchOver(pid_t group) {
  int fds[2];
  if (pipe2(fds, O_CLOEXEC) != 0) return;
  pid_t watcher = fork();
  if (watcher == 0) {
    close(fds[1]);
    char c;
    while (read(fds[0], &c, 1) < 0 && errno == EINTR) {
    }
    kill(-group, SIGKILL);
    _exit(0);
  }
  close(fds[0]);
  if (watcher < 0) close(fds[1]);
  // The write end stays open, unused, for the life of this process; the
  // watcher is left to end on its own.
}

void OfficeProcess::reap() {
  if (pid_ <= 0) return;
  int status = 0;
  if (waitpid(pid_, &status, WNOHANG) != 0) pid_ = -1;
}

bool OfficeProcess::running() {
  reap();
  if (group_ <= 0) return false;
  if (kill(-group_, 0) == 0) return true;
  group_ = -1;
  return false;
}

bool OfficeProcess::waitForEnd(double seconds) {
  const auto until = std::chrono::steady_clock::now() + std::chrono::duration<double>(seconds);
  while (running()) {
    if (std::chrono::steady_clock::now() >= until) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
  }
  return true;
}

void OfficeProcess::stop(double graceSeconds) {
  if (!running()) return;
  const pid_t group = group_;
  kill(-group, SIGTERM);
  if (!waitForEnd(graceSeconds)) kill(-group, SIGKILL);
  waitForEnd(10);
  if (pid_ > 0) {
    int status = 0;
    waitpid(pid_, &status, 0);
    pid_ = -1;
  }
  group_ = -1;
}

}  // namespace quillon
