// Version check and signed self-update against a local update server and a temporary program
// folder.
#include <gtest/gtest.h>
#include <sodium.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <cstdlib>
#include <string>

#include "LocalHttpServer.hpp"
#include "support/Unprivileged.hpp"
#include "services/Internet.hpp"
#include "services/SelfUpdate.hpp"
#include "services/ServerAddresses.hpp"
#include "services/UpdateInfo.hpp"
#include "services/UpdateSignature.hpp"

namespace norvane {
namespace {

const auto* const kQtEnvironment = ::testing::AddGlobalTestEnvironment(new test::QtEnvironment);

std::string FileText(const QString& path) {
  QFile f(path);
  return f.open(QIODevice::ReadOnly) ? f.readAll().toStdString() : std::string("<missing>");
}

void WriteFile(const QString& path, const std::string& text) {
  QFile f(path);
  ASSERT_TRUE(f.open(QIODevice::WriteOnly));
  f.write(text.data(), static_cast<qint64>(text.size()));
}

class SelfUpdateTest : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_GE(sodium_init(), 0);
    crypto_sign_keypair(publicKey_.data(), secretKey_);
    norvane::testing::SetTrustedUpdateKey(publicKey_);
    norvane::testing::SetConnectionState(true);
    norvane::testing::SetStallTimeout(std::chrono::milliseconds(400));

    auto& r = server_.Routes();
    r.Get("/update/NorvaneVerInfo.txt", [this](const httplib::Request&, httplib::Response& res) {
      res.set_content(version_, "text/plain");
    });
    r.Get("/update/Norvane.new", [this](const httplib::Request&, httplib::Response& res) {
      res.set_content(newExecutable_, "application/octet-stream");
    });
    r.Get("/update/Norvane.new.sig", [this](const httplib::Request&, httplib::Response& res) {
      if (signature_.empty()) {
        res.status = 404;
        return;
      }
      res.set_content(signature_, "application/octet-stream");
    });
    setenv(kUpdateUrlVariable, (server_.Start() + "/update").c_str(), 1);

    ASSERT_TRUE(folder_.isValid());
    executable_ = folder_.filePath("norvane");
    WriteFile(executable_, "old executable");
    QFile::setPermissions(executable_, QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner |
                                           QFileDevice::ReadGroup | QFileDevice::ExeGroup);
  }
  void TearDown() override {
    server_.Stop();
    unsetenv(kUpdateUrlVariable);
    norvane::testing::SetTrustedUpdateKey(std::nullopt);
    norvane::testing::SetConnectionState(std::nullopt);
    norvane::testing::SetStallTimeout(std::chrono::seconds(20));
  }

  std::string Sign(const std::string& data, const unsigned char* secretKey) const {
    std::string sig(crypto_sign_BYTES, '\0');
    crypto_sign_detached(reinterpret_cast<unsigned char*>(sig.data()), nullptr,
                         reinterpret_cast<const unsigned char*>(data.data()), data.size(), secretKey);
    return sig;
  }
  QString Beside(const char* name) const { return folder_.filePath(QString::fromLatin1(name)); }
  QStringList Files() const { return QDir(folder_.path()).entryList(QDir::Files, QDir::Name); }

  UpdatePublicKey publicKey_{};
  unsigned char secretKey_[crypto_sign_SECRETKEYBYTES]{};
  std::string version_ = "2.33";
  std::string newExecutable_ = "new executable " + std::string(100000, 'N');
  std::string signature_;
  test::LocalHttpServer server_;
  QTemporaryDir folder_;
  QString executable_;
};

TEST_F(SelfUpdateTest, VersionFile) {
  struct Row {
    std::string file;
    int16_t version;
    const char* shown;
  };
  const Row rows[] = {
      {"2.32", 232, "No update available"},
      {"2.31", 231, "No update available"},
      {"2.33", 233, "A new version is available"},
      {"10.01", 0, "Unable to retrieve version data"},
      {"", 0, "Unable to retrieve version data"},
      {std::string(5000, '2'), 0, "Unable to retrieve version data"},  // above the 1 KiB limit
  };
  for (const Row& r : rows) {
    version_ = r.file;
    const int16_t v = GetServerVersion();
    EXPECT_EQ(v, r.version) << r.file;
    EXPECT_STREQ(VerdictText(JudgeServerVersion(v)), r.shown) << r.file;
  }
  server_.Stop();
  EXPECT_EQ(GetServerVersion(), 0);
}

TEST_F(SelfUpdateTest, GoodSignatureReplacesTheExecutable) {
  signature_ = Sign(newExecutable_, secretKey_);
  const QFileDevice::Permissions permissions = QFile::permissions(executable_);
  ASSERT_TRUE(CanReplaceExecutable(executable_));
  EXPECT_TRUE(DoSelfUpdate(executable_));
  EXPECT_EQ(FileText(executable_), newExecutable_);
  EXPECT_EQ(QFile::permissions(executable_), permissions);
  EXPECT_EQ(FileText(Beside(kBackupExecutableName)), "old executable");
  EXPECT_EQ(Files(), QStringList({"Norvane.bak", "norvane"}));

  // The next start removes the backup.
  RemoveUpdateBackup(executable_);
  EXPECT_EQ(Files(), QStringList({"norvane"}));
}

TEST_F(SelfUpdateTest, BadOrMissingSignatureChangesNothing) {
  unsigned char otherPk[crypto_sign_PUBLICKEYBYTES], otherSk[crypto_sign_SECRETKEYBYTES];
  crypto_sign_keypair(otherPk, otherSk);
  std::string flipped = Sign(newExecutable_, secretKey_);
  flipped[0] ^= 1;
  const std::string cases[] = {
      "",                                          // no signature on the server
      Sign(newExecutable_, otherSk),               // signed by someone else
      Sign(newExecutable_ + "x", secretKey_),      // signature of another file
      flipped,                                     // damaged signature
      Sign(newExecutable_, secretKey_) + "\n",     // not a bare 64-byte signature
  };
  for (const std::string& sig : cases) {
    signature_ = sig;
    EXPECT_FALSE(DoSelfUpdate(executable_));
    EXPECT_EQ(FileText(executable_), "old executable");
    EXPECT_EQ(Files(), QStringList({"norvane"}));
  }
}

TEST_F(SelfUpdateTest, FailedDownloadChangesNothing) {
  signature_ = Sign(newExecutable_, secretKey_);
  server_.Stop();
  EXPECT_FALSE(DoSelfUpdate(executable_));
  norvane::testing::SetConnectionState(false);
  EXPECT_FALSE(DoSelfUpdate(executable_));
  EXPECT_EQ(FileText(executable_), "old executable");
  EXPECT_EQ(Files(), QStringList({"norvane"}));
}

TEST_F(SelfUpdateTest, ReadOnlyProgramFolderIsLeftToThePackageManager) {
  if (!norvane::test::RunsUnprivileged()) return;
#if defined(Q_OS_LINUX)
  EXPECT_FALSE(CanReplaceExecutable("/usr/bin/env"));  // a distribution's file, even for root
#endif
  QFile::setPermissions(folder_.path(), QFileDevice::ReadOwner | QFileDevice::ExeOwner);
  EXPECT_FALSE(CanReplaceExecutable(executable_));
  QFile::setPermissions(folder_.path(), QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
  EXPECT_TRUE(CanReplaceExecutable(executable_));
  EXPECT_FALSE(CanReplaceExecutable(folder_.filePath("missing")));
}

TEST_F(SelfUpdateTest, AutomaticCheckOncePerDay) {
  std::string previous = "13/03/2025";
  EXPECT_EQ(AutomaticUpdateCheck(1, previous, "14/03/2025"), std::optional<int16_t>(233));
  EXPECT_EQ(previous, "14/03/2025");
  EXPECT_EQ(server_.Requests(), 1);
  // Second start on the same day: no request.
  EXPECT_EQ(AutomaticUpdateCheck(1, previous, "14/03/2025"), std::nullopt);
  EXPECT_EQ(server_.Requests(), 1);
  // Switched off: no request either.
  EXPECT_EQ(AutomaticUpdateCheck(0, previous, "15/03/2025"), std::nullopt);
  EXPECT_EQ(server_.Requests(), 1);
  // Same version on the server: checked (the date is stored), nothing offered.
  version_ = "2.32";
  EXPECT_EQ(AutomaticUpdateCheck(1, previous, "15/03/2025"), std::nullopt);
  EXPECT_EQ(previous, "15/03/2025");
  EXPECT_EQ(server_.Requests(), 2);
}

}  // namespace
}  // namespace norvane
