// Starting LibreOffice so that it listens for the station: `soffice
// --accept=CONNECTION;urp;` as a child process of its own group. When the
// operator's LibreOffice is already running, soffice hands the request to it
// and leaves, and that one starts to listen.
#pragma once

#include <sys/types.h>

#include <string>

namespace quillon {

struct OfficeLaunch {
  std::string program = "soffice";
  std::string connection;  // "pipe,name=quillon-ana"
  // A profile folder of its own (a file URL is made of it); empty uses the
  // operator's own profile.
  std::string profileDir;
  bool headless = false;   // no windows at all: tests and benchmarks
  bool restore = true;     // offer the documents of an office that crashed
};

// The connection the station uses unless told another: a pipe named for the
// account, so that two operators on one machine each reach their own office.
std::string defaultWriterConnection();

// Where `program` would be run from (searched on PATH when it has no slash);
// empty when it is nowhere.
std::string findProgram(const std::string& program);

class OfficeProcess {
 public:
  OfficeProcess() = default;
  ~OfficeProcess();  // leaves the office running: the operator's documents live in it
  OfficeProcess(const OfficeProcess&) = delete;
  OfficeProcess& operator=(const OfficeProcess&) = delete;

  // False with a reason when the program cannot be started.
  bool start(const OfficeLaunch& launch, std::string& error);
  pid_t pid() const { return pid_; }
  // True while the child has not ended; reaps it once it has, keeping its
  // exit status.
  bool running();
  int exitStatus() const { return status_; }
  // Ends the child's process group: TERM, then KILL after `graceSeconds`.
  void stop(double graceSeconds = 10);

 private:
  pid_t pid_ = -1;
  int status_ = -1;
};

}  // namespace quillon
