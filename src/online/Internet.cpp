#include "online/Internet.hpp"

#include <QCoreApplication>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QHostAddress>
#include <QNetworkAccessManager>
#include <QNetworkInformation>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QSaveFile>
#include <QSslSocket>
#include <QUrl>
#include <QtGlobal>

#include <algorithm>

#include "online/NetTexts.hpp"

namespace norvane {

namespace {

struct NetConfig {
  std::chrono::milliseconds stallTimeout{20000};
  std::optional<std::chrono::milliseconds> deadline;
  std::optional<bool> connected;
};

NetConfig& Config() {
  static NetConfig config;
  return config;
}

// A server on this machine needs no Internet connection (and a mirror or a test server on
// 127.0.0.1 must work on an offline machine).
bool IsLoopback(const QUrl& url) {
  const QString host = url.host();
  if (host.compare(QLatin1String("localhost"), Qt::CaseInsensitive) == 0) return true;
  const QHostAddress address(host);
  return !address.isNull() && address.isLoopback();
}

QByteArray AgentText() {
  QString name = QFileInfo(QCoreApplication::applicationFilePath()).completeBaseName();
  if (name.isEmpty()) name = QStringLiteral("norvane");
  return (name + QStringLiteral("/%1.%2").arg(NORVANE_VERSION_MAJOR).arg(NORVANE_VERSION_MINOR, 2, 10, QChar('0')))
      .toLatin1();
}

bool IsHttpStatusError(QNetworkReply::NetworkError error) {
  // Qt reports HTTP answers 4xx/5xx in these two ranges; the body is the server's page.
  return (error >= QNetworkReply::ContentAccessDenied && error <= QNetworkReply::UnknownContentError) ||
         (error >= QNetworkReply::InternalServerError && error <= QNetworkReply::UnknownServerError);
}

bool IsProxyError(QNetworkReply::NetworkError error) {
  return error >= QNetworkReply::ProxyConnectionRefusedError && error <= QNetworkReply::UnknownProxyError;
}

}  // namespace

std::chrono::milliseconds DownloadDeadline(int64_t size) {
  constexpr int64_t kSlowestBytesPerSecond = 32 * 1024;
  return std::max<std::chrono::milliseconds>(
      std::chrono::seconds(120), std::chrono::milliseconds(std::max<int64_t>(size, 0) / kSlowestBytesPerSecond * 1000));
}

std::chrono::milliseconds EffectiveDeadline(std::chrono::milliseconds normal) {
  std::chrono::milliseconds deadline = normal;
  if (Config().deadline) deadline = std::min(deadline, *Config().deadline);
  bool ok = false;
  const qint64 ms = qEnvironmentVariable("NORVANE_TRANSFER_DEADLINE_MS").toLongLong(&ok);
  if (ok && ms > 0) deadline = std::min(deadline, std::chrono::milliseconds(ms));
  return deadline;
}

void TransferCancel::Cancel() {
  if (cancelled_) return;
  cancelled_ = true;
  emit Requested();
}

bool InternetConnected() {
  if (Config().connected) return *Config().connected;
  if (!QCoreApplication::instance()) return true;
  static const bool haveBackend =
      QNetworkInformation::loadBackendByFeatures(QNetworkInformation::Feature::Reachability);
  const QNetworkInformation* info = haveBackend ? QNetworkInformation::instance() : nullptr;
  return info == nullptr || info->reachability() != QNetworkInformation::Reachability::Disconnected;
}

UrlTransfer::UrlTransfer(QObject* parent) : QObject(parent) {
  stallTimer_.setSingleShot(true);
  connect(&stallTimer_, &QTimer::timeout, this, [this] { Complete(kNetReadError); });
  deadlineTimer_.setSingleShot(true);
  connect(&deadlineTimer_, &QTimer::timeout, this, [this] { Complete(kNetReadError); });
}

void UrlTransfer::Cancel() { Complete(kNetReadError); }

UrlTransfer::~UrlTransfer() {
  if (reply_) {
    reply_->disconnect(this);
    reply_->abort();
  }
}

void UrlTransfer::Start(const std::string& url, int64_t maxBytes, Sink sink, bool requireSuccess,
                        std::chrono::milliseconds deadline) {
  if (running_) return;
  running_ = true;
  sink_ = std::move(sink);
  maxBytes_ = maxBytes;
  received_ = 0;
  requireSuccess_ = requireSuccess;
  headersSeen_ = false;

  // Failures found before any request is made are reported from the event loop, as all are.
  const auto failSoon = [this](int code) {
    QMetaObject::invokeMethod(
        this, [this, code] { Complete(code); }, Qt::QueuedConnection);
  };
  const QUrl qurl(QString::fromStdString(url), QUrl::StrictMode);
  const bool usable = qurl.isValid() && !qurl.host().isEmpty() &&
                      (qurl.scheme() == QLatin1String("http") || qurl.scheme() == QLatin1String("https"));
  if (!(usable && IsLoopback(qurl)) && !InternetConnected()) return failSoon(kNetNoConnection);
  if (usable && qurl.scheme() == QLatin1String("https") && !QSslSocket::supportsSsl()) return failSoon(kNetNoSession);
  if (!usable) return failSoon(kNetInvalidUrl);

  if (!manager_) manager_ = new QNetworkAccessManager(this);
  QNetworkRequest request(qurl);
  request.setHeader(QNetworkRequest::UserAgentHeader, AgentText());
  request.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::AlwaysNetwork);
  request.setAttribute(QNetworkRequest::CacheSaveControlAttribute, false);
  // Ask proxies on the way for a fresh copy as well.
  request.setRawHeader("Cache-Control", "no-cache");
  request.setRawHeader("Pragma", "no-cache");
  reply_ = manager_->get(request);
  // Bounded buffering: the network pauses while blocks wait to be handed over.
  reply_->setReadBufferSize(64 * kReadBlockSize);
  connect(reply_, &QNetworkReply::metaDataChanged, this, [this] {
    headersSeen_ = true;
    const QVariant length = reply_->header(QNetworkRequest::ContentLengthHeader);
    if (length.isValid() && length.toLongLong() > maxBytes_) return Complete(kNetReadError);
    OnProgress();
  });
  connect(reply_, &QNetworkReply::readyRead, this, &UrlTransfer::OnProgress);
  connect(reply_, &QNetworkReply::downloadProgress, this, [this] { stallTimer_.start(); });
  connect(reply_, &QNetworkReply::finished, this, &UrlTransfer::OnProgress);
  stallTimer_.start(Config().stallTimeout);
  deadlineTimer_.start(EffectiveDeadline(deadline));
}

void UrlTransfer::OnProgress() {
  if (!running_) return;
  stallTimer_.start();
  if (!pumpQueued_) {
    pumpQueued_ = true;
    QMetaObject::invokeMethod(this, &UrlTransfer::Pump, Qt::QueuedConnection);
  }
}

// Moves one block from the reply to the sink, then lets the event loop run before the next.
void UrlTransfer::Pump() {
  pumpQueued_ = false;
  if (!running_ || !reply_) return;
  if (reply_->bytesAvailable() > 0) {
    char block[kReadBlockSize];
    const qint64 n = reply_->read(block, sizeof block);
    if (n < 0) return Complete(kNetReadError);
    received_ += n;
    if (received_ > maxBytes_) return Complete(kNetReadError);
    if (n > 0 && requireSuccess_) {
      const QVariant status = reply_->attribute(QNetworkRequest::HttpStatusCodeAttribute);
      if (status.isValid() && (status.toInt() < 200 || status.toInt() > 299)) return Complete(kNetInvalidUrl);
    }
    if (n > 0 && sink_ && !sink_(block, n)) return Complete(kNetReadError);
    OnProgress();
    return;
  }
  if (reply_->isFinished()) Complete(FinalCode());
}

int UrlTransfer::FinalCode() const {
  const QNetworkReply::NetworkError error = reply_->error();
  const QVariant status = reply_->attribute(QNetworkRequest::HttpStatusCodeAttribute);
  if (error == QNetworkReply::NoError) {
    if (requireSuccess_ && status.isValid() && (status.toInt() < 200 || status.toInt() > 299)) return kNetInvalidUrl;
    return kNetOk;
  }
  if (status.isValid() && IsHttpStatusError(error)) return requireSuccess_ ? kNetInvalidUrl : kNetOk;
  if (IsProxyError(error)) return kNetNoSession;
  return headersSeen_ ? kNetReadError : kNetInvalidUrl;
}

void UrlTransfer::Complete(int code) {
  if (!running_) return;
  running_ = false;
  stallTimer_.stop();
  deadlineTimer_.stop();
  if (reply_) {
    QNetworkReply* reply = reply_;
    reply_ = nullptr;
    reply->disconnect(this);
    if (!reply->isFinished()) reply->abort();
    reply->deleteLater();
  }
  sink_ = nullptr;
  emit Finished(code);
}

void WaitUntilDone(const std::function<void(QObject* loop, const std::function<void()>& done)>& start) {
  QEventLoop loop;
  bool finished = false;
  start(&loop, [&] {
    finished = true;
    loop.quit();
  });
  if (!finished) loop.exec();
}

int FetchUrl(const std::string& url, int64_t maxBytes, const UrlTransfer::Sink& sink, bool requireSuccess,
             const TransferOptions& options) {
  if (options.cancel && options.cancel->Cancelled()) return kNetReadError;
  UrlTransfer transfer;
  int code = kNetNoConnection;
  WaitUntilDone([&](QObject* loop, const std::function<void()>& done) {
    QObject::connect(&transfer, &UrlTransfer::Finished, loop, [&code, done](int c) {
      code = c;
      done();
    });
    if (options.cancel) QObject::connect(options.cancel, &TransferCancel::Requested, &transfer, &UrlTransfer::Cancel);
    transfer.Start(url, maxBytes, sink, requireSuccess, options.deadline);
  });
  return code;
}

void ReadUrl(const std::string& url, std::string& text, int16_t& errCode, int64_t maxBytes,
             const TransferOptions& options) {
  std::string received;
  const int code = FetchUrl(
      url, maxBytes,
      [&received](const char* data, int64_t size) {
        received.append(data, static_cast<size_t>(size));
        return true;
      },
      /*requireSuccess=*/false, options);
  errCode = static_cast<int16_t>(code);
  // What arrived before a failure is kept, as the reading loop had appended it already.
  text += received;
}

bool DownloadFile(const std::string& url, const QString& localPath, int64_t maxBytes, const TransferOptions& options) {
  QSaveFile file(localPath);
  if (!file.open(QIODevice::WriteOnly)) return false;
  const int code = FetchUrl(
      url, maxBytes, [&file](const char* data, int64_t size) { return file.write(data, size) == size; },
      /*requireSuccess=*/true, options);
  if (code != kNetOk) {
    file.cancelWriting();
    return false;
  }
  return file.commit() && QFileInfo::exists(localPath);
}

bool DeleteIfExists(const QString& path) {
  const QFileInfo info(path);
  if (info.exists() || info.isSymLink()) {
    QFile::setPermissions(path, QFile::permissions(path) | QFileDevice::WriteOwner | QFileDevice::ReadOwner);
    QFile::remove(path);
  }
  return true;
}

namespace testing {
void SetStallTimeout(std::chrono::milliseconds timeout) { Config().stallTimeout = timeout; }
void SetTransferDeadline(std::optional<std::chrono::milliseconds> deadline) { Config().deadline = deadline; }
void SetConnectionState(std::optional<bool> connected) { Config().connected = connected; }
}  // namespace testing

}  // namespace norvane
