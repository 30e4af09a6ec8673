#pragma once
// The few operating-system services the Qt-free core needs. Everything POSIX- or Win32-specific
// lives in Platform.cpp, so the rest of the core stays portable.

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

// The largest resident memory of this process so far, in KiB; -1 where the system does not say.
long long PeakResidentKiB();

}  // namespace norvane
