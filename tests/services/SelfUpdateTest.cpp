// Version check and self-update by signed manifest against a local update server and a
// temporary program folder.
#include <gtest/gtest.h>
#include <sodium.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <cstdlib>
#include <functional>
#include <string>
#include <tuple>

#include "LocalHttpServer.hpp"
#include "app/Platform.hpp"
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
      res.set_content(served_, "application/octet-stream");
    });
    r.Get("/update/Norvane.manifest", [this](const httplib::Request&, httplib::Response& res) {
      res.set_content(manifest_, "text/plain");
    });
    r.Get("/update/Norvane.manifest.sig", [this](const httplib::Request&, httplib::Response& res) {
      if (signature_.empty()) res.status = 404;
      else res.set_content(signature_, "application/octet-stream");
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

  // Publishes `served` as Norvane.new with a manifest signed by the test key; `described` is the
  // file the manifest gives size and hash of.
  void Publish(int16_t version, const std::string& platform, const std::string& served, const std::string& described) {
    served_ = served;
    std::tie(manifest_, signature_) = test::SignedManifest(VersionText(version), platform, described, secretKey_);
  }
  void PublishGood() { Publish(Newer(), UpdatePlatformTag(), newExecutable_, newExecutable_); }
  static int16_t Newer() { return static_cast<int16_t>(OwnVersionNumber() + 1); }
  QString Beside(const char* name) const { return folder_.filePath(QString::fromLatin1(name)); }
  QStringList Files() const { return QDir(folder_.path()).entryList(QDir::Files, QDir::Name); }

  UpdatePublicKey publicKey_{};
  unsigned char secretKey_[crypto_sign_SECRETKEYBYTES]{};
  std::string version_ = "2.33";
  std::string newExecutable_ = "new executable " + std::string(100000, 'N');
  std::string served_, manifest_, signature_;
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

TEST_F(SelfUpdateTest, OffersOnlyWhatTheSignedManifestStates) {
  version_ = VersionText(Newer());
  struct Row {
    const char* what;
    std::function<void()> publish;
    ServerVersionVerdict verdict;
    int16_t version;
  };
  const Row rows[] = {
      {"good, newer than the version file says", [&] { Publish(Newer() + 5, UpdatePlatformTag(), "x", "x"); },
       ServerVersionVerdict::NewVersion, static_cast<int16_t>(Newer() + 5)},
      {"rollback", [&] { Publish(OwnVersionNumber(), UpdatePlatformTag(), "x", "x"); }, ServerVersionVerdict::NoUpdate,
       OwnVersionNumber()},
      {"other platform", [&] { Publish(Newer(), "plan9-mips", "x", "x"); }, ServerVersionVerdict::NoUpdate, Newer()},
      {"unsigned", [&] { PublishGood(), signature_.clear(); }, ServerVersionVerdict::NoData, 0},
  };
  for (const Row& r : rows) {
    r.publish();
    const UpdateOffer offer = CheckForUpdate();
    EXPECT_EQ(offer.verdict, r.verdict) << r.what;
    EXPECT_EQ(offer.version, r.version) << r.what;
  }
}

TEST_F(SelfUpdateTest, InstallsOnlyTheFileAGoodManifestNames) {
  unsigned char otherPk[crypto_sign_PUBLICKEYBYTES], otherSk[crypto_sign_SECRETKEYBYTES];
  crypto_sign_keypair(otherPk, otherSk);
  std::string swapped = newExecutable_;
  swapped[5000] ^= 1;
  const std::string& file = newExecutable_;
  struct Row {
    const char* what;
    std::function<void()> publish;
  };
  const Row rows[] = {
      {"older", [&] { Publish(OwnVersionNumber() - 1, UpdatePlatformTag(), file, file); }},
      {"same version", [&] { Publish(OwnVersionNumber(), UpdatePlatformTag(), file, file); }},
      {"other platform", [&] { Publish(Newer(), "windows-arm64", file, file); }},
      {"hash of another file", [&] { Publish(Newer(), UpdatePlatformTag(), file, swapped); }},
      {"file swapped on the server", [&] { Publish(Newer(), UpdatePlatformTag(), swapped, file); }},
      {"file longer than stated", [&] { Publish(Newer(), UpdatePlatformTag(), file + "x", file); }},
      {"unsigned manifest", [&] { PublishGood(), signature_.clear(); }},
      {"signed by someone else", [&] { PublishGood(), signature_ = test::SignedManifest(VersionText(Newer()), UpdatePlatformTag(), file, otherSk).second; }},
      {"manifest changed after signing", [&] { PublishGood(), manifest_[manifest_.find("version: ") + 9] = '9'; }},
  };
  for (const Row& r : rows) {
    r.publish();
    EXPECT_FALSE(DoSelfUpdate(executable_)) << r.what;
    EXPECT_EQ(FileText(executable_), "old executable") << r.what;
    EXPECT_EQ(Files(), QStringList({"norvane"})) << r.what;
  }

  // Another program updating the same folder holds its lock.
  PublishGood();
  {
    FolderLock other;
    ASSERT_TRUE(other.TryLock(folder_.path().toStdString()));
    EXPECT_FALSE(DoSelfUpdate(executable_));
    EXPECT_EQ(Files(), QStringList({"norvane"}));
  }

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

TEST_F(SelfUpdateTest, FailedDownloadChangesNothing) {
  PublishGood();
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
  PublishGood();
  version_ = VersionText(Newer());
  std::string previous = "13/03/2025";
  int recordedBeforeAsking = -1;
  const auto record = [&] { recordedBeforeAsking = previous == "14/03/2025" ? server_.Requests() : -1; };
  EXPECT_EQ(AutomaticUpdateCheck(1, previous, "14/03/2025", record), std::optional<int16_t>(Newer()));
  EXPECT_EQ(recordedBeforeAsking, 0);  // the day is saved before the server is asked
  EXPECT_EQ(server_.Requests(), 3);    // version file, manifest, signature
  // Second start on the same day: no request.
  EXPECT_EQ(AutomaticUpdateCheck(1, previous, "14/03/2025"), std::nullopt);
  EXPECT_EQ(server_.Requests(), 3);
  // Switched off: no request either.
  EXPECT_EQ(AutomaticUpdateCheck(0, previous, "15/03/2025"), std::nullopt);
  EXPECT_EQ(server_.Requests(), 3);
  // Same version on the server: checked (the date is stored), nothing offered.
  version_ = VersionText(OwnVersionNumber());
  EXPECT_EQ(AutomaticUpdateCheck(1, previous, "15/03/2025"), std::nullopt);
  EXPECT_EQ(previous, "15/03/2025");
  EXPECT_EQ(server_.Requests(), 4);
}

}  // namespace
}  // namespace norvane
