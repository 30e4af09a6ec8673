// Waypoint database: loading and searching a generated file of a million waypoints; the builder's
// duplicate check on rows of one identifier.
//   cmake -DNORVANE_BUILD_BENCH=ON -DCMAKE_BUILD_TYPE=Release ... && build/.../bench/bench_navdb
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <random>
#include <string>
#include <vector>

#include "waypoints/NavDBBuilder.hpp"
#include "waypoints/NavDatabase.hpp"

using namespace norvane;
namespace fs = std::filesystem;

namespace {

constexpr int kRecords = 1'000'000;

// Random identifiers of 2 to 5 characters (many repeats among the short ones, as in real data),
// random types and positions; written once per run.
struct MillionFile {
  std::string path;
  std::vector<std::string> idents;  // identifiers present, in random order
  MillionFile() {
    std::mt19937 rng(42);
    const char chars[] = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ";
    std::vector<WaypointRecord> records;
    records.reserve(kRecords);
    for (int i = 0; i < kRecords; ++i) {
      std::string id;
      for (int k = 0, len = 2 + int(rng() % 4); k < len; ++k) id += chars[rng() % 36];
      if (i % 97 == 0) idents.push_back(id);
      records.push_back(MakeRecord(WaypointType(rng() % 4), IdentCode(id), int32_t(rng() % 6480001) - 3240000,
                                   int32_t(rng() % 12960001) - 6480000, uint16_t(rng())));
    }
    SortRecords(records);
    path = (fs::temp_directory_path() / "norvane-bench-million.dat").string();
    WriteFileAtomically(path, SerializeNavDB(records, 2401));
  }
  ~MillionFile() { fs::remove(path); }
};

MillionFile& File() {
  static MillionFile file;
  return file;
}

const NavDatabase& Loaded() {
  static NavDatabase db = [] {
    NavDatabase d;
    d.SetDBPath(File().path);
    d.CheckNavDB();
    d.LoadNavDB();
    return d;
  }();
  return db;
}

void BM_CheckAndLoadMillion(benchmark::State& state) {
  const std::string& path = File().path;
  for (auto _ : state) {
    NavDatabase db;
    db.SetDBPath(path);
    if (!db.CheckNavDB() || !db.LoadNavDB()) state.SkipWithError("load failed");
    benchmark::DoNotOptimize(db.Records().data());
  }
  state.SetBytesProcessed(int64_t(state.iterations()) * int64_t((kRecords + 13) * 12));
  state.counters["records_MB"] = double(Loaded().Records().capacity() * sizeof(WaypointRecord)) / 1e6;
}
BENCHMARK(BM_CheckAndLoadMillion)->Unit(benchmark::kMillisecond);

// The reference of the load: the same file's bytes read into one buffer, nothing checked.
void BM_ReadFileBytes(benchmark::State& state) {
  const std::string& path = File().path;
  const size_t size = size_t(fs::file_size(path));
  for (auto _ : state) {
    std::vector<uint8_t> bytes(size);
    std::FILE* f = std::fopen(path.c_str(), "rb");
    if (!f || std::fread(bytes.data(), 1, size, f) != size) state.SkipWithError("read failed");
    if (f) std::fclose(f);
    benchmark::DoNotOptimize(bytes.data());
  }
  state.SetBytesProcessed(int64_t(state.iterations()) * int64_t(size));
}
BENCHMARK(BM_ReadFileBytes)->Unit(benchmark::kMillisecond);

void BM_FindIdentHit(benchmark::State& state) {
  const NavDatabase& db = Loaded();
  const auto& ids = File().idents;
  size_t i = 0;
  for (auto _ : state) benchmark::DoNotOptimize(db.FindIdent(ids[i++ % ids.size()]));
}
BENCHMARK(BM_FindIdentHit);

void BM_FindIdentMiss(benchmark::State& state) {
  const NavDatabase& db = Loaded();
  const char* misses[] = {"Q0Q0Q", "ZZZZZ", "A0000", "9Z9Z9"};
  size_t i = 0;
  for (auto _ : state) benchmark::DoNotOptimize(db.FindIdent(misses[i++ % 4]));
}
BENCHMARK(BM_FindIdentMiss);

// The reference of FindIdent: the identifier's code, then std::equal_range on a plain sorted array
// of the codes alone (the least any sorted lookup does), hits and misses as above.
const std::vector<uint32_t>& Codes() {
  static const std::vector<uint32_t> codes = [] {
    std::vector<uint32_t> v;
    for (const WaypointRecord& r : Loaded().Records()) v.push_back(RecordCode(r));
    return v;
  }();
  return codes;
}
std::pair<size_t, size_t> EqualRange(std::string_view id) {
  const auto& codes = Codes();
  const auto [lo, hi] = std::equal_range(codes.begin(), codes.end(), IdentCode(id));
  return {size_t(lo - codes.begin()), size_t(hi - codes.begin())};
}

void BM_Ref_EqualRangeHit(benchmark::State& state) {
  const auto& ids = File().idents;
  size_t i = 0;
  for (auto _ : state) benchmark::DoNotOptimize(EqualRange(ids[i++ % ids.size()]));
}
BENCHMARK(BM_Ref_EqualRangeHit);

void BM_Ref_EqualRangeMiss(benchmark::State& state) {
  const char* misses[] = {"Q0Q0Q", "ZZZZZ", "A0000", "9Z9Z9"};
  size_t i = 0;
  for (auto _ : state) benchmark::DoNotOptimize(EqualRange(misses[i++ % 4]));
}
BENCHMARK(BM_Ref_EqualRangeMiss);

// The reference scan from the first character's index entry, for comparison.
void BM_FindIdentLinearHit(benchmark::State& state) {
  const NavDatabase& db = Loaded();
  const auto& ids = File().idents;
  size_t i = 0;
  for (auto _ : state) benchmark::DoNotOptimize(db.FindIdentLinear(ids[i++ % ids.size()]));
}
BENCHMARK(BM_FindIdentLinearHit)->Unit(benchmark::kMicrosecond);

// The builder on n rows of one identifier and type at n distinct places (a grid 0.8 by 0.9 degree):
// every row must be compared with the kept ones near it. Once quadratic (80 000 rows: 17 s);
// the time per row must not grow with n.
void BM_BuildOneIdentifier(benchmark::State& state) {
  const int n = int(state.range(0));
  for (auto _ : state) {
    NavDBBuilder b;
    for (int i = 0; i < n; ++i)
      b.Add(WaypointType::Intersection, "SAME", -82 + 0.8 * (i / 390), -175 + 0.9 * (i % 390), 0);
    benchmark::DoNotOptimize(b.Build().data());
  }
  state.SetComplexityN(n);
}
BENCHMARK(BM_BuildOneIdentifier)->Arg(20000)->Arg(80000)->Unit(benchmark::kMillisecond)->Complexity();

}  // namespace
