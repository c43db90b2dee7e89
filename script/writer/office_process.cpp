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

OfficeProcess::~OfficeProcess() { running(); }

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
  args.push_back("--accept=" + launch.connection + ";urp;StarOffice.ComponentContext");
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
  status_ = -1;
  return true;
}

bool OfficeProcess::running() {
  if (pid_ <= 0) return false;
  int status = 0;
  pid_t r = waitpid(pid_, &status, WNOHANG);
  if (r == 0) return true;
  if (r == pid_) status_ = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  pid_ = -1;
  return false;
}

void OfficeProcess::stop(double graceSeconds) {
  if (pid_ <= 0) return;
  const pid_t group = pid_;
  kill(-group, SIGTERM);
  const auto until = std::chrono::steady_clock::now() + std::chrono::duration<double>(graceSeconds);
  while (running() && std::chrono::steady_clock::now() < until)
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
  // The office may outlive the script that started it, in the same group.
  kill(-group, SIGKILL);
  if (pid_ > 0) {
    int status = 0;
    waitpid(pid_, &status, 0);
    pid_ = -1;
  }
}

}  // namespace quillon
