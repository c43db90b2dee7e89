#include "core/atomic_file.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "core/ui.h"

namespace quillon {

namespace {

void setError(std::string* error, const std::string& what, const std::string& path, int err) {
  if (error) *error = what + " " + path + ": " + std::strerror(err);
}

WriteResult failure(const std::string& path, int err) { return {false, path, std::strerror(err)}; }

}  // namespace

WriteResult writeFile(const std::string& path, std::string_view bytes) {
  std::string dir = ".";
  auto slash = path.rfind('/');
  if (slash != std::string::npos) dir = slash == 0 ? "/" : path.substr(0, slash);
  std::string base = slash == std::string::npos ? path : path.substr(slash + 1);
  std::string tmpl = dir + "/." + base + ".tmpXXXXXX";
  int fd = mkstemp(tmpl.data());
  if (fd < 0) return failure(path, errno);
  // Keep the permissions of a file being replaced; a new one gets the usual.
  struct stat st {};
  if (stat(path.c_str(), &st) == 0) {
    fchmod(fd, st.st_mode & 07777);
  } else {
    mode_t mask = umask(0);
    umask(mask);
    fchmod(fd, 0666 & ~mask);
  }
  const char* p = bytes.data();
  size_t left = bytes.size();
  while (left > 0) {
    ssize_t n = ::write(fd, p, left);
    if (n < 0) {
      if (errno == EINTR) continue;
      int e = errno;
      ::close(fd);
      ::unlink(tmpl.c_str());
      return failure(path, e);
    }
    p += n;
    left -= static_cast<size_t>(n);
  }
  if (::fsync(fd) != 0 || ::close(fd) != 0) {
    int e = errno;
    ::unlink(tmpl.c_str());
    return failure(path, e);
  }
  if (::rename(tmpl.c_str(), path.c_str()) != 0) {
    int e = errno;
    ::unlink(tmpl.c_str());
    return failure(path, e);
  }
  return {true, path, {}};
}

void tellWriteFailure(UserInterface& ui, const WriteResult& result) {
  critical(ui, u"Error: Cannot write " + fromUtf8(result.path) + u"\r" + fromUtf8(result.reason));
}

WriteResult writeFileTelling(UserInterface& ui, const std::string& path, std::string_view bytes) {
  WriteResult r = writeFile(path, bytes);
  if (r.failed()) tellWriteFailure(ui, r);
  return r;
}

bool readWholeFile(const std::string& path, std::string& out, std::string* error, size_t maxBytes) {
  out.clear();
  // Without O_NONBLOCK the open of a named pipe would wait for a writer.
  int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  if (fd < 0) {
    setError(error, "cannot read", path, errno);
    return false;
  }
  struct stat st {};
  const int statError = fstat(fd, &st) != 0 ? errno : 0;
  if (statError || !S_ISREG(st.st_mode)) {
    int e = S_ISDIR(st.st_mode) ? EISDIR : statError;
    ::close(fd);
    if (error) *error = "cannot read " + path + ": " + (e ? std::strerror(e) : "not a regular file");
    return false;
  }
  fcntl(fd, F_SETFL, fcntl(fd, F_GETFL) & ~O_NONBLOCK);
  auto tooLarge = [&] {
    ::close(fd);
    out.clear();
    if (error) *error = "cannot read " + path + ": larger than " + std::to_string(maxBytes >> 20) + " MB";
    return false;
  };
  if (static_cast<unsigned long long>(st.st_size) > maxBytes) return tooLarge();
  char buf[65536];
  while (true) {
    ssize_t n = ::read(fd, buf, sizeof buf);
    if (n < 0) {
      if (errno == EINTR) continue;
      int e = errno;
      ::close(fd);
      setError(error, "cannot read", path, e);
      return false;
    }
    if (n == 0) break;
    // A file that grows while read, or a pipe, is held to the same bound.
    if (out.size() + static_cast<size_t>(n) > maxBytes) return tooLarge();
    out.append(buf, static_cast<size_t>(n));
  }
  ::close(fd);
  return true;
}

}  // namespace quillon
