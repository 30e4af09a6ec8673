#include "app/Platform.hpp"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <system_error>

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#include <share.h>
#include <sys/stat.h>
#else
#include <fcntl.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace norvane {
namespace fs = std::filesystem;

namespace {
int& WriteFault() {
  static int fault = 0;
  return fault;
}

bool Write(std::FILE* f, std::string_view bytes) {
  if (WriteFault() != 0) {
    errno = WriteFault();
    return false;
  }
  return std::fwrite(bytes.data(), 1, bytes.size(), f) == bytes.size();
}

bool FlushToDisk(std::FILE* f) {
  if (std::fflush(f) != 0) return false;
#ifdef _WIN32
  return _commit(_fileno(f)) == 0;
#else
  return ::fsync(fileno(f)) == 0;
#endif
}

// The rename itself reaches the disk only with its folder (POSIX); best effort.
void SyncFolder(const fs::path& dir) {
#ifndef _WIN32
  const int fd = ::open(dir.empty() ? "." : dir.c_str(), O_RDONLY | O_DIRECTORY);
  if (fd < 0) return;
  (void)::fsync(fd);
  ::close(fd);
#else
  (void)dir;
#endif
}

// Gives the new file the permissions and owner of the one it replaces (best effort: changing the
// owner needs privileges that a user rewriting their own file does not need).
void KeepModeAndOwner(std::FILE* f, const fs::path& file) {
#ifndef _WIN32
  struct stat st {};
  if (::stat(file.c_str(), &st) != 0) return;
  (void)::fchmod(fileno(f), st.st_mode & 07777);
  (void)::fchown(fileno(f), st.st_uid, st.st_gid);
#else
  (void)f;
  (void)file;
#endif
}

std::string Reason(int errnoValue) {
  return errnoValue ? std::string(": ") + std::strerror(errnoValue) : std::string();
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
  if (IsReadOnlyFile(file)) {
    if (error) *error = "cannot replace " + file.string() + ": the file is read-only";
    return false;
  }
  // A temporary file left by a crash is stale; removing it first also means the exclusive
  // create below never writes through a link someone put in its place.
  std::error_code ec;
  fs::remove(tmp, ec);
  errno = 0;
  std::FILE* f = std::fopen(tmp.string().c_str(), "wbx");
  if (!f) {
    const int why = errno;
    if (error) *error = "cannot create " + tmp.string() + Reason(why);
    return false;  // the name may belong to something else: leave it alone
  }
  KeepModeAndOwner(f, file);
  errno = 0;
  const bool written = Write(f, bytes);
  const bool flushed = written && FlushToDisk(f);
  const int why = errno;
  const bool closed = std::fclose(f) == 0;
  if (!written || !flushed || !closed) return fail("cannot write " + tmp.string() + Reason(why ? why : errno));
  fs::rename(tmp, file, ec);
  if (ec) return fail("cannot replace " + file.string() + ": " + ec.message());
  SyncFolder(file.parent_path());
  return true;
}

bool IsReadOnlyFile(const fs::path& file) {
  std::error_code ec;
  const fs::file_status st = fs::status(file, ec);
  if (ec || !fs::is_regular_file(st)) return false;
  const fs::perms write = fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write;
  if ((st.permissions() & write) == fs::perms::none) return true;
#ifndef _WIN32
  return ::access(file.c_str(), W_OK) != 0 && (errno == EACCES || errno == EROFS);
#else
  return false;
#endif
}

void GuardStandardStreams() {
#ifndef _WIN32
  for (int fd = 0; fd <= 2; ++fd) {
    if (::fcntl(fd, F_GETFD) != -1 || errno != EBADF) continue;
    const int opened = ::open("/dev/null", fd == 0 ? O_WRONLY : O_RDONLY);
    if (opened >= 0 && opened != fd) {
      ::dup2(opened, fd);
      ::close(opened);
    }
  }
#endif
}

namespace testing {
void SetWriteFault(int errnoValue) { WriteFault() = errnoValue; }
}  // namespace testing

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

std::string UpdatePlatformTag() {
#if defined(_WIN32)
  std::string os = "windows";
#elif defined(__APPLE__)
  std::string os = "macos";
#elif defined(__linux__)
  std::string os = "linux";
#elif defined(__FreeBSD__)
  std::string os = "freebsd";
#else
  std::string os = "unknown";
#endif
#if defined(__x86_64__) || defined(_M_X64)
  return os + "-x86_64";
#elif defined(__aarch64__) || defined(_M_ARM64)
  return os + "-arm64";
#elif defined(__i386__) || defined(_M_IX86)
  return os + "-i386";
#elif defined(__riscv) && __riscv_xlen == 64
  return os + "-riscv64";
#else
  return os + "-unknown";
#endif
}

bool ExclusiveFile::Create(const fs::path& path) {
  Close();
#ifdef _WIN32
  fd_ = ::_wopen(path.c_str(), _O_CREAT | _O_EXCL | _O_WRONLY | _O_BINARY, _S_IREAD | _S_IWRITE);
#else
  fd_ = ::open(path.c_str(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC | O_NOFOLLOW, 0600);
#endif
  return fd_ >= 0;
}

bool ExclusiveFile::Write(const char* data, std::size_t size) {
  while (fd_ >= 0 && size > 0) {
#ifdef _WIN32
    const int n = ::_write(fd_, data, static_cast<unsigned>(std::min<std::size_t>(size, 1u << 30)));
#else
    const ssize_t n = ::write(fd_, data, size);
    if (n < 0 && errno == EINTR) continue;
#endif
    if (n <= 0) return false;
    data += n;
    size -= static_cast<std::size_t>(n);
  }
  return fd_ >= 0;
}

bool ExclusiveFile::Finish(const fs::path& model) {
  if (fd_ < 0) return false;
#ifdef _WIN32
  (void)model;
  return ::_commit(fd_) == 0;
#else
  struct stat st {};
  return ::stat(model.c_str(), &st) == 0 && ::fchmod(fd_, st.st_mode & 07777) == 0 && ::fsync(fd_) == 0;
#endif
}

bool ExclusiveFile::IsAt(const fs::path& path) const {
  if (fd_ < 0) return false;
#ifdef _WIN32
  (void)path;
  return true;
#else
  struct stat mine {
  }, named{};
  return ::fstat(fd_, &mine) == 0 && ::lstat(path.c_str(), &named) == 0 && S_ISREG(named.st_mode) &&
         mine.st_dev == named.st_dev && mine.st_ino == named.st_ino;
#endif
}

void ExclusiveFile::Close() {
  if (fd_ < 0) return;
#ifdef _WIN32
  ::_close(fd_);
#else
  ::close(fd_);
#endif
  fd_ = -1;
}

bool LinkOrCopyFile(const fs::path& file, const fs::path& link) {
  std::error_code ec;
  fs::create_hard_link(file, link, ec);
  if (!ec) return true;
  return fs::copy_file(file, link, fs::copy_options::none, ec) && !ec;
}

bool ReplaceFileAtomic(const fs::path& from, const fs::path& to) {
  std::error_code ec;
  fs::rename(from, to, ec);  // rename(2) / MoveFileExW with MOVEFILE_REPLACE_EXISTING
  if (ec) return false;
  SyncFolder(to.parent_path());
  return true;
}

FolderLock::~FolderLock() {
#ifndef _WIN32
  if (fd_ >= 0) ::close(fd_);  // releases the lock
#else
  if (fd_ >= 0) ::_close(fd_);
#endif
}

bool FolderLock::TryLock(const fs::path& dir) {
  if (fd_ >= 0) return true;
#ifdef _WIN32
  // A folder cannot be opened as a file there: a lock file opened with no sharing stands in.
  return ::_wsopen_s(&fd_, (dir / L"Norvane.lock").c_str(), _O_CREAT | _O_RDWR, _SH_DENYRW, _S_IREAD | _S_IWRITE) == 0;
#else
  fd_ = ::open(dir.empty() ? "." : dir.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (fd_ < 0) return false;
  if (::flock(fd_, LOCK_EX | LOCK_NB) == 0) return true;
  ::close(fd_);
  fd_ = -1;
  return false;
#endif
}

}  // namespace norvane
