// Helpers of the reliability tests: quillon-cli runs, sparse files, a
// folder the station may not write to, and a disk that fills up.
#pragma once

#include <functional>
#include <string>

namespace quillon::testing {

struct CliResult {
  int code = -1;
  std::string err;
};

// quillon-cli with `args` (already quoted as needed). `prefix` runs in the
// shell before it (ulimit and the like); `wrapper` is a command it runs under.
CliResult runCli(const std::string& dir, const std::string& args, const std::string& prefix = "",
                 const std::string& wrapper = "");
// The wrapper that runs quillon-cli without root's right to write anywhere.
std::string unprivilegedWrapper();

// A file of `size` bytes that takes no room on disk but `head` at its start
// and `tail` at its end.
void makeSparseFile(const std::string& path, long long size, const std::string& head = "",
                    const std::string& tail = "");

// Runs `body` unable to create files in `dir`: the folder is made read-only
// (or given `mode`), and when the tests run as root (who ignores that)
// `body` runs in a child process under an unprivileged user. The folder is
// writable again after.
bool withReadOnlyFolder(const std::string& dir, const std::function<bool()>& body, unsigned mode = 0555);

// Runs `body` with files limited to `bytes`, as a disk with that much room
// left: a longer write fails with EFBIG instead of the signal.
bool withFullDisk(long long bytes, const std::function<bool()>& body);

// The shell quoting of one word.
std::string quoted(const std::string& word);

}  // namespace quillon::testing
