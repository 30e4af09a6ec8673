#pragma once
// Version check and replacement of the running executable by a new one that a signed manifest
// names (UpdateManifest.hpp).
//
// The server folder (NORVANE_UPDATE_URL) holds NorvaneVerInfo.txt, Norvane.new, Norvane.manifest
// and its Ed25519 signature Norvane.manifest.sig. The version file only tells whether to look
// further; what is offered and installed is decided by the manifest alone: a good signature, this
// program's platform, a version above its own, and then the program file's size and SHA-256.
// The new file is written by this process alone (created exclusively, hashed while written), the
// running file gets a second name Norvane.bak, and one rename puts the new file in its place, so
// that no crash leaves the folder without a program. Norvane.bak is removed at the next start.

#include <QString>

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "online/UpdateInfo.hpp"

class QObject;

namespace norvane {

class TransferCancel;

// The version number on the server (major * 100 + minor), 0 when it cannot be read.
int16_t GetServerVersion();

// The outcome of a check: NewVersion only when a good signed manifest for this platform names a
// version above the running one; `version` is then the manifest's, never the version file's.
struct UpdateOffer {
  ServerVersionVerdict verdict = ServerVersionVerdict::NoData;
  int16_t version = 0;
};

// Runs the check without blocking: the version file, and when it names a newer version the
// manifest and its signature. `done` is called from the event loop, unless `owner` is destroyed
// first (the transfers then end silently).
void StartUpdateCheck(QObject* owner, std::function<void(const UpdateOffer&)> done);

// The same check, blocking while serving the event loop.
UpdateOffer CheckForUpdate();

// The daily automatic check at start-up. When it is due (AutoUpdateCheckDue), stores `today`
// in `previousDate` and calls `recordDay` (which saves it) before asking the server, so that a
// program killed during the check does not check again that day; returns the offered version,
// nullopt when not due or nothing is offered.
std::optional<int16_t> AutomaticUpdateCheck(int16_t autoUpdateCheck, std::string& previousDate,
                                            const std::string& today, const std::function<void()>& recordDay = {});

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
// old one as Norvane.bak in the same folder. Holds a lock on the folder meanwhile, so that two
// programs (with different NORVANE_APP_DIR) never update the same folder at once. False, with
// the old executable untouched and no Norvane.new or Norvane.bak left behind, when there is no
// connection, the folder is being updated by another program, the manifest is missing, badly
// signed, for another platform or not newer, the download fails, runs past its deadline, does
// not match the manifest's size and hash, or `cancel` was triggered.
bool DoSelfUpdate(const QString& executable = RunningExecutablePath(), TransferCancel* cancel = nullptr);

// Removes the Norvane.bak that an update left in the folder of `executable`.
void RemoveUpdateBackup(const QString& executable = RunningExecutablePath());

}  // namespace norvane
