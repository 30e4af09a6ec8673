// The access layer against real HTTP servers on 127.0.0.1.
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <chrono>
#include <string>

#include "online/Internet.hpp"
#include "online/UpdateInfo.hpp"
#include "support/LocalHttpServer.hpp"

namespace norvane {
namespace {

const auto* const kQtEnvironment = ::testing::AddGlobalTestEnvironment(new test::QtEnvironment);

// Every byte value once per 256: the answer must arrive one character per byte.
std::string AllBytes(size_t size) {
  std::string s(size, '\0');
  for (size_t i = 0; i < size; ++i) s[i] = static_cast<char>(i % 256);
  return s;
}

// Sends `part` `times` times without a declared length (forever when `times` is 0).
void Chunked(httplib::Response& res, size_t bytes, int times) {
  res.set_chunked_content_provider("text/plain", [bytes, times](size_t offset, httplib::DataSink& sink) {
    const std::string part(bytes, 'c');
    if (times && offset >= bytes * size_t(times)) return sink.done(), true;
    return sink.write(part.data(), part.size());
  });
}

class InternetTest : public ::testing::Test {
 protected:
  void SetUp() override {
    testing::SetConnectionState(true);
    testing::SetStallTimeout(std::chrono::milliseconds(400));
    auto& r = server_.Routes();
    server_.Serve("/exact1024", &exact_);
    server_.Serve("/big", &big_);
    r.Get("/bigchunked", [](const httplib::Request&, httplib::Response& res) { Chunked(res, 1000, 5); });
    r.Get("/endless", [](const httplib::Request&, httplib::Response& res) { Chunked(res, 4096, 0); });
    r.Get("/stall-before-headers", [this](const httplib::Request&, httplib::Response& res) {
      server_.Stall();
      res.set_content("late", "text/plain");
    });
    r.Get("/stall-in-body", [this](const httplib::Request&, httplib::Response& res) {
      res.set_chunked_content_provider("text/plain", [this](size_t offset, httplib::DataSink& sink) {
        return offset > 0 ? (server_.Stall(), false) : sink.write("first part", 10);
      });
    });
    r.Get("/error500", [](const httplib::Request&, httplib::Response& res) {
      res.status = 500;
      res.set_content("<html>Internal Server Error</html>", "text/html");
    });
    r.Get("/redirect", [](const httplib::Request&, httplib::Response& res) { res.set_redirect("/big"); });
    r.Get("/agent", [](const httplib::Request& req, httplib::Response& res) {
      res.set_content(req.get_header_value("User-Agent") + "|" + req.get_header_value("Cache-Control"), "text/plain");
    });
    base_ = server_.Start();
  }
  void TearDown() override {
    server_.Stop();
    testing::SetConnectionState(std::nullopt);
    testing::SetStallTimeout(std::chrono::seconds(20));
  }
  std::pair<int16_t, std::string> Get(const std::string& url, int64_t limit = 64 * 1024, std::string text = {}) {
    int16_t code = -1;
    ReadUrl(url, text, code, limit);
    return {code, text};
  }

  const std::string exact_ = AllBytes(1024), big_ = std::string(5000, 'b');
  test::LocalHttpServer server_;
  std::string base_;
};

TEST_F(InternetTest, ReadsAnswersByteForByte) {
  const std::pair<int16_t, std::string> ok = {0, exact_};
  EXPECT_EQ(Get(base_ + "/exact1024"), ok);  // one block plus the empty read that ends the loop
  EXPECT_EQ(Get(base_ + "/big", 5000, "before:").second, "before:" + big_);  // appended to, the limit inclusive
  EXPECT_EQ(Get(base_ + "/redirect").second, big_);
  // An error page is an answer like any other; the caller judges its content.
  EXPECT_EQ(Get(base_ + "/error500"), std::make_pair(int16_t(0), std::string("<html>Internal Server Error</html>")));
  // Identifies itself and asks for a fresh copy.
  EXPECT_EQ(Get(base_ + "/agent").second.rfind("nettest_online/" + VersionText(OwnVersionNumber()) + "|no-cache", 0),
            0u);
}

TEST_F(InternetTest, FailureCodes) {
  const std::tuple<std::string, int64_t, int16_t> rows[] = {
      {test::RefusingUrl() + "/x", 1024, 3},  // nobody listening
      {"ftp://127.0.0.1/file.TXT", 1024, 3},
      {"http:///nohost", 1024, 3},
      {base_ + "/big", 4999, 4},         // declared length above the caller's limit
      {base_ + "/bigchunked", 4096, 4},  // no declared length: counted while reading
      {base_ + "/bigchunked", 5000, 0},
      {base_ + "/endless", 64 * 1024, 4},
      {base_ + "/stall-before-headers", 1024, 4},
      {base_ + "/stall-in-body", 1024, 4},
  };
  for (const auto& [url, limit, code] : rows) {
    const auto [got, text] = Get(url, limit, "kept");
    EXPECT_EQ(got, code) << url;
    EXPECT_EQ(text.rfind("kept", 0), 0u) << url;
  }
}

TEST_F(InternetTest, NoConnectionLeavesTheTextAloneAndTransfersCanBeAbandoned) {
  testing::SetConnectionState(false);
  // Never sent: the layer stops at the connection check (192.0.2.0/24 is reserved for documentation).
  EXPECT_EQ(Get("http://192.0.2.1/data.TXT", 1024, "unchanged"), std::make_pair(int16_t(1), std::string("unchanged")));
  EXPECT_FALSE(DownloadFile("http://192.0.2.1/Norvane.new", QDir::temp().filePath("norvane-offline.new"), 1024));
  EXPECT_FALSE(QFile::exists(QDir::temp().filePath("norvane-offline.new")));
  EXPECT_EQ(Get(base_ + "/big").first, 0);  // a server on this machine needs no Internet connection
  EXPECT_EQ(server_.Requests(), 1);

  auto* transfer = new UrlTransfer;
  int finished = 0;
  QObject::connect(transfer, &UrlTransfer::Finished, [&](int) { ++finished; });
  transfer->Start(base_ + "/stall-before-headers", 1024, nullptr);
  EXPECT_TRUE(transfer->IsRunning());
  QCoreApplication::processEvents();
  delete transfer;  // a screen closed while waiting
  QCoreApplication::processEvents();
  EXPECT_EQ(finished, 0);
}

TEST_F(InternetTest, DownloadsWholeFilesOnly) {
  QTemporaryDir dir;
  const QString target = dir.filePath("Norvane.new");
  const auto content = [&] {
    QFile f(target);
    return f.open(QIODevice::ReadOnly) ? f.readAll().toStdString() : std::string("<missing>");
  };
  EXPECT_TRUE(DownloadFile(base_ + "/exact1024", target, 1024));
  EXPECT_EQ(content(), exact_);
  // A failed download leaves no partial file, and does not touch an earlier one.
  for (const std::string& url : {base_ + "/no/such/file", base_ + "/error500", base_ + "/endless",
                                 base_ + "/stall-in-body", test::RefusingUrl() + "/Norvane.new"}) {
    EXPECT_FALSE(DownloadFile(url, target, 64 * 1024)) << url;
    EXPECT_EQ(content(), exact_) << url;
  }
  QFile::remove(target);
  EXPECT_FALSE(DownloadFile(base_ + "/big", target, 4999));
  EXPECT_FALSE(QFile::exists(target));

  // DeleteIfExists removes read-only files and tolerates missing ones.
  ASSERT_TRUE(DownloadFile(base_ + "/big", target, 5000));
  QFile::setPermissions(target, QFileDevice::ReadOwner);
  EXPECT_TRUE(DeleteIfExists(target));
  EXPECT_FALSE(QFile::exists(target));
  EXPECT_TRUE(DeleteIfExists(target));
}

}  // namespace
}  // namespace norvane
