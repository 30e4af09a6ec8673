// norvane-cli against files and outputs that fail: garbage or unreadable waypoint files, a full
// disk and a closed standard output. It must answer with a message and a failing status, never
// crash and never report success for output that was lost.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "support/RunProcess.hpp"
#include "support/TempDir.hpp"

namespace fs = std::filesystem;
using norvane::test::ProcessResult;
using norvane::test::RunOptions;
using norvane::test::RunProcess;
using norvane::test::TempDir;

namespace {

const std::string kCli = NORVANE_CLI;
const std::string kSample = NORVANE_SAMPLE_DB;

void WriteBytes(const fs::path& p, const std::string& bytes) { std::ofstream(p, std::ios::binary) << bytes; }

}  // namespace

TEST(CliFaults, UnreadableAndGarbageWaypointFilesGiveAMessage) {
  TempDir dir;
  fs::create_directories(dir.path / "folder.dat");  // opens, but reads fail
  WriteBytes(dir.path / "empty.dat", "");
  std::string noise(12 * 40, '\0');
  for (size_t i = 0; i < noise.size(); ++i) noise[i] = static_cast<char>((i * 7919 + 13) % 251);
  WriteBytes(dir.path / "noise.dat", noise);
  // A real database cut short by a whole number of records: the header no longer matches.
  std::ifstream sample(kSample, std::ios::binary);
  std::string bytes((std::istreambuf_iterator<char>(sample)), std::istreambuf_iterator<char>());
  ASSERT_GT(bytes.size(), 12u * 100);
  WriteBytes(dir.path / "cut.dat", bytes.substr(0, 12 * 100));

  struct Row {
    const char* file;
    const char* message;
  };
  const Row rows[] = {
      {"folder.dat", "message: file not found\n"},
      {"empty.dat", "message: the file holds no waypoint\n"},
      {"noise.dat", "message: not a waypoint database (wrong magic number)\n"},
      {"cut.dat", "message: the header counts 7229 waypoints, the length 87\n"},
      {"missing.dat", "message: file not found\n"},
  };
  for (const Row& r : rows) {
    const std::string path = (dir.path / r.file).string();
    const ProcessResult find = RunProcess(kCli, {"navdb", "find", path, "LAM"});
    EXPECT_EQ(find.status, 1) << r.file;
    EXPECT_EQ(find.out, r.message) << r.file;
    const ProcessResult info = RunProcess(kCli, {"navdb", "info", path});
    EXPECT_EQ(info.status, 1) << r.file;
    EXPECT_NE(info.out.find(r.message), std::string::npos) << r.file << ": " << info.out;
  }
}

TEST(CliFaults, OutputThatCannotBeWrittenFailsWithAMessage) {
  TempDir dir;
  const fs::path lines = dir.path / "lines.txt";
  {
    std::ofstream in(lines);
    for (int i = 0; i < 20000; ++i) in << "51.4775 -0.4614 40.6398 -73.7789\n";  // more than one output block
  }
  struct Case {
    const char* what;
    std::vector<std::string> args;
  };
  const Case cases[] = {
      {"one calculation", {"angle", "--d", "10.5"}},
      {"json", {"--json", "wind", "runway", "--runway", "27", "--wind-speed", "15", "--wind-dir", "300"}},
      {"database search", {"navdb", "find", kSample, "LAM"}},
      {"batch", {"inverse"}},
      {"help", {"--help"}},
  };
  for (const Case& c : cases) {
    // Where the output works, the command succeeds: the faults below are the output's alone.
    const ProcessResult ok = RunProcess(kCli, c.args, {lines.string(), ""});
    ASSERT_EQ(ok.status, 0) << c.what << ": " << ok.err;
    ASSERT_FALSE(ok.out.empty()) << c.what;

    const ProcessResult full = RunProcess(kCli, c.args, {lines.string(), "/dev/full"});
    EXPECT_EQ(full.status, 1) << c.what;
    EXPECT_EQ(full.err, "error: cannot write the output: No space left on device\n") << c.what;

    const ProcessResult closed = RunProcess(kCli, c.args, {lines.string(), "&-"});
    EXPECT_EQ(closed.status, 1) << c.what;
    EXPECT_EQ(closed.err, "error: cannot write the output: Bad file descriptor\n") << c.what;
  }
}

TEST(CliFaults, AClosedOutputNeverLandsInAFileTheCommandWrites) {
  // With standard output closed, the database the command writes would get its descriptor, and
  // the summary line would be written into the database.
  TempDir dir;
  const fs::path out = dir.path / "built.dat";
  const ProcessResult r = RunProcess(
      kCli, {"navdb", "build", "--out", out.string(), std::string(NORVANE_SOURCE_DIR) + "/data/waypoints/navaids.csv"},
      {"", "&-"});
  EXPECT_EQ(r.status, 1);
  EXPECT_EQ(r.err, "error: cannot write the output: Bad file descriptor\n");
  const ProcessResult info = RunProcess(kCli, {"navdb", "info", out.string()});
  EXPECT_EQ(info.status, 0) << info.out;
  EXPECT_NE(info.out.find("count: 50\n"), std::string::npos) << info.out;
}

// "+-" passed as a sign was taken silently; the options' rows are in cli/data/commands.txt.
TEST(CliFaults, MalformedNumbersInABatchAreRefused) {
  TempDir dir;
  std::ofstream(dir.path / "in.txt") << "+-1 0 0 0\n+1 0 0 0\n";
  const ProcessResult batch = RunProcess(kCli, {"inverse"}, {(dir.path / "in.txt").string(), ""});
  EXPECT_EQ(batch.status, 1);
  EXPECT_EQ(batch.out.rfind("error: line 1: expected LAT1 LON1 LAT2 LON2, got \"+-1 0 0 0\"\n59.7", 0), 0u)
      << batch.out;
}
