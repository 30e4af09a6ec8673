#pragma once
// The few operating-system services the Qt-free core needs. Everything POSIX- or Win32-specific
// lives in Platform.cpp, so the rest of the core stays portable.

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>

namespace norvane {

// Replaces `file` with `bytes` so that a crash, a full disk or a write error never leaves a
// truncated file: the bytes go to a new temporary file beside it (file + ".tmp"; one left over by
// a crash is removed first), are flushed to disk, and the temporary file is renamed over the old
// one. On failure the old file is untouched, no temporary file remains and `error` says why,
// with the system's reason ("cannot write /x/Norvane.ini.tmp: No space left on device").
// A file that exists keeps its permissions and (where the system lets this process) its owner;
// a read-only one (IsReadOnlyFile) is not replaced: "cannot replace /x/Norvane.ini: the file is
// read-only".
bool WriteFileAtomic(const std::filesystem::path& file, std::string_view bytes, std::string* error);

// True when `file` exists and is protected against writing: no write permission bit is set (the
// owner's own protection, which root would otherwise ignore), or this process may not write it.
bool IsReadOnlyFile(const std::filesystem::path& file);

// Makes sure the standard streams 0, 1 and 2 are open. A closed one is opened on the null device
// in the opposite direction, so that its reads or writes still fail (and are reported) while no
// file the program opens can take its number and receive its output.
void GuardStandardStreams();

namespace testing {
// Makes the data writes of WriteFileAtomic fail with this errno value (ENOSPC: a full disk);
// 0 restores normal writing.
void SetWriteFault(int errnoValue);
}  // namespace testing

// True when a file can be created in `dir` (probed by creating and removing one).
bool IsDirectoryWritable(const std::filesystem::path& dir);

// The per-user configuration folder for Norvane ($XDG_CONFIG_HOME/norvane, ~/.config/norvane,
// %APPDATA%\Norvane).
std::filesystem::path UserConfigDir();

// The program folder used for Norvane.ini, Norvane.new and Norvane.bak: NORVANE_APP_DIR when set,
// otherwise the executable's folder when writable, otherwise UserConfigDir(). Created when
// missing. The text ends with the platform's separator.
std::string ResolveAppPath(const std::filesystem::path& executableDir);

// The platform an update must be built for: the system and the processor of this build, as
// "linux-x86_64", "windows-x86_64", "macos-arm64".
std::string UpdatePlatformTag();

// A file that this process alone created (O_CREAT | O_EXCL: never an existing file, nor a link
// planted under the name), readable and writable by its owner only until Finish, and written
// through its descriptor, so that the bytes checked while writing are the bytes in the file.
class ExclusiveFile {
 public:
  ExclusiveFile() = default;
  ExclusiveFile(const ExclusiveFile&) = delete;
  ExclusiveFile& operator=(const ExclusiveFile&) = delete;
  ~ExclusiveFile() { Close(); }

  // False when the name exists already or the file cannot be created.
  bool Create(const std::filesystem::path& path);
  bool Write(const char* data, std::size_t size);
  // Flushes the file to disk and gives it the permission bits of `model` (the program it replaces).
  bool Finish(const std::filesystem::path& model);
  // True while `path` names this very file (same device and inode), so that a rename of that name
  // moves the bytes that were checked. Always true where the system cannot tell.
  bool IsAt(const std::filesystem::path& path) const;
  void Close();

 private:
  int fd_ = -1;
};

// Gives `file` the second name `link` (a hard link), or makes `link` a copy of it where the file
// system has no hard links. `link` must not exist.
bool LinkOrCopyFile(const std::filesystem::path& file, const std::filesystem::path& link);

// Renames `from` over `to` in one step (rename(2): at no moment is `to` missing) and makes the
// rename durable.
bool ReplaceFileAtomic(const std::filesystem::path& from, const std::filesystem::path& to);

// An exclusive lock on a folder, held while the object lives (flock on the folder itself, so no
// lock file is left behind). Fails at once when another process, or another FolderLock of this
// one, holds it.
class FolderLock {
 public:
  FolderLock() = default;
  FolderLock(const FolderLock&) = delete;
  FolderLock& operator=(const FolderLock&) = delete;
  ~FolderLock();
  bool TryLock(const std::filesystem::path& dir);

 private:
  int fd_ = -1;
};

// The largest resident memory of this process so far, in KiB; -1 where the system does not say.
long long PeakResidentKiB();

}  // namespace norvane
