#pragma once
// Version check and replacement of the running executable by a signed new one.
//
// The server folder (NORVANE_UPDATE_URL) holds NorvaneVerInfo.txt, Norvane.new and its detached
// Ed25519 signature Norvane.new.sig. The new executable is downloaded beside the running one,
// verified against the built-in key, given the running file's permissions, and swapped in by two
// renames: a running executable may be renamed but not overwritten. Norvane.bak, the previous
// executable, is removed at the next start.

#include <QString>

#include <cstdint>
#include <optional>
#include <string>

namespace norvane {

// The version number on the server (major * 100 + minor), 0 when it cannot be read.
int16_t GetServerVersion();

// The daily automatic check at start-up. When it is due (AutoUpdateCheckDue), stores `today`
// in `previousDate` first, then asks the server; returns the server's version when it is newer
// than the running one, nullopt otherwise (not due, no data, no newer version).
std::optional<int16_t> AutomaticUpdateCheck(int16_t autoUpdateCheck, std::string& previousDate,
                                            const std::string& today);

// The running program's own file.
QString RunningExecutablePath();

namespace testing {
// Makes RunningExecutablePath() name another file (a copy in a temporary program folder);
// an empty path restores the real one.
void SetRunningExecutable(const QString& path);
}  // namespace testing

// True when the folder of `executable` lets this user rename files in it and, on Linux, the
// file is not part of the distribution (under /usr outside /usr/local); otherwise updates
// belong to the system's package manager.
bool CanReplaceExecutable(const QString& executable);

// Downloads, verifies and installs the new executable in place of `executable`, keeping the
// old one as Norvane.bak in the same folder. False, with the old executable untouched and no
// Norvane.new left behind, when there is no connection, the download fails, or the signature is
// missing or does not verify.
bool DoSelfUpdate(const QString& executable = RunningExecutablePath());

// Removes the Norvane.bak that an update left in the folder of `executable`.
void RemoveUpdateBackup(const QString& executable = RunningExecutablePath());

}  // namespace norvane
