#include "script/files/zip_package.h"

#include <ctime>
#include <memory>
#include <zip.h>

namespace quillon::docfiles {

namespace {

// What went wrong, in words; `entry` names the damaged entry when known.
std::string zipProblem(int code, const std::string& entry = {}) {
  std::string at = entry.empty() ? std::string() : " at " + entry;
  switch (code) {
    case ZIP_ER_NOZIP: return "not a zip archive";
    case ZIP_ER_INCONS: return "the zip archive is inconsistent (damaged or truncated)";
    case ZIP_ER_CRC: return "the zip archive is damaged" + at + " (checksum error)";
    case ZIP_ER_ZLIB: return "the zip archive is damaged" + at + " (bad compressed data)";
    case ZIP_ER_COMPNOTSUPP: return "the zip archive uses an unsupported compression method" + at;
    case ZIP_ER_ENCRNOTSUPP:
    case ZIP_ER_NOPASSWD: return "the zip archive is encrypted";
    case ZIP_ER_MEMORY: return "not enough memory to read the zip archive";
    default: {
      zip_error_t e;
      zip_error_init_with_code(&e, code);
      std::string s = "the zip archive is damaged" + at + " (" + zip_error_strerror(&e) + ")";
      zip_error_fini(&e);
      return s;
    }
  }
}

struct ZipCloser {
  void operator()(zip_t* z) const { zip_discard(z); }
};

}  // namespace

const ZipEntry* ZipPackage::find(std::string_view name) const {
  for (const auto& e : entries)
    if (e.name == name) return &e;
  return nullptr;
}

void ZipPackage::put(const std::string& name, std::string data, bool stored) {
  for (auto& e : entries)
    if (e.name == name) {
      e.data = std::move(data);
      return;
    }
  entries.push_back({name, std::move(data), stored});
}

void ZipPackage::putFirst(const std::string& name, std::string data, bool stored) {
  for (auto it = entries.begin(); it != entries.end(); ++it)
    if (it->name == name) {
      entries.erase(it);
      break;
    }
  entries.insert(entries.begin(), {name, std::move(data), stored});
}

bool ZipPackage::read(std::string_view bytes, std::string& problem, const ZipLimits& limits) {
  entries.clear();
  zip_error_t err;
  zip_error_init(&err);
  zip_source_t* src = zip_source_buffer_create(bytes.data(), bytes.size(), 0, &err);
  if (!src) {
    problem = zipProblem(zip_error_code_zip(&err));
    zip_error_fini(&err);
    return false;
  }
  zip_t* raw = zip_open_from_source(src, ZIP_RDONLY | ZIP_CHECKCONS, &err);
  if (!raw) {
    problem = zipProblem(zip_error_code_zip(&err));
    zip_error_fini(&err);
    zip_source_free(src);
    return false;
  }
  zip_error_fini(&err);
  std::unique_ptr<zip_t, ZipCloser> za(raw);

  zip_int64_t count = zip_get_num_entries(raw, 0);
  if (count < 0 || static_cast<uint64_t>(count) > limits.maxEntries) {
    problem = "the zip archive holds too many entries";
    return false;
  }
  // Sizes from the directory first, so a bomb is refused before inflating.
  uint64_t total = 0;
  for (zip_int64_t i = 0; i < count; ++i) {
    zip_stat_t st;
    zip_stat_init(&st);
    if (zip_stat_index(raw, static_cast<zip_uint64_t>(i), 0, &st) != 0) {
      problem = zipProblem(zip_error_code_zip(zip_get_error(raw)));
      return false;
    }
    if ((st.valid & ZIP_STAT_ENCRYPTION_METHOD) && st.encryption_method != ZIP_EM_NONE) {
      problem = "the zip archive is encrypted";
      return false;
    }
    total += st.size;
    if (total > limits.maxTotalBytes) {
      problem = "the zip archive expands beyond " + std::to_string(limits.maxTotalBytes >> 20) + " MB (a zip bomb?)";
      return false;
    }
    if (st.size > limits.ratioFloorBytes && st.size / (st.comp_size ? st.comp_size : 1) > limits.maxRatio) {
      problem = std::string("the entry ") + st.name + " expands more than " + std::to_string(limits.maxRatio) +
                " times (a zip bomb?)";
      return false;
    }
  }
  std::vector<char> buf(1 << 16);
  for (zip_int64_t i = 0; i < count; ++i) {
    zip_stat_t st;
    zip_stat_init(&st);
    zip_stat_index(raw, static_cast<zip_uint64_t>(i), 0, &st);
    std::string name = st.name ? st.name : "";
    if (name.empty() || name.back() == '/') continue;  // folders carry nothing
    if (find(name)) continue;                            // a duplicate name: the first wins
    zip_file_t* f = zip_fopen_index(raw, static_cast<zip_uint64_t>(i), 0);
    if (!f) {
      problem = zipProblem(zip_error_code_zip(zip_get_error(raw)), name);
      return false;
    }
    ZipEntry e{name, {}, st.comp_method == ZIP_CM_STORE};
    e.data.reserve(static_cast<size_t>(st.size));
    for (;;) {
      zip_int64_t n = zip_fread(f, buf.data(), buf.size());
      if (n < 0) {
        problem = zipProblem(zip_error_code_zip(zip_file_get_error(f)), name);
        zip_fclose(f);
        return false;
      }
      if (n == 0) break;
      // The directory's size is checked, but never trusted beyond it.
      if (e.data.size() + static_cast<size_t>(n) > st.size) {
        problem = "the entry " + name + " is larger than the archive says (damaged, or a zip bomb)";
        zip_fclose(f);
        return false;
      }
      e.data.append(buf.data(), static_cast<size_t>(n));
    }
    zip_fclose(f);
    entries.push_back(std::move(e));
  }
  return true;
}

bool ZipPackage::write(std::string& out, std::string& problem) const {
  zip_error_t err;
  zip_error_init(&err);
  zip_source_t* src = zip_source_buffer_create(nullptr, 0, 0, &err);
  if (!src) {
    problem = "cannot build the zip archive";
    zip_error_fini(&err);
    return false;
  }
  zip_t* za = zip_open_from_source(src, ZIP_TRUNCATE, &err);
  zip_error_fini(&err);
  if (!za) {
    zip_source_free(src);
    problem = "cannot build the zip archive";
    return false;
  }
  zip_source_keep(src);  // it holds the archive after zip_close
  auto fail = [&](const std::string& what) {
    problem = what + ": " + zip_strerror(za);
    zip_discard(za);
    zip_source_free(src);
    return false;
  };
  time_t now = time(nullptr);
  for (const auto& e : entries) {
    zip_source_t* s = zip_source_buffer(za, e.data.data(), e.data.size(), 0);
    if (!s) return fail("cannot add " + e.name);
    zip_int64_t idx = zip_file_add(za, e.name.c_str(), s, ZIP_FL_ENC_UTF_8);
    if (idx < 0) {
      zip_source_free(s);
      return fail("cannot add " + e.name);
    }
    zip_set_file_compression(za, static_cast<zip_uint64_t>(idx), e.stored ? ZIP_CM_STORE : ZIP_CM_DEFLATE, 0);
    zip_file_set_mtime(za, static_cast<zip_uint64_t>(idx), now, 0);
  }
  if (zip_close(za) != 0) return fail("cannot build the zip archive");

  bool ok = zip_source_open(src) == 0;
  zip_int64_t size = -1;
  if (ok && zip_source_seek(src, 0, SEEK_END) == 0) size = zip_source_tell(src);
  ok = ok && size >= 0 && zip_source_seek(src, 0, SEEK_SET) == 0;
  if (ok) {
    out.assign(static_cast<size_t>(size), '\0');
    ok = zip_source_read(src, out.data(), static_cast<zip_uint64_t>(size)) == size;
  }
  zip_source_close(src);
  zip_source_free(src);
  if (!ok) problem = "cannot read back the zip archive built in memory";
  return ok;
}

}  // namespace quillon::docfiles
