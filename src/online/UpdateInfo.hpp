#pragma once
// The update check: version numbers, the version file, the decisions and the texts shown.

#include <cstdint>
#include <string>
#include <string_view>

namespace norvane {

// major * 100 + minor of the running program (2.32 gives 232).
int16_t OwnVersionNumber();

// The version file holds exactly four characters such as "2.33": the major digit, any
// separator, two minor digits. Anything else (another length, a non-digit where digits belong)
// counts as no data and gives 0.
int16_t ParseVersionText(std::string_view text);

// "2.33" for 233: the first digit, ".", the last two digits.
std::string VersionText(int16_t version);

enum class ServerVersionVerdict { NoData, NoUpdate, NewVersion };
ServerVersionVerdict JudgeServerVersion(int16_t server, int16_t own = OwnVersionNumber());

// The automatic check runs at most once a day: when it is enabled, the stored date text
// differs from today's and the system reports a connection.
bool AutoUpdateCheckDue(int16_t autoUpdateCheck, std::string_view previousDate, std::string_view today, bool connected);

// File names on the update server and beside the executable.
inline constexpr const char* kVersionFileName = "NorvaneVerInfo.txt";
inline constexpr const char* kNewExecutableName = "Norvane.new";
inline constexpr const char* kManifestFileName = "Norvane.manifest";
inline constexpr const char* kManifestSignatureName = "Norvane.manifest.sig";
inline constexpr const char* kBackupExecutableName = "Norvane.bak";

// Size limits of what the update check accepts.
inline constexpr int64_t kVersionFileLimit = 1024;
inline constexpr int64_t kManifestFileLimit = 4096;
inline constexpr int64_t kSignatureFileLimit = 1024;
inline constexpr int64_t kExecutableLimit = 200LL * 1024 * 1024;

namespace update_text {
inline constexpr const char* kChecking = "Checking..";
inline constexpr const char* kNoConnection = "No internet connection";
inline constexpr const char* kNoData = "Unable to retrieve version data";
inline constexpr const char* kNoUpdate = "No update available";
inline constexpr const char* kAvailable = "A new version is available";
inline constexpr const char* kInProgress = "Update in progress, please wait..";
inline constexpr const char* kCompleted = "Update completed..please restart";
inline constexpr const char* kFailed = "Norvane update has failed";
// Shown by the About box instead of the update button when the program folder is read-only.
inline constexpr const char* kPackageManaged = "Updates of this installation come through the system's package manager";
}  // namespace update_text

// What the About box shows for a verdict: "Unable to retrieve version data",
// "No update available" or "A new version is available".
const char* VerdictText(ServerVersionVerdict verdict);

// "A new Norvane version (2.33) is available" CR LF "Would you like to update it now ?"
std::string UpdateQuestionText(int16_t version);

}  // namespace norvane
