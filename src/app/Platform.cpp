#include "app/Platform.hpp"

#include <cstdio>
#include <cstdlib>
#include <system_error>

#ifdef _WIN32
#include <io.h>
#else
#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>
#endif

namespace norvane {
namespace fs = std::filesystem;

namespace {
bool FlushToDisk(std::FILE* f) {
  if (std::fflush(f) != 0) return false;
#ifdef _WIN32
  return _commit(_fileno(f)) == 0;
#else
  return ::fsync(fileno(f)) == 0;
#endif
}
}  // namespace

bool WriteFileAtomic(const fs::path& file, std::string_view bytes, std::string* error) {
  const fs::path tmp = fs::path(file).concat(".tmp");
  const auto fail = [&](const std::string& why) {
    if (error) *error = why;
    std::error_code ec;
    fs::remove(tmp, ec);
    return false;
  };
  std::FILE* f = std::fopen(tmp.string().c_str(), "wb");
  if (!f) return fail("cannot create " + tmp.string());
  const bool written = std::fwrite(bytes.data(), 1, bytes.size(), f) == bytes.size();
  const bool flushed = written && FlushToDisk(f);
  const bool closed = std::fclose(f) == 0;
  if (!written || !flushed || !closed) return fail("cannot write " + tmp.string());
  std::error_code ec;
  fs::rename(tmp, file, ec);
  if (ec) return fail("cannot replace " + file.string() + ": " + ec.message());
  return true;
}

bool IsDirectoryWritable(const fs::path& dir) {
  std::error_code ec;
  if (!fs::is_directory(dir, ec)) return false;
  const fs::path probe = dir / ".norvane-write-probe";
  std::FILE* f = std::fopen(probe.string().c_str(), "wb");
  if (!f) return false;
  std::fclose(f);
  fs::remove(probe, ec);
  return true;
}

fs::path UserConfigDir() {
#ifdef _WIN32
  if (const char* appData = std::getenv("APPDATA")) return fs::path(appData) / "Norvane";
  return fs::temp_directory_path() / "Norvane";
#else
  if (const char* xdg = std::getenv("XDG_CONFIG_HOME"); xdg && *xdg) return fs::path(xdg) / "norvane";
  if (const char* home = std::getenv("HOME"); home && *home) return fs::path(home) / ".config" / "norvane";
  return fs::temp_directory_path() / "norvane";
#endif
}

std::string ResolveAppPath(const fs::path& executableDir) {
  fs::path dir;
  std::error_code ec;
  if (const char* env = std::getenv("NORVANE_APP_DIR"); env && *env) {
    dir = env;
    fs::create_directories(dir, ec);
  } else if (IsDirectoryWritable(executableDir)) {
    dir = executableDir;
  } else {
    dir = UserConfigDir();
    fs::create_directories(dir, ec);
  }
  std::string s = dir.string();
  if (s.empty() || s.back() != static_cast<char>(fs::path::preferred_separator))
    s.push_back(static_cast<char>(fs::path::preferred_separator));
  return s;
}

long long PeakResidentKiB() {
#ifdef _WIN32
  return -1;
#else
  rusage usage{};
  if (::getrusage(RUSAGE_SELF, &usage) != 0) return -1;
#ifdef __APPLE__
  return usage.ru_maxrss / 1024;  // bytes there, KiB elsewhere
#else
  return usage.ru_maxrss;
#endif
#endif
}

}  // namespace norvane
