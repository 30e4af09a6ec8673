#include "online/SelfUpdate.hpp"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QPointer>

#include <filesystem>
#include <memory>
#include <string>

#include "app/Platform.hpp"
#include "online/Internet.hpp"
#include "online/NetTexts.hpp"
#include "online/ServerAddresses.hpp"
#include "online/UpdateManifest.hpp"
#include "online/UpdateSignature.hpp"

namespace norvane {

namespace fs = std::filesystem;

namespace {

std::string ServerFile(const char* name) { return UpdateBaseUrl() + "/" + name; }

QString Beside(const QString& executable, const char* name) {
  return QFileInfo(executable).absoluteDir().filePath(QString::fromLatin1(name));
}

fs::path Path(const QString& file) { return fs::path(QFile::encodeName(file).toStdString()); }

// One small file fetched without blocking; `done` gets its code and bytes.
void FetchText(QObject* owner, const char* name, int64_t limit, std::function<void(int, std::string)> done) {
  auto* transfer = new UrlTransfer(owner);
  auto text = std::make_shared<std::string>();
  QObject::connect(transfer, &UrlTransfer::Finished, owner, [transfer, text, done](int code) {
    transfer->deleteLater();
    done(code, std::move(*text));
  });
  transfer->Start(ServerFile(name), limit, [text](const char* data, int64_t size) {
    text->append(data, static_cast<size_t>(size));
    return true;
  });
}

UpdateOffer OfferFrom(const std::optional<UpdateManifest>& manifest) {
  switch (JudgeManifest(manifest, OwnVersionNumber(), UpdatePlatformTag())) {
    case ManifestVerdict::Invalid:
      return {ServerVersionVerdict::NoData, 0};
    case ManifestVerdict::OtherPlatform:
    case ManifestVerdict::NotNewer:
      return {ServerVersionVerdict::NoUpdate, manifest->version};
    case ManifestVerdict::Install:
      return {ServerVersionVerdict::NewVersion, manifest->version};
  }
  return {};
}

std::optional<UpdateManifest> FetchSignedManifest(TransferCancel* cancel) {
  std::string text, signature;
  int16_t code = 0;
  ReadUrl(ServerFile(kManifestFileName), text, code, kManifestFileLimit, {kTransferDeadline, cancel});
  if (code != kNetOk) return std::nullopt;
  ReadUrl(ServerFile(kManifestSignatureName), signature, code, kSignatureFileLimit, {kTransferDeadline, cancel});
  if (code != kNetOk) return std::nullopt;
  return ReadSignedManifest(text, signature, TrustedUpdateKey());
}

// Downloads the program file that `manifest` names into `file` (created exclusively at `path`),
// hashing the bytes as they are written; true when size and hash match the manifest.
bool DownloadVerified(const UpdateManifest& manifest, ExclusiveFile& file, TransferCancel* cancel) {
  Sha256 hash;
  int64_t written = 0;
  const int code = FetchUrl(ServerFile(kNewExecutableName), manifest.size,
                            [&](const char* data, int64_t size) {
                              hash.Update(data, static_cast<size_t>(size));
                              written += size;
                              return file.Write(data, static_cast<size_t>(size));
                            },
                            /*requireSuccess=*/true, {DownloadDeadline(manifest.size), cancel});
  return code == kNetOk && written == manifest.size && hash.Final() == manifest.sha256;
}

}  // namespace

int16_t GetServerVersion() {
  std::string text;
  int16_t code = 0;
  ReadUrl(ServerFile(kVersionFileName), text, code, kVersionFileLimit);
  return code == 0 ? ParseVersionText(text) : 0;
}

void StartUpdateCheck(QObject* owner, std::function<void(const UpdateOffer&)> done) {
  FetchText(owner, kVersionFileName, kVersionFileLimit, [owner, done](int code, std::string text) {
    const int16_t version = code == kNetOk ? ParseVersionText(text) : 0;
    const ServerVersionVerdict verdict = JudgeServerVersion(version);
    // The version file only says whether to look further; it never decides what is offered.
    if (verdict != ServerVersionVerdict::NewVersion) return done({verdict, version});
    FetchText(owner, kManifestFileName, kManifestFileLimit, [owner, done](int code, std::string manifest) {
      if (code != kNetOk) return done({});
      FetchText(owner, kManifestSignatureName, kSignatureFileLimit,
                [done, manifest = std::move(manifest)](int code, std::string signature) {
                  done(OfferFrom(code == kNetOk ? ReadSignedManifest(manifest, signature, TrustedUpdateKey())
                                                : std::nullopt));
                });
    });
  });
}

UpdateOffer CheckForUpdate() {
  UpdateOffer offer;
  WaitUntilDone([&offer](QObject* loop, const std::function<void()>& done) {
    StartUpdateCheck(loop, [&offer, done](const UpdateOffer& o) {
      offer = o;
      done();
    });
  });
  return offer;
}

std::optional<int16_t> AutomaticUpdateCheck(int16_t autoUpdateCheck, std::string& previousDate,
                                            const std::string& today, const std::function<void()>& recordDay) {
  if (!AutoUpdateCheckDue(autoUpdateCheck, previousDate, today, InternetConnected())) return std::nullopt;
  previousDate = today;
  if (recordDay) recordDay();
  const UpdateOffer offer = CheckForUpdate();
  if (offer.verdict != ServerVersionVerdict::NewVersion) return std::nullopt;
  return offer.version;
}

namespace {
QString& ExecutableOverride() {
  static QString path;
  return path;
}
}  // namespace

QString RunningExecutablePath() {
  return ExecutableOverride().isEmpty() ? QCoreApplication::applicationFilePath() : ExecutableOverride();
}

namespace testing {
void SetRunningExecutable(const QString& path) { ExecutableOverride() = path; }
}  // namespace testing

bool CanReplaceExecutable(const QString& executable) {
  const QFileInfo exe(executable);
#if defined(Q_OS_LINUX)
  // Files under /usr (outside /usr/local) belong to the distribution's package manager, even
  // for root, who may write there.
  const QString path = exe.absoluteFilePath();
  if (path.startsWith(QLatin1String("/usr/")) && !path.startsWith(QLatin1String("/usr/local/"))) return false;
#endif
  return exe.exists() && QFileInfo(exe.absolutePath()).isWritable();
}

bool DoSelfUpdate(const QString& executable, TransferCancel* cancel) {
  if (!InternetConnected()) return false;
  const QString exeFile = QFileInfo(executable).absoluteFilePath();
  const QString newFile = Beside(exeFile, kNewExecutableName);
  const QString backup = Beside(exeFile, kBackupExecutableName);
  const fs::path exe = Path(exeFile), fresh = Path(newFile), bak = Path(backup);

  FolderLock lock;
  if (!lock.TryLock(exe.parent_path())) return false;  // another program is updating this folder
  DeleteIfExists(backup);
  DeleteIfExists(newFile);

  const std::optional<UpdateManifest> manifest = FetchSignedManifest(cancel);
  if (JudgeManifest(manifest, OwnVersionNumber(), UpdatePlatformTag()) != ManifestVerdict::Install) return false;

  ExclusiveFile file;
  if (!file.Create(fresh)) return false;
  bool backedUp = false;
  const bool ready = DownloadVerified(*manifest, file, cancel) && file.Finish(exe) &&
                     !(cancel && cancel->Cancelled()) && (backedUp = LinkOrCopyFile(exe, bak)) && file.IsAt(fresh) &&
                     ReplaceFileAtomic(fresh, exe);
  if (!ready) {
    file.Close();
    DeleteIfExists(newFile);
    if (backedUp) DeleteIfExists(backup);
    return false;
  }
  if (!file.IsAt(exe)) {
    // Another file took the name between the check and the rename: put the old program back.
    ReplaceFileAtomic(bak, exe);
    return false;
  }
  return true;
}

void RemoveUpdateBackup(const QString& executable) { DeleteIfExists(Beside(executable, kBackupExecutableName)); }

}  // namespace norvane
