// The access layer against real HTTP servers on 127.0.0.1.
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <chrono>
#include <string>

#include "LocalHttpServer.hpp"
#include "services/Internet.hpp"
#include "services/UpdateInfo.hpp"

namespace norvane {
namespace {

using test::LocalHttpServer;

const auto* const kQtEnvironment = ::testing::AddGlobalTestEnvironment(new test::QtEnvironment);

// Every byte value once per 256: the answer must arrive one character per byte.
std::string AllBytes(size_t size) {
  std::string s(size, '\0');
  for (size_t i = 0; i < size; ++i) s[i] = static_cast<char>(i % 256);
  return s;
}

class InternetTest : public ::testing::Test {
 protected:
  void SetUp() override {
    testing::SetConnectionState(true);
    testing::SetStallTimeout(std::chrono::milliseconds(400));
    auto& r = server_.Routes();
    r.Get("/exact1024", [](const httplib::Request&, httplib::Response& res) {
      res.set_content(AllBytes(1024), "application/octet-stream");
    });
    r.Get("/big", [](const httplib::Request&, httplib::Response& res) {
      res.set_content(std::string(5000, 'b'), "text/plain");
    });
    r.Get("/bigchunked", [](const httplib::Request&, httplib::Response& res) {
      res.set_chunked_content_provider("text/plain", [](size_t, httplib::DataSink& sink) {
        const std::string part(1000, 'c');
        for (int i = 0; i < 5; ++i) sink.write(part.data(), part.size());
        sink.done();
        return true;
      });
    });
    r.Get("/endless", [](const httplib::Request&, httplib::Response& res) {
      res.set_chunked_content_provider("text/plain", [](size_t, httplib::DataSink& sink) {
        const std::string part(4096, 'e');
        return sink.write(part.data(), part.size());
      });
    });
    r.Get("/stall-before-headers", [this](const httplib::Request&, httplib::Response& res) {
      server_.Stall();
      res.set_content("late", "text/plain");
    });
    r.Get("/stall-in-body", [this](const httplib::Request&, httplib::Response& res) {
      res.set_chunked_content_provider("text/plain", [this](size_t offset, httplib::DataSink& sink) {
        if (offset > 0) {
          server_.Stall();
          return false;
        }
        return sink.write("first part", 10);
      });
    });
    r.Get("/error500", [](const httplib::Request&, httplib::Response& res) {
      res.status = 500;
      res.set_content("<html><body>Internal Server Error</body></html>", "text/html");
    });
    r.Get("/redirect", [](const httplib::Request&, httplib::Response& res) { res.set_redirect("/big"); });
    r.Get("/agent", [](const httplib::Request& req, httplib::Response& res) {
      res.set_content(req.get_header_value("User-Agent") + "|" + req.get_header_value("Cache-Control"),
                      "text/plain");
    });
    base_ = server_.Start();
  }
  void TearDown() override {
    server_.Stop();
    testing::SetConnectionState(std::nullopt);
    testing::SetStallTimeout(std::chrono::seconds(20));
  }

  struct Read {
    int16_t code;
    std::string text;
  };
  Read Get(const std::string& url, int64_t limit = 64 * 1024, std::string text = {}) {
    int16_t code = -1;
    ReadUrl(url, text, code, limit);
    return {code, text};
  }

  LocalHttpServer server_;
  std::string base_;
};

TEST_F(InternetTest, ReadsAnswersByteForByte) {
  const Read exact = Get(base_ + "/exact1024");
  EXPECT_EQ(exact.code, 0);
  EXPECT_EQ(exact.text, AllBytes(1024));  // one block plus the empty read that ends the loop

  const Read appended = Get(base_ + "/big", 64 * 1024, "before:");
  EXPECT_EQ(appended.code, 0);
  EXPECT_EQ(appended.text, "before:" + std::string(5000, 'b'));  // the text is appended to

  EXPECT_EQ(Get(base_ + "/redirect").text, std::string(5000, 'b'));

  // An error page is an answer like any other; the caller judges its content.
  const Read page = Get(base_ + "/error500");
  EXPECT_EQ(page.code, 0);
  EXPECT_EQ(page.text, "<html><body>Internal Server Error</body></html>");
  const Read missing = Get(base_ + "/no/such/file.TXT");
  EXPECT_EQ(missing.code, 0);
  EXPECT_NE(missing.text.find("Not Found"), std::string::npos);

  // Identifies itself and asks for a fresh copy.
  const Read agent = Get(base_ + "/agent");
  EXPECT_EQ(agent.text.rfind("nettest_services/" + VersionText(OwnVersionNumber()) + "|no-cache", 0), 0u) << agent.text;
}

TEST_F(InternetTest, FailureCodes) {
  struct Row {
    std::string url;
    int64_t limit;
    int16_t code;
  };
  const Row rows[] = {
      {test::RefusingUrl() + "/x", 1024, 3},  // nobody listening
      {"not an address", 1024, 3},
      {"ftp://127.0.0.1/file.TXT", 1024, 3},
      {"http:///nohost", 1024, 3},
      {base_ + "/big", 4999, 4},         // declared length above the caller's limit
      {base_ + "/big", 5000, 0},
      {base_ + "/bigchunked", 4096, 4},  // no declared length: counted while reading
      {base_ + "/bigchunked", 5000, 0},
      {base_ + "/endless", 64 * 1024, 4},
      {base_ + "/stall-before-headers", 1024, 4},
      {base_ + "/stall-in-body", 1024, 4},
  };
  for (const Row& r : rows) {
    const Read read = Get(r.url, r.limit, "kept");
    EXPECT_EQ(read.code, r.code) << r.url;
    EXPECT_EQ(read.text.rfind("kept", 0), 0u) << r.url;
  }
}

TEST_F(InternetTest, NoConnectionLeavesTheTextAlone) {
  testing::SetConnectionState(false);
  // Never sent: the layer stops at the connection check (192.0.2.0/24 is reserved for documentation).
  const Read offline = Get("http://192.0.2.1/data.TXT", 1024, "unchanged");
  EXPECT_EQ(offline.code, 1);
  EXPECT_EQ(offline.text, "unchanged");
  EXPECT_FALSE(DownloadFile("http://192.0.2.1/Norvane.new", QDir::temp().filePath("norvane-offline.new"), 1024));
  EXPECT_FALSE(QFile::exists(QDir::temp().filePath("norvane-offline.new")));
  // A server on this machine needs no Internet connection.
  EXPECT_EQ(Get(base_ + "/big").code, 0);
  EXPECT_EQ(server_.Requests(), 1);
}

TEST_F(InternetTest, TransferCanBeAbandoned) {
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
  ASSERT_TRUE(dir.isValid());
  const QString target = dir.filePath("Norvane.new");
  const auto content = [&] {
    QFile f(target);
    return f.open(QIODevice::ReadOnly) ? f.readAll().toStdString() : std::string("<missing>");
  };

  EXPECT_TRUE(DownloadFile(base_ + "/exact1024", target, 1024));
  EXPECT_EQ(content(), AllBytes(1024));

  // A failed download leaves no partial file, and does not touch an earlier one.
  const std::string failing[] = {base_ + "/no/such/file", base_ + "/error500", base_ + "/endless",
                                 base_ + "/stall-in-body", test::RefusingUrl() + "/Norvane.new"};
  for (const std::string& url : failing) {
    EXPECT_FALSE(DownloadFile(url, target, 64 * 1024)) << url;
    EXPECT_EQ(content(), AllBytes(1024)) << url;
  }
  QFile::remove(target);
  EXPECT_FALSE(DownloadFile(base_ + "/big", target, 4999));
  EXPECT_FALSE(QFile::exists(target));
}

TEST(DeleteIfExists, RemovesReadOnlyFilesAndToleratesMissingOnes) {
  QTemporaryDir dir;
  const QString path = dir.filePath("Norvane.bak");
  {
    QFile f(path);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write("old");
  }
  QFile::setPermissions(path, QFileDevice::ReadOwner);
  EXPECT_TRUE(DeleteIfExists(path));
  EXPECT_FALSE(QFile::exists(path));
  EXPECT_TRUE(DeleteIfExists(path));
}

}  // namespace
}  // namespace norvane
