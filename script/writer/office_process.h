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
  // Only sets the profile up and ends: a fresh profile's first start
  // restarts the office once, which a listener should not see.
  bool initialiseOnly = false;
  // Ends with this process, however it ends (a test program that crashes
  // leaves no office behind); otherwise it outlives the station.
  bool endsWithThisProcess = false;
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
  // True while any process of the group it started lives (soffice leaves
  // the office running under it); reaps the child itself once it has ended.
  bool running();
  // Waits up to `seconds` for the whole group to end.
  bool waitForEnd(double seconds);
  // Ends the group: TERM, then KILL after `graceSeconds`.
  void stop(double graceSeconds = 10);

 private:
  void reap();
  void watchOver(pid_t group);
  pid_t pid_ = -1;    // the child, while not reaped
  pid_t group_ = -1;  // the group it leads
};

}  // namespace quillon
