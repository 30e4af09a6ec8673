#pragma once
// Opt-in start-up measurement for bench/run, shared with its minimal Qt window so that both are
// measured the same way. With NORVANE_BENCH_EXIT_WHEN_SHOWN set, the program prints one line
//   startup painted_ms=P ready_ms=R peak_rss_kib=M
// and quits: P when the window's first paint has been flushed, R when that is done and the
// program's own start-up work is finished too, M the peak resident memory at that moment. Times
// count from the variable's value, the launch time in seconds since the epoch as the launching
// shell's $EPOCHREALTIME gives it, so that loading the executable and its libraries counts too;
// any other value counts from the probe's creation.

#include <QCoreApplication>
#include <QEvent>
#include <QTimer>
#include <QWidget>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <functional>

#include "app/Platform.hpp"

namespace norvane {

class StartupProbe : public QObject {
 public:
  static constexpr const char* kVariable = "NORVANE_BENCH_EXIT_WHEN_SHOWN";
  static bool Requested() { return qEnvironmentVariableIsSet(kVariable); }

  // Install before the window is first shown. ready() tells whether the start-up work is done;
  // call check() whenever it may have become true.
  StartupProbe(QWidget* window, std::function<bool()> ready) : window_(window), ready_(std::move(ready)) {
    const int64_t launch = LaunchMicros(qgetenv(kVariable));
    originMicros_ = launch > 0 ? launch : NowMicros();
    window_->installEventFilter(this);
  }

  void check() {
    if (!painted_ || reported_ || !ready_()) return;
    reported_ = true;
    std::printf("startup painted_ms=%.1f ready_ms=%.1f peak_rss_kib=%lld\n", Millis(paintedMicros_),
                Millis(NowMicros()), PeakResidentKiB());
    std::fflush(stdout);
    QCoreApplication::quit();
  }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (watched == window_ && event->type() == QEvent::Paint && !paintSeen_) {
      paintSeen_ = true;
      // Queued: it runs once this paint, the children's and the flush to the screen are done.
      QTimer::singleShot(0, this, [this] {
        painted_ = true;
        paintedMicros_ = NowMicros();
        check();
      });
    }
    return QObject::eventFilter(watched, event);
  }

 private:
  static int64_t NowMicros() {
    using namespace std::chrono;
    return duration_cast<microseconds>(system_clock::now().time_since_epoch()).count();
  }
  // "1717171717.123456" to microseconds; 0 when the text is no such time.
  static int64_t LaunchMicros(const QByteArray& text) {
    const int dot = text.indexOf('.');
    bool ok = false;
    const int64_t seconds = (dot < 0 ? text : text.left(dot)).toLongLong(&ok);
    if (!ok || seconds < 1'000'000'000) return 0;
    int64_t micros = 0;
    const QByteArray fraction = dot < 0 ? QByteArray() : text.mid(dot + 1).left(6);
    for (int i = 0; i < 6; ++i) {
      const char c = i < fraction.size() ? fraction[i] : '0';
      if (c < '0' || c > '9') return 0;
      micros = micros * 10 + (c - '0');
    }
    return seconds * 1'000'000 + micros;
  }
  double Millis(int64_t micros) const { return double(micros - originMicros_) / 1000.0; }

  QWidget* window_;
  std::function<bool()> ready_;
  int64_t originMicros_ = 0;
  int64_t paintedMicros_ = 0;
  bool paintSeen_ = false;
  bool painted_ = false;
  bool reported_ = false;
};

}  // namespace norvane
