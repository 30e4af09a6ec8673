// Version check and self-update by signed manifest against a local update server and a
// temporary program folder.
#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "app/Platform.hpp"
#include "online/Internet.hpp"
#include "online/SelfUpdate.hpp"
#include "support/LocalHttpServer.hpp"
#include "support/Unprivileged.hpp"

namespace norvane {
namespace {

const auto* const kQtEnvironment = ::testing::AddGlobalTestEnvironment(new test::QtEnvironment);

const int16_t kOwn = OwnVersionNumber(), kNewer = int16_t(kOwn + 1);

class SelfUpdateTest : public ::testing::Test {
 protected:
  void SetUp() override {
    norvane::testing::SetConnectionState(true);
    norvane::testing::SetStallTimeout(std::chrono::milliseconds(400));
    site_.version = VersionText(kNewer);
    QFile::setPermissions(site_.executable, QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner |
                                                QFileDevice::ReadGroup | QFileDevice::ExeGroup);
  }
  void TearDown() override {
    norvane::testing::SetConnectionState(std::nullopt);
    norvane::testing::SetStallTimeout(std::chrono::seconds(20));
  }
  void Publish(int16_t v, const std::string& platform = UpdatePlatformTag()) {
    site_.Publish(v, platform, file_, file_);
  }
  bool Update() { return DoSelfUpdate(site_.executable); }

  test::UpdateSite site_;
  const std::string file_ = "new executable " + std::string(100000, 'N');
};

TEST_F(SelfUpdateTest, VersionFile) {
  const std::pair<std::string, int16_t> rows[] = {
      {VersionText(kNewer), kNewer}, {"10.01", 0}, {std::string(5000, '2'), 0}};  // above the 1 KiB limit
  for (const auto& [file, version] : rows) {
    site_.version = file;
    EXPECT_EQ(GetServerVersion(), version) << file;
  }
  site_.server.Stop();
  EXPECT_EQ(GetServerVersion(), 0);
}

TEST_F(SelfUpdateTest, OffersOnlyWhatTheSignedManifestStates) {
  struct Row {
    const char* what;
    std::function<void()> publish;
    ServerVersionVerdict verdict;
    int16_t version;
  };
  const Row rows[] = {
      {"good, newer than the version file says", [&] { Publish(kNewer + 5); }, ServerVersionVerdict::NewVersion,
       int16_t(kNewer + 5)},
      {"rollback", [&] { Publish(kOwn); }, ServerVersionVerdict::NoUpdate, kOwn},
      {"other platform", [&] { Publish(kNewer, "plan9-mips"); }, ServerVersionVerdict::NoUpdate, kNewer},
      {"unsigned", [&] { Publish(kNewer), site_.signature.clear(); }, ServerVersionVerdict::NoData, 0},
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
  std::string swapped = file_;
  swapped[5000] ^= 1;
  const auto tag = UpdatePlatformTag();
  const std::pair<const char*, std::function<void()>> rows[] = {
      {"older", [&] { Publish(kOwn - 1); }},
      {"same version", [&] { Publish(kOwn); }},
      {"other platform", [&] { Publish(kNewer, "windows-arm64"); }},
      {"hash of another file", [&] { site_.Publish(kNewer, tag, file_, swapped); }},
      {"file swapped on the server", [&] { site_.Publish(kNewer, tag, swapped, file_); }},
      {"file longer than stated", [&] { site_.Publish(kNewer, tag, file_ + "x", file_); }},
      {"unsigned manifest", [&] { Publish(kNewer), site_.signature.clear(); }},
      {"signed by someone else",
       [&] { Publish(kNewer), site_.signature = test::UpdateSite::Sign(site_.manifest, otherSk); }},
      {"manifest changed after signing",
       [&] { Publish(kNewer), site_.manifest[site_.manifest.find("version: ") + 9] = '9'; }},
      {"file lost on the way", [&] { Publish(kNewer), site_.server.Stop(); }},
      {"offline", [&] { Publish(kNewer), norvane::testing::SetConnectionState(false); }},
  };
  for (const auto& [what, publish] : rows) {
    publish();
    EXPECT_FALSE(Update()) << what;
    EXPECT_EQ(site_.Text("norvane"), "old executable") << what;
    EXPECT_EQ(site_.Files(), QStringList({"norvane"})) << what;
  }
}

TEST_F(SelfUpdateTest, ReplacesTheExecutableKeepingItsPermissionsAndABackup) {
  Publish(kNewer);
  {  // another program updating the same folder holds its lock
    FolderLock other;
    ASSERT_TRUE(other.TryLock(site_.folder.path().toStdString()));
    EXPECT_FALSE(Update());
    EXPECT_EQ(site_.Files(), QStringList({"norvane"}));
  }
  const QFileDevice::Permissions permissions = QFile::permissions(site_.executable);
  ASSERT_TRUE(CanReplaceExecutable(site_.executable));
  EXPECT_TRUE(Update());
  EXPECT_EQ(site_.Text("norvane"), file_);
  EXPECT_EQ(QFile::permissions(site_.executable), permissions);
  EXPECT_EQ(site_.Text(kBackupExecutableName), "old executable");
  RemoveUpdateBackup(site_.executable);  // the next start
  EXPECT_EQ(site_.Files(), QStringList({"norvane"}));
}

TEST_F(SelfUpdateTest, ReadOnlyProgramFolderIsLeftToThePackageManager) {
  if (!norvane::test::RunsUnprivileged()) return;
#if defined(Q_OS_LINUX)
  EXPECT_FALSE(CanReplaceExecutable("/usr/bin/env"));  // a distribution's file, even for root
#endif
  const QString dir = site_.folder.path();
  QFile::setPermissions(dir, QFileDevice::ReadOwner | QFileDevice::ExeOwner);
  EXPECT_FALSE(CanReplaceExecutable(site_.executable));
  QFile::setPermissions(dir, QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
  EXPECT_TRUE(CanReplaceExecutable(site_.executable));
  EXPECT_FALSE(CanReplaceExecutable(site_.folder.filePath("missing")));
}

TEST_F(SelfUpdateTest, AutomaticCheckOncePerDay) {
  Publish(kNewer);
  std::string previous = "13/03/2025";
  int recordedBeforeAsking = -1;
  const auto record = [&] { recordedBeforeAsking = previous == "14/03/2025" ? site_.server.Requests() : -1; };
  EXPECT_EQ(AutomaticUpdateCheck(1, previous, "14/03/2025", record), std::optional<int16_t>(kNewer));
  EXPECT_EQ(recordedBeforeAsking, 0);     // the day is saved before the server is asked
  EXPECT_EQ(site_.server.Requests(), 3);  // version file, manifest, signature
  EXPECT_EQ(AutomaticUpdateCheck(1, previous, "14/03/2025"), std::nullopt);  // second start that day
  EXPECT_EQ(site_.server.Requests(), 3);
  site_.version = VersionText(kOwn);  // the same version: checked (the date is stored), nothing offered
  EXPECT_EQ(AutomaticUpdateCheck(1, previous, "15/03/2025"), std::nullopt);
  EXPECT_EQ(previous, "15/03/2025");
  EXPECT_EQ(site_.server.Requests(), 4);
}

}  // namespace
}  // namespace norvane
