#include "services/SelfUpdate.hpp"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <string>

#include "services/Internet.hpp"
#include "services/ServerAddresses.hpp"
#include "services/UpdateInfo.hpp"
#include "services/UpdateSignature.hpp"

namespace norvane {

namespace {

std::string ServerFile(const char* name) { return UpdateBaseUrl() + "/" + name; }

QString Beside(const QString& executable, const char* name) {
  return QFileInfo(executable).absoluteDir().filePath(QString::fromLatin1(name));
}

bool SignatureVerifies(const QString& file, const std::string& signature) {
  QFile f(file);
  if (!f.open(QIODevice::ReadOnly)) return false;
  const qint64 size = f.size();
  if (size <= 0) return false;
  // Read, not memory-mapped: a mapping of a file that another process truncates meanwhile
  // faults on access. The download cap (200 MiB) bounds what is held here.
  const QByteArray all = f.readAll();
  return all.size() == size && VerifyUpdateSignature(reinterpret_cast<const unsigned char*>(all.constData()),
                                                     static_cast<std::size_t>(all.size()), signature,
                                                     TrustedUpdateKey());
}

}  // namespace

int16_t GetServerVersion() {
  std::string text;
  int16_t code = 0;
  ReadUrl(ServerFile(kVersionFileName), text, code, kVersionFileLimit);
  return code == 0 ? ParseVersionText(text) : 0;
}

std::optional<int16_t> AutomaticUpdateCheck(int16_t autoUpdateCheck, std::string& previousDate,
                                            const std::string& today) {
  if (!AutoUpdateCheckDue(autoUpdateCheck, previousDate, today, InternetConnected())) return std::nullopt;
  previousDate = today;
  const int16_t version = GetServerVersion();
  if (JudgeServerVersion(version) != ServerVersionVerdict::NewVersion) return std::nullopt;
  return version;
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

bool DoSelfUpdate(const QString& executable) {
  if (!InternetConnected()) return false;
  const QString newFile = Beside(executable, kNewExecutableName);
  const QString backup = Beside(executable, kBackupExecutableName);
  DeleteIfExists(backup);
  DeleteIfExists(newFile);
  if (!DownloadFile(ServerFile(kNewExecutableName), newFile, kExecutableLimit)) return false;

  std::string signature;
  int16_t code = 0;
  ReadUrl(ServerFile(kSignatureFileName), signature, code, kSignatureFileLimit);
  if (code != 0 || !SignatureVerifies(newFile, signature)) {
    DeleteIfExists(newFile);
    return false;
  }

  if (!QFile::setPermissions(newFile, QFile::permissions(executable)) || !QFile::rename(executable, backup)) {
    DeleteIfExists(newFile);
    return false;
  }
  if (!QFile::rename(newFile, executable)) {
    QFile::rename(backup, executable);  // put the running program back where it was
    DeleteIfExists(newFile);
    return false;
  }
  return true;
}

void RemoveUpdateBackup(const QString& executable) { DeleteIfExists(Beside(executable, kBackupExecutableName)); }

}  // namespace norvane
