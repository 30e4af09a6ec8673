#pragma once
// A real HTTP server on 127.0.0.1 for the network tests (cpp-httplib on its own threads), with
// a request counter and a way to release handlers that stall on purpose.

#include <gtest/gtest.h>
#include <httplib.h>
#include <sodium.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTcpServer>
#include <QTemporaryDir>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>
#include <utility>

#include "online/ServerAddresses.hpp"
#include "online/UpdateInfo.hpp"
#include "online/UpdateSignature.hpp"

namespace norvane::test {

class LocalHttpServer {
 public:
  LocalHttpServer() {
    server_.set_keep_alive_max_count(1);
    server_.set_pre_routing_handler([this](const httplib::Request&, httplib::Response&) {
      ++requests_;
      return httplib::Server::HandlerResponse::Unhandled;
    });
  }
  ~LocalHttpServer() { Stop(); }

  httplib::Server& Routes() { return server_; }
  // Answers GET `path` with *body as it is when the request comes.
  void Serve(const std::string& path, const std::string* body) {
    server_.Get(path,
                [body](const httplib::Request&, httplib::Response& res) { res.set_content(*body, "text/plain"); });
  }

  // Starts listening on a free port of 127.0.0.1; returns "http://127.0.0.1:PORT".
  std::string Start() {
    port_ = server_.bind_to_any_port("127.0.0.1");
    thread_ = std::thread([this] { server_.listen_after_bind(); });
    while (!server_.is_running()) std::this_thread::sleep_for(std::chrono::milliseconds(1));
    return "http://127.0.0.1:" + std::to_string(port_);
  }

  void Stop() {
    Release();
    if (thread_.joinable()) {
      server_.stop();
      thread_.join();
    }
  }

  int Requests() const { return requests_; }

  // Blocks a handler until Release() (or 30 s, so that a broken test cannot hang the run).
  void Stall() {
    std::unique_lock lock(mutex_);
    released_cv_.wait_for(lock, std::chrono::seconds(30), [this] { return released_; });
  }
  // Answers with one byte every 2 s, `bytes` in all: a server that never stalls long enough to
  // trip a stall timeout. Release() or a closed connection ends it early.
  void Drip(httplib::Response& res, int bytes) {
    res.set_chunked_content_provider("application/octet-stream", [this, bytes](size_t offset, httplib::DataSink& sink) {
      if (offset >= static_cast<size_t>(bytes)) {
        sink.done();
        return true;
      }
      if (!sink.write("2", 1)) return false;
      std::unique_lock lock(mutex_);
      return !released_cv_.wait_for(lock, std::chrono::seconds(2), [this] { return released_; });
    });
  }
  void Release() {
    {
      std::lock_guard lock(mutex_);
      released_ = true;
    }
    released_cv_.notify_all();
  }

 private:
  httplib::Server server_;
  std::thread thread_;
  int port_ = 0;
  std::atomic<int> requests_{0};
  std::mutex mutex_;
  std::condition_variable released_cv_;
  bool released_ = false;
};

// A port of 127.0.0.1 on which nobody listens: connections to it are refused.
inline std::string RefusingUrl() {
  QTcpServer probe;
  probe.listen(QHostAddress::LocalHost, 0);
  const quint16 port = probe.serverPort();
  probe.close();
  return "http://127.0.0.1:" + std::to_string(port);
}

// An update server on 127.0.0.1 and a program folder holding an old "norvane": the version file,
// the new executable and its manifest, signed with a throwaway key trusted meanwhile.
struct UpdateSite {
  UpdateSite() {
    if (sodium_init() < 0) std::abort();
    crypto_sign_keypair(publicKey.data(), secretKey);
    norvane::testing::SetTrustedUpdateKey(publicKey);
    server.Serve("/u/NorvaneVerInfo.txt", &version);
    server.Serve("/u/Norvane.manifest", &manifest);
    server.Serve("/u/Norvane.manifest.sig", &signature);  // empty: unsigned
    server.Routes().Get("/u/Norvane.new", [this](const httplib::Request&, httplib::Response& res) {
      if (drip)
        server.Drip(res, 5);
      else
        res.set_content(served, "application/octet-stream");
    });
    qputenv(kUpdateUrlVariable, QByteArray::fromStdString(server.Start() + "/u"));
    QFile f(executable);
    if (!f.open(QIODevice::WriteOnly) || f.write("old executable") != 14) std::abort();
  }
  ~UpdateSite() {
    server.Stop();
    qunsetenv(kUpdateUrlVariable);
    norvane::testing::SetTrustedUpdateKey(std::nullopt);
  }
  // Serves `file` as Norvane.new under a manifest of `version` for `platform` describing `described`.
  void Publish(int16_t v, const std::string& platform, const std::string& file, const std::string& described) {
    unsigned char digest[crypto_hash_sha256_BYTES];
    crypto_hash_sha256(digest, reinterpret_cast<const unsigned char*>(described.data()), described.size());
    char hex[2 * sizeof digest + 1];
    sodium_bin2hex(hex, sizeof hex, digest, sizeof digest);
    served = file;
    manifest = "Norvane update manifest 1\nversion: " + VersionText(v) + "\nplatform: " + platform +
               "\nsize: " + std::to_string(described.size()) + "\nsha256: " + hex + "\n";
    signature = Sign(manifest, secretKey);
  }
  static std::string Sign(const std::string& text, const unsigned char* key) {
    std::string sig(crypto_sign_BYTES, '\0');
    crypto_sign_detached(reinterpret_cast<unsigned char*>(sig.data()), nullptr,
                         reinterpret_cast<const unsigned char*>(text.data()), text.size(), key);
    return sig;
  }
  std::string Text(const char* name) const {
    QFile f(folder.filePath(name));
    return f.open(QIODevice::ReadOnly) ? f.readAll().toStdString() : "<missing>";
  }
  QStringList Files() const { return QDir(folder.path()).entryList(QDir::Files, QDir::Name); }

  LocalHttpServer server;
  UpdatePublicKey publicKey{};
  unsigned char secretKey[crypto_sign_SECRETKEYBYTES]{};
  std::string version, served, manifest, signature;
  bool drip = false;  // Norvane.new a byte every 2 s
  QTemporaryDir folder;
  const QString executable = folder.filePath("norvane");
};

// Gives the tests of one binary a QCoreApplication (gtest_main owns main()).
class QtEnvironment : public ::testing::Environment {
 public:
  void SetUp() override {
    if (!QCoreApplication::instance()) app_ = new QCoreApplication(argc_, argv_);
  }
  void TearDown() override { delete app_; }

 private:
  int argc_ = 1;
  char name_[16] = "nettest";
  char* argv_[2] = {name_, nullptr};
  QCoreApplication* app_ = nullptr;
};

}  // namespace norvane::test
