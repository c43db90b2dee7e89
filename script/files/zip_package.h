// The zip container of .docx and .odt files, held whole in memory: every
// entry is read at load (within limits that stop a zip bomb) and written
// again at save, so parts the station does not understand survive as they
// were.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quillon::docfiles {

struct ZipEntry {
  std::string name;
  std::string data;
  bool stored = false;  // kept uncompressed (the ODF mimetype must be)
};

struct ZipLimits {
  uint64_t maxTotalBytes = 512ull << 20;  // all entries uncompressed
  uint64_t maxEntries = 20000;
  // Above this size an entry may not expand more than maxRatio times; XML
  // compresses well, but not a thousandfold.
  uint64_t ratioFloorBytes = 1ull << 20;
  uint64_t maxRatio = 1000;
};

class ZipPackage {
 public:
  // False with the problem in words ("not a zip archive", ...).
  bool read(std::string_view bytes, std::string& problem, const ZipLimits& limits = {});
  bool write(std::string& out, std::string& problem) const;

  const ZipEntry* find(std::string_view name) const;
  bool has(std::string_view name) const { return find(name) != nullptr; }
  // Replaces an entry's content, or adds the entry at the end.
  void put(const std::string& name, std::string data, bool stored = false);
  void putFirst(const std::string& name, std::string data, bool stored);

  std::vector<ZipEntry> entries;
};

}  // namespace quillon::docfiles
