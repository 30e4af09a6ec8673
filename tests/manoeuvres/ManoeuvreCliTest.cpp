// norvane-cli wind, turn and holding, run as a user would: one row per command and mode, one per
// kind of error. The values are the model tests'.
#include <cmath>
#include <cstdio>
#include <string>

#include <gtest/gtest.h>

#include "support/RunProcess.hpp"

namespace {
norvane::test::ShellResult Cli(const std::string& args) {
  return norvane::test::RunShell(norvane::test::ShellQuote(NORVANE_CLI) + " " + args + " 2>&1");
}
}  // namespace

TEST(ManoeuvreCli, OneRowPerCommandModeAndKindOfError) {
  struct Row { const char* args; int status; const char* out; };
  const Row rows[] = {
      {"wind known --tas 100 --track 0 --wind-speed 30 --wind-dir 90", 0,
       "ground_speed: 95\nheading: 017\nwca: +17\nhead_tail: -5\n"},
      {"wind known --tas 100 --track 90 --wind-speed 100 --wind-dir 0", 1, "message: Too strong wind for course\n"},
      {"wind unknown --tas 100 --gs 95 --track 0 --heading 17", 0,
       "wind_speed: 29\nwind_direction: 089\nwca: +17\nhead_tail: -5\n"},
      {"--json wind runway --runway 270 --wind-speed 20 --wind-dir 300", 0,
       "{\"crosswind\": \"+10\", \"head_tail\": \"-17\"}\n"},
      {"turn --tas 300", 0, "bank: 30.0\nrate: 2.10\nradius: 2.272\ng_load: 1.15\n"},  // 30 degrees by default
      {"turn --tas 120 --max-bank ul --radius-unit m --intercept 90 --distance 5", 0,
       "bank: 18.2\nrate: 3.00\nradius: 1179.0\ng_load: 1.05\nanticipation: 7.3\nfinal_distance: 4.3\n"},
      {"holding --outbound 180 --track 110", 0,
       "direct: 290 -> 110\nteardrop: 110 -> 180\nparallel: 180 -> 290\nentry: Direct and Teardrop\n"},
      {"holding --outbound 180 --left --track 100 --json", 0,
       "{\"direct\": \"250 -> 070\", \"teardrop\": \"180 -> 250\", \"parallel\": \"070 -> 180\", "
       "\"entry\": \"Parallel\"}\n"},
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
      {"racetrack --course 360 --tas 100 --wind 270", 2, "error: --wind: expected DIR/SPEED, got \"270\"\n"},
      {"wind known --tas 49 --track 0 --wind-speed 30 --wind-dir 90", 2,
       "error: --tas: 49 is out of range (50 to 1500 kt)\n"},
      {"wind known --tas 100 --track 12.5 --wind-speed 30 --wind-dir 90", 2,
       "error: --track: 12.5 is not a whole number (0 to 360 degrees)\n"},
      {"wind unknown --tas 100 --gs fast --track 0 --heading 0", 2, "error: --gs: expected a number, got \"fast\"\n"},
      {"holding", 2, "error: --outbound is required\n"},
      {"turn --tas 120 --intercept 90", 2, "error: --intercept requires --distance\n"},
  };
  for (const Row& r : rows) {
    const auto run = Cli(r.args);
    EXPECT_EQ(run.status, r.status) << r.args;
    EXPECT_EQ(run.out, r.out) << r.args;
  }
  const auto bad = Cli("turn --tas 120 --max-bank 45");
  EXPECT_EQ(bad.out.rfind("error: --max-bank: 45 not in", 0), 0u) << bad.out;
  double xw = 0, ht = 0;  // --raw: the unrounded values behind the signed whole numbers
  const auto raw = Cli("wind runway --runway 270 --wind-speed 20 --wind-dir 300 --raw");
  ASSERT_EQ(std::sscanf(raw.out.c_str(), "crosswind: %lf\nhead_tail: %lf", &xw, &ht), 2) << raw.out;
  EXPECT_NEAR(xw, 10, 1e-12);           // 20 sin 30
  EXPECT_NEAR(ht, -10 * std::sqrt(3.0), 1e-12);  // -20 cos 30
  EXPECT_EQ(Cli("holding --help").status, 0);
}
