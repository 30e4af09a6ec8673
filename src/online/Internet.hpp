#pragma once
// Internet access over Qt Network: read an address into a text, download it into a file, delete
// a file, and ask whether the system has a connection. Every transfer bypasses caches, reads
// the answer in blocks of at most 1024 bytes with the event loop served between blocks, ends
// with code 4 after a stall of 20 seconds without data or when its overall deadline passes (a
// server dripping a byte now and then never stalls), and refuses answers larger than the limit
// its caller sets (code 4), so neither a silent, a slow nor an endless server can hang a window.

#include <QObject>
#include <QPointer>
#include <QTimer>

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>

class QNetworkAccessManager;
class QNetworkReply;

namespace norvane {

inline constexpr int kReadBlockSize = 1024;

// The overall deadline of a transfer of a small file (weather report, version file, manifest).
inline constexpr std::chrono::milliseconds kTransferDeadline{60000};

// The deadline of a program download of `size` bytes: 120 s, or longer for a file that takes
// longer at 32 KiB/s (256 kbit/s, a poor mobile link).
std::chrono::milliseconds DownloadDeadline(int64_t size);

// The deadline a transfer really gets: `normal`, or less when NORVANE_TRANSFER_DEADLINE_MS (a
// number of milliseconds) or a test asks for less. Nothing makes it longer.
std::chrono::milliseconds EffectiveDeadline(std::chrono::milliseconds normal);

// Lets the user abandon the blocking transfers of ReadUrl and DownloadFile (Escape, a Close
// button): Cancel() ends the running one at once with code 4, and every later one before it starts.
class TransferCancel : public QObject {
  Q_OBJECT
 public:
  using QObject::QObject;
  void Cancel();
  bool Cancelled() const { return cancelled_; }

 signals:
  void Requested();

 private:
  bool cancelled_ = false;
};

struct TransferOptions {
  std::chrono::milliseconds deadline = kTransferDeadline;
  TransferCancel* cancel = nullptr;
};

// True unless the system positively reports that it is offline. Where no backend of
// QNetworkInformation can tell (or it does not know yet), the answer is "connected": a wrong
// "connected" costs one failed request, a wrong "offline" would lock the user out.
bool InternetConnected();

// One GET of one address. Finished(code) is emitted exactly once per Start, always from the
// event loop (never from inside Start); destroying the object aborts the transfer silently.
class UrlTransfer : public QObject {
  Q_OBJECT
 public:
  // Receives each block as it arrives; returning false ends the transfer with code 4.
  using Sink = std::function<bool(const char* data, int64_t size)>;

  explicit UrlTransfer(QObject* parent = nullptr);
  ~UrlTransfer() override;

  // maxBytes: the largest answer accepted. requireSuccess: an HTTP error status (404 ...) ends
  // with code 3 instead of delivering the server's error page as the answer. deadline: the
  // longest the whole transfer may take (EffectiveDeadline applies).
  void Start(const std::string& url, int64_t maxBytes, Sink sink, bool requireSuccess = false,
             std::chrono::milliseconds deadline = kTransferDeadline);
  bool IsRunning() const { return running_; }
  // Ends a running transfer with code 4, as a failed read.
  void Cancel();

 signals:
  void Finished(int code);

 private:
  void OnProgress();
  void Pump();
  void Complete(int code);
  int FinalCode() const;

  QNetworkAccessManager* manager_ = nullptr;
  QPointer<QNetworkReply> reply_;
  QTimer stallTimer_;
  QTimer deadlineTimer_;
  Sink sink_;
  int64_t maxBytes_ = 0;
  int64_t received_ = 0;
  bool requireSuccess_ = false;
  bool running_ = false;
  bool pumpQueued_ = false;
  bool headersSeen_ = false;
};

// The blocking form of an asynchronous step: calls start(loop, done) and serves a local event loop
// until done() has been called (no loop at all when start calls it at once). Connections made to
// `loop` end with the wait.
void WaitUntilDone(const std::function<void(QObject* loop, const std::function<void()>& done)>& start);

// One transfer of `url` into `sink`, as UrlTransfer::Start; returns its code. Blocks the caller
// but serves the event loop while it waits.
int FetchUrl(const std::string& url, int64_t maxBytes, const UrlTransfer::Sink& sink, bool requireSuccess,
             const TransferOptions& options = {});

// Appends the answer at `url` to `text`, byte for byte as single-byte characters. errCode:
// 0 success (an HTTP error page counts as an answer), 1 no connection, 2 no session (no TLS
// support for https, a proxy failure), 3 the address could not be opened (malformed, refused,
// unknown host, TLS failure), 4 reading failed, stalled, ran past its deadline, passed maxBytes
// or was cancelled. Blocks the caller but serves the event loop while it waits.
void ReadUrl(const std::string& url, std::string& text, int16_t& errCode, int64_t maxBytes,
             const TransferOptions& options = {});

// Downloads `url` into `localPath` (written whole or not at all). True when the server answered
// with success, the file was complete within maxBytes and exists afterwards.
bool DownloadFile(const std::string& url, const QString& localPath, int64_t maxBytes,
                  const TransferOptions& options = {});

// Deletes the file when it exists, read-only or not. Always true.
bool DeleteIfExists(const QString& path);

namespace testing {
// Time without data after which a transfer ends with code 4 (20 s by default).
void SetStallTimeout(std::chrono::milliseconds timeout);
// Shortens every transfer's overall deadline to at most `deadline`; nullopt restores them.
void SetTransferDeadline(std::optional<std::chrono::milliseconds> deadline);
// Forces the answer of InternetConnected(); nullopt asks the system again.
void SetConnectionState(std::optional<bool> connected);
}  // namespace testing

}  // namespace norvane
