#include "cli/GeodesyBatch.hpp"

#include <charconv>
#include <cmath>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>

#include "app/NumberChars.hpp"
#include "cli/CliSupport.hpp"
#include "navigation/Geodesy.hpp"

namespace norvane::cli {
namespace {

constexpr size_t kReadChunk = 1 << 20;   // bytes read from the input at a time
constexpr size_t kMaxLine = 4096;        // longer lines are reported, not buffered
constexpr size_t kWriteChunk = 1 << 18;  // output is written in blocks of this size
constexpr size_t kMaxOutputLine = 512;   // room reserved for one answer or error line

// Splits a byte stream into lines ("\n" or "\r\n") with one fixed buffer. A line longer than
// kMaxLine is returned once as `tooLong` and its remainder skipped.
class LineReader {
 public:
  explicit LineReader(std::FILE* in) : in_(in), buf_(new char[kReadChunk + kMaxLine]) {}

  // Next line without its terminator; false at the end of the input.
  bool Next(std::string_view& line, bool& tooLong) {
    tooLong = false;
    for (;;) {
      const char* start = buf_.get() + pos_;
      const size_t avail = end_ - pos_;
      if (const void* nl = std::memchr(start, '\n', avail)) {
        const size_t len = static_cast<const char*>(nl) - start;
        pos_ += len + 1;
        if (skipping_) {
          skipping_ = false;
          continue;
        }
        tooLong = len > kMaxLine;
        line = tooLong ? std::string_view() : Trim(std::string_view(start, len));
        return true;
      }
      if (avail > kMaxLine && !skipping_) {
        // A line that does not fit: report it once, then drop bytes up to its end.
        skipping_ = true;
        pos_ = end_;
        tooLong = true;
        line = {};
        return true;
      }
      if (skipping_) pos_ = end_;
      if (eof_) {
        if (pos_ == end_) return false;
        line = Trim(std::string_view(buf_.get() + pos_, end_ - pos_));  // last line without "\n"
        pos_ = end_;
        return true;
      }
      Refill();
    }
  }

 private:
  static std::string_view Trim(std::string_view s) {
    if (!s.empty() && s.back() == '\r') s.remove_suffix(1);
    return s;
  }

  void Refill() {
    const size_t keep = end_ - pos_;  // at most kMaxLine bytes of an unfinished line
    std::memmove(buf_.get(), buf_.get() + pos_, keep);
    pos_ = 0;
    end_ = keep;
    const size_t got = std::fread(buf_.get() + end_, 1, kReadChunk, in_);
    end_ += got;
    if (got < kReadChunk) eof_ = true;
  }

  std::FILE* in_;
  std::unique_ptr<char[]> buf_;
  size_t pos_ = 0, end_ = 0;
  bool eof_ = false, skipping_ = false;
};

// Output gathered in one block and written when nearly full. A failed write throws OutputError,
// which ends the run: answers that cannot be delivered are not worth computing.
class Writer {
 public:
  explicit Writer(std::FILE* out) : out_(out), buf_(new char[kWriteChunk]) {}

  // Room for one line of at most kMaxOutputLine bytes.
  char* Reserve() {
    if (len_ + kMaxOutputLine > kWriteChunk) Flush();
    return buf_.get() + len_;
  }
  void Commit(char* end) { len_ = end - buf_.get(); }
  void Flush() {
    const size_t len = len_;
    len_ = 0;
    WriteOutput(out_, std::string_view(buf_.get(), len));
  }

 private:
  std::FILE* out_;
  std::unique_ptr<char[]> buf_;
  size_t len_ = 0;
};

// Full precision: the shortest decimal that reads back as the same double.
char* PutNumber(char* p, double v) {
  if (IsUndefined(v)) {
    std::memcpy(p, "ND", 2);
    return p + 2;
  }
  return WriteShortest(p, p + 32, v);
}

char* PutText(char* p, std::string_view s) {
  std::memcpy(p, s.data(), s.size());
  return p + s.size();
}

// The offending input, echoed with control bytes shown as '?' so the output stays one line of text.
char* PutEcho(char* p, std::string_view s) {
  for (const char c : s) *p++ = static_cast<unsigned char>(c) < 0x20 || c == 0x7f ? '?' : c;
  return p;
}

bool IsBlank(char c) { return c == ' ' || c == '\t'; }

bool InRange(double v, double lo, double hi, const char* name, std::string& why) {
  if (v >= lo && v <= hi) return true;
  char num[32];
  *WriteShortest(num, num + sizeof num - 1, v) = '\0';
  char text[160];
  std::snprintf(text, sizeof text, "%s %s is out of range (%g to %g)", name, num, lo, hi);
  why = text;
  return false;
}

// Runs `solve(fields, p)` for each readable line, which writes the answer at p and returns its
// end; unreadable lines become "error: line N: ...". Returns the number of unreadable lines.
template <int N, class Check, class Solve>
long RunBatch(std::FILE* in, std::FILE* out, const char* layout, Check check, Solve solve) {
  LineReader reader(in);
  Writer writer(out);
  std::string_view line;
  bool tooLong = false;
  long lineNo = 0, failed = 0;
  std::string why;
  double f[N];
  while (reader.Next(line, tooLong)) {
    ++lineNo;
    char* p = writer.Reserve();
    if (tooLong) {
      why = "line longer than " + std::to_string(kMaxLine) + " characters";
    } else if (ParseBatchFields(line, f, N, layout, why) && check(f, why)) {
      writer.Commit(solve(f, p));
      continue;
    }
    ++failed;
    p = PutText(p, "error: line ");
    p = std::to_chars(p, p + 24, lineNo).ptr;
    p = PutText(p, ": ");
    p = PutText(p, std::string_view(why).substr(0, 200));
    if (!tooLong && why.rfind("expected", 0) == 0) {
      p = PutText(p, ", got \"");
      p = PutEcho(p, line.substr(0, 120));
      p = PutText(p, line.size() > 120 ? "...\"" : "\"");
    }
    *p++ = '\n';
    writer.Commit(p);
  }
  writer.Flush();
  return failed;
}

// Longitudes as data files hold them, 0 to 360 included: anything from -540 to 540 is reduced to
// -180..180 as GeographicLib's AngNormalize does (remainder; 180 and -180 keep their sign).
bool CheckPoint(double lat, double& lon, const char* latName, const char* lonName, std::string& why) {
  if (!InRange(lat, -90, 90, latName, why) || !InRange(lon, -540, 540, lonName, why)) return false;
  const double reduced = std::remainder(lon, 360.0);
  lon = std::fabs(reduced) == 180 ? std::copysign(180.0, lon) : reduced;
  return true;
}

}  // namespace

bool ParseBatchFields(std::string_view line, double* out, int n, const char* layout, std::string& why) {
  const char* p = line.data();
  const char* end = p + line.size();
  for (int i = 0; i < n; ++i) {
    while (p < end && IsBlank(*p)) ++p;
    if (i > 0) {
      if (p < end && *p == ',') {
        ++p;
        while (p < end && IsBlank(*p)) ++p;
      } else if (!IsBlank(p[-1])) {
        why = std::string("expected ") + layout;
        return false;
      }
    }
    const char* first = p < end && *p == '+' ? p + 1 : p;
    const char* ptr = ReadDouble(first, end, out[i]);
    if (!ptr || !std::isfinite(out[i]) || (first != p && *first == '-') ||
        (ptr < end && !IsBlank(*ptr) && *ptr != ',')) {
      why = std::string("expected ") + layout;
      return false;
    }
    p = ptr;
  }
  while (p < end && IsBlank(*p)) ++p;
  if (p != end) {
    why = std::string("expected ") + layout + ", found more";
    return false;
  }
  return true;
}

long RunInverseBatch(std::FILE* in, std::FILE* out, InverseMethod method) {
  const auto check = [](double* f, std::string& why) {
    return CheckPoint(f[0], f[1], "LAT1", "LON1", why) && CheckPoint(f[2], f[3], "LAT2", "LON2", why);
  };
  const auto put3 = [](char* p, double a, double b, double c) {
    p = PutNumber(p, a);
    *p++ = ' ';
    p = PutNumber(p, b);
    *p++ = ' ';
    p = PutNumber(p, c);
    *p++ = '\n';
    return p;
  };
  const char* layout = "LAT1 LON1 LAT2 LON2";
  switch (method) {
    case InverseMethod::Sphere:
      return RunBatch<4>(in, out, layout, check, [&](const double* f, char* p) {
        const InverseResult r = GreatCircleSphere(f[0], f[1], f[2], f[3]);
        return put3(p, r.distance, r.trackIni, r.trackFin);
      });
    case InverseMethod::Rhumb:
      return RunBatch<4>(in, out, layout, check, [&](const double* f, char* p) {
        const RhumbResult r = RhumbLine(f[0], f[1], f[2], f[3]);
        return put3(p, r.distance, r.track, r.track);
      });
    case InverseMethod::Wgs84:
    default:
      return RunBatch<4>(in, out, layout, check, [&](const double* f, char* p) {
        const InverseResult r = GeodesicWGS84(f[0], f[1], f[2], f[3]);
        return put3(p, r.distance, r.trackIni, r.trackFin);
      });
  }
}

long RunDirectBatch(std::FILE* in, std::FILE* out, DirectMethod method) {
  const auto check = [](double* f, std::string& why) {
    return CheckPoint(f[0], f[1], "LAT", "LON", why) && InRange(f[2], 0, 360, "TRACK", why) &&
           InRange(f[3], 0, 21600, "DIST_NM", why);
  };
  const auto put2 = [](char* p, const GeoPoint& g) {
    p = PutNumber(p, g.lat);
    *p++ = ' ';
    p = PutNumber(p, g.lon);
    *p++ = '\n';
    return p;
  };
  const char* layout = "LAT LON TRACK DIST_NM";
  // A track of exactly 360 is north, as on the screen.
  if (method == DirectMethod::Sphere)
    return RunBatch<4>(in, out, layout, check, [&](const double* f, char* p) {
      return put2(p, DirectSphere(f[0], f[1], f[2] == 360 ? 0 : f[2], f[3]));
    });
  return RunBatch<4>(in, out, layout, check, [&](const double* f, char* p) {
    return put2(p, DirectWGS84(f[0], f[1], f[2] == 360 ? 0 : f[2], f[3]));
  });
}

}  // namespace norvane::cli
