// Runs the built norvane-cli and compares what it prints with what the screens show.
#include <cstdio>
#include <string>

#include <gtest/gtest.h>

#include "support/RunProcess.hpp"

namespace {

using CliRun = norvane::test::ShellResult;

// Runs norvane-cli with args; stderr goes to stdout when mergeErrors is set.
CliRun RunCli(const std::string& args, bool mergeErrors = false) {
  return norvane::test::RunShell(norvane::test::ShellQuote(NORVANE_CLI) + " " + args +
                                 (mergeErrors ? " 2>&1" : " 2>/dev/null"));
}

struct Row {
  const char* args;
  int status;
  const char* out;
};

template <size_t N>
void CheckRows(const Row (&rows)[N]) {
  for (const Row& row : rows) {
    SCOPED_TRACE(row.args);
    const CliRun r = RunCli(row.args, row.status == 2);
    EXPECT_EQ(r.status, row.status);
    if (row.status == 2)
      EXPECT_EQ(r.out.rfind(row.out, 0), 0u) << r.out;  // the error line starts with the expected text
    else
      EXPECT_EQ(r.out, row.out);
  }
}

}  // namespace

TEST(ManoeuvreCli, Wind) {
  const Row rows[] = {
      {"wind known --tas 100 --track 0 --wind-speed 30 --wind-dir 90", 0,
       "ground_speed: 95\nheading: 017\nwca: +17\nhead_tail: -5\n"},
      {"wind known --tas 100 --track 360 --wind-speed 20 --wind-dir 360", 0,
       "ground_speed: 80\nheading: 000\nwca: 0\nhead_tail: -20\n"},
      {"wind known --tas 100 --track 90 --wind-speed 100 --wind-dir 0", 1, "message: Too strong wind for course\n"},
      {"wind unknown --tas 100 --gs 100 --track 0 --heading 0", 0,
       "wind_speed: 0\nwind_direction: 000\nwca: 0\nhead_tail: 0\n"},
      {"wind unknown --tas 100 --gs 95 --track 0 --heading 17", 0,
       "wind_speed: 29\nwind_direction: 089\nwca: +17\nhead_tail: -5\n"},
      {"wind unknown --tas 100 --gs 100 --track 0 --heading 100", 1, "message: Inconsistent results, check input\n"},
      {"wind runway --runway 270 --wind-speed 20 --wind-dir 300", 0, "crosswind: +10\nhead_tail: -17\n"},
      {"wind runway --runway 90 --wind-speed 10 --wind-dir 270", 0, "crosswind: 0\nhead_tail: +10\n"},
      {"--json wind runway --runway 270 --wind-speed 20 --wind-dir 300", 0,
       "{\"crosswind\": \"+10\", \"head_tail\": \"-17\"}\n"},
      {"wind known --tas 49 --track 0 --wind-speed 30 --wind-dir 90", 2,
       "error: --tas: 49 is out of range (50 to 1500 kt)"},
      {"wind known --tas 100 --track 12.5 --wind-speed 30 --wind-dir 90", 2,
       "error: --track: 12.5 is not a whole number (0 to 360 degrees)"},
      {"wind unknown --tas 100 --gs fast --track 0 --heading 0", 2, "error: --gs: expected a number, got \"fast\""},
      {"wind runway --runway 90 --wind-speed 151 --wind-dir 0", 2,
       "error: --wind-speed: 151 is out of range (0 to 150 kt)"},
      {"wind runway --runway 90 --wind-speed 10", 2, "error: --wind-dir is required"},
      {"wind", 2, "error: "},
  };
  CheckRows(rows);
}

TEST(ManoeuvreCli, Turn) {
  const Row rows[] = {
      {"turn --tas 120 --max-bank ul --rate 3", 0, "bank: 18.2\nrate: 3.00\nradius: 0.637\ng_load: 1.05\n"},
      {"turn --tas 120 --max-bank ul --radius-unit m --intercept 90 --distance 5", 0,
       "bank: 18.2\nrate: 3.00\nradius: 1179.0\ng_load: 1.05\nanticipation: 7.3\nfinal_distance: 4.3\n"},
      {"turn --tas 300 --max-bank 25", 0, "bank: 25.0\nrate: 1.70\nradius: 2.812\ng_load: 1.10\n"},
      {"turn --tas 300", 0, "bank: 30.0\nrate: 2.10\nradius: 2.272\ng_load: 1.15\n"},  // 30 degrees by default
      {"turn --tas 400 --rate 1.5 --max-bank ul --intercept 90 --distance 5", 0,
       "bank: 28.8\nrate: 1.50\nradius: 4.244\ng_load: 1.14\nanticipation: 58.1\nfinal_distance: past\n"},
      {"turn --tas 1500 --rate 1.5 --intercept 90 --distance 5.5", 0,
       "bank: 30.0\nrate: 0.42\nradius: 56.788\ng_load: 1.15\nanticipation: NA\nfinal_distance: NA\n"},
      {"turn --tas 120 --intercept 90", 2, "error: --intercept requires --distance"},
      {"turn --tas 120 --intercept 9 --distance 5", 2, "error: --intercept: 9 is out of range (10 to 90 degrees)"},
      {"turn --tas 120 --intercept 45 --distance 50.5", 2,
       "error: --distance: 50.5 is out of range (5 to 50 NM)"},
      {"turn --tas 120 --max-bank 45", 2, "error: --max-bank: 45 not in"},
      {"turn --tas 120 --radius-unit km", 2, "error: --radius-unit: km not in"},
  };
  CheckRows(rows);
}

TEST(ManoeuvreCli, Holding) {
  const Row rows[] = {
      {"holding --outbound 180", 0, "direct: 290 -> 110\nteardrop: 110 -> 180\nparallel: 180 -> 290\n"},
      {"holding --outbound 180 --left", 0, "direct: 250 -> 070\nteardrop: 180 -> 250\nparallel: 070 -> 180\n"},
      {"holding --outbound 180 --track 100", 0,
       "direct: 290 -> 110\nteardrop: 110 -> 180\nparallel: 180 -> 290\nentry: Direct\n"},
      {"holding --outbound 180 --track 150", 0,
       "direct: 290 -> 110\nteardrop: 110 -> 180\nparallel: 180 -> 290\nentry: Teardrop\n"},
      {"holding --outbound 180 --track 200", 0,
       "direct: 290 -> 110\nteardrop: 110 -> 180\nparallel: 180 -> 290\nentry: Parallel\n"},
      {"holding --outbound 180 --track 110", 0,
       "direct: 290 -> 110\nteardrop: 110 -> 180\nparallel: 180 -> 290\nentry: Direct and Teardrop\n"},
      {"holding --outbound 180 --left --track 100 --json", 0,
       "{\"direct\": \"250 -> 070\", \"teardrop\": \"180 -> 250\", \"parallel\": \"070 -> 180\", "
       "\"entry\": \"Parallel\"}\n"},
      {"holding --outbound 361", 2, "error: --outbound: 361 is out of range (0 to 360 degrees)"},
      {"holding --outbound 180 --track -1", 2, "error: --track: -1 is out of range (0 to 360 degrees)"},
      {"holding", 2, "error: --outbound is required"},
  };
  CheckRows(rows);
}

TEST(ManoeuvreCli, Racetrack) {
  const Row rows[] = {
      // No wind: the reciprocal heading, a 1-minute outbound leg, 360 degrees of turns at 25 degrees
      // bank (2.83 deg/s at 180 kt), length 3 NM + 2 radii, width 2 radii.
      {"racetrack --course 90 --tas 180 --wind 0/0", 0,
       "inbound_heading: 090\ninbound_gs: 180\noutbound_heading: 270\noutbound_correction: 0\n"
       "outbound_time: 1:00\noutbound_gs: 180\nbank: 25.0\nrate: 2.83\nradius: 1.01\npattern_time: 4:07\n"
       "length: 5.0\nwidth: 2.0\n"},
      {"--json racetrack --course 360 --tas 120 --wind 090/20 --left --max-bank ul --rate 1.5 --leg 2", 0,
       "{\"inbound_heading\": \"010\", \"inbound_gs\": \"118\", \"outbound_heading\": \"152\", "
       "\"outbound_correction\": \"-28\", \"outbound_time\": \"2:14\", \"outbound_gs\": \"112\", \"bank\": \"9.4\", "
       "\"rate\": \"1.50\", \"radius\": \"1.27\", \"pattern_time\": \"8:14\", \"length\": \"6.5\", \"width\": \"3.2\"}\n"},
      {"racetrack --course 360 --tas 100 --wind 360/60", 1, "message: No racetrack in this wind\n"},
      {"racetrack --course 360 --tas 601 --wind 0/0", 2, "error: --tas: 601 is out of range (50 to 600 kt)"},
      {"racetrack --course 360 --tas 100 --wind 270", 2, "error: --wind: expected DIR/SPEED, got \"270\""},
  };
  CheckRows(rows);
  // --raw: times in seconds.
  const CliRun r = RunCli("--raw racetrack --course 90 --tas 180 --wind 0/0 --leg 2");
  const size_t at = r.out.find("outbound_time: ");
  ASSERT_NE(at, std::string::npos) << r.out;
  EXPECT_NEAR(std::stod(r.out.substr(at + 15)), 120, 1e-9);
}

// --raw prints the unrounded values behind the signed-integer texts.
TEST(ManoeuvreCli, RawValues) {
  const CliRun r = RunCli("wind runway --runway 270 --wind-speed 20 --wind-dir 300 --raw");
  ASSERT_EQ(r.status, 0);
  double xw = 0, ht = 0;
  ASSERT_EQ(std::sscanf(r.out.c_str(), "crosswind: %lf\nhead_tail: %lf", &xw, &ht), 2) << r.out;
  EXPECT_NEAR(xw, 10, 1e-12);          // 20 sin 30
  EXPECT_NEAR(ht, -17.320508075688775, 1e-12);  // -20 cos 30
}

TEST(ManoeuvreCli, HelpStatesUnitsAndRanges) {
  const struct {
    const char* command;
    const char* needles[3];
  } rows[] = {
      {"wind known", {"50 to 1500", "0 to 150", "0 to 360"}},
      {"wind unknown", {"Ground speed, kt", "50 to 1500", "0 to 360"}},
      {"wind runway", {"Runway heading", "0 to 150", "0 to 360"}},
      {"turn", {"10 to 90", "5 to 50", "nm, m or ft"}},
      {"holding", {"0 to 360", "Left-hand", "track to the fix"}},
  };
  for (const auto& row : rows) {
    const CliRun r = RunCli(std::string(row.command) + " --help");
    EXPECT_EQ(r.status, 0) << row.command;
    for (const char* needle : row.needles) EXPECT_NE(r.out.find(needle), std::string::npos) << row.command << ": " << needle;
  }
}
