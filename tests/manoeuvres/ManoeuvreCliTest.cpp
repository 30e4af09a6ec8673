// norvane-cli wind, turn, holding and racetrack, run as a user would: one row per command and
// mode, one per kind of error the commands add. The values are the model tests'.
#include <gtest/gtest.h>

#include "support/RunProcess.hpp"

TEST(ManoeuvreCli, OneRowPerCommandModeAndKindOfError) {
  struct Row { std::vector<std::string> args; int status; const char *out, *err; };
  const Row rows[] = {
      {{"wind", "known", "--tas", "100", "--track", "0", "--wind-speed", "30", "--wind-dir", "90"}, 0,
       "ground_speed: 95\nheading: 017\nwca: +17\nhead_tail: -5\n", ""},
      {{"wind", "unknown", "--tas", "100", "--gs", "95", "--track", "0", "--heading", "17"}, 0,
       "wind_speed: 29\nwind_direction: 089\nwca: +17\nhead_tail: -5\n", ""},
      {{"--json", "wind", "runway", "--runway", "270", "--wind-speed", "20", "--wind-dir", "300"}, 0,
       "{\"crosswind\": \"+10\", \"head_tail\": \"-17\"}\n", ""},
      {{"turn", "--tas", "300"}, 0, "bank: 30.0\nrate: 2.10\nradius: 2.272\ng_load: 1.15\n", ""},  // 30 degrees by default
      {{"turn", "--tas", "120", "--max-bank", "ul", "--radius-unit", "m", "--intercept", "90", "--distance", "5"}, 0,
       "bank: 18.2\nrate: 3.00\nradius: 1179.0\ng_load: 1.05\nanticipation: 7.3\nfinal_distance: 4.3\n", ""},
      {{"holding", "--outbound", "180", "--track", "110"}, 0,
       "direct: 290 -> 110\nteardrop: 110 -> 180\nparallel: 180 -> 290\nentry: Direct and Teardrop\n", ""},
      {{"holding", "--outbound", "180", "--left", "--track", "100", "--json"}, 0,
       "{\"direct\": \"250 -> 070\", \"teardrop\": \"180 -> 250\", \"parallel\": \"070 -> 180\", \"entry\": \"Parallel\"}\n", ""},
      {{"racetrack", "--course", "90", "--tas", "180", "--wind", "0/0"}, 0,
       "inbound_heading: 090\ninbound_gs: 180\noutbound_heading: 270\noutbound_correction: 0\n"
       "outbound_time: 1:00\noutbound_gs: 180\nbank: 25.0\nrate: 2.83\nradius: 1.01\npattern_time: 4:07\n"
       "length: 5.0\nwidth: 2.0\n", ""},
      {{"--json", "racetrack", "--course", "360", "--tas", "120", "--wind", "090/20", "--left", "--max-bank", "ul",
        "--rate", "1.5", "--leg", "2"}, 0,
       "{\"inbound_heading\": \"010\", \"inbound_gs\": \"118\", \"outbound_heading\": \"152\", "
       "\"outbound_correction\": \"-28\", \"outbound_time\": \"2:14\", \"outbound_gs\": \"112\", \"bank\": \"9.4\", "
       "\"rate\": \"1.50\", \"radius\": \"1.27\", \"pattern_time\": \"8:14\", \"length\": \"6.5\", \"width\": \"3.2\"}\n", ""},
      {{"racetrack", "--course", "360", "--tas", "100", "--wind", "360/60"}, 1, "message: No racetrack in this wind\n", ""},
      {{"racetrack", "--course", "360", "--tas", "100", "--wind", "270"}, 2, "", "error: --wind: expected DIR/SPEED, got \"270\"\n"},
      {{"turn", "--tas", "120", "--max-bank", "45"}, 2, "", "error: --max-bank: 45 not in"},
      {{"holding"}, 2, "", "error: --outbound is required\n"},
      {{"turn", "--tas", "120", "--intercept", "90"}, 2, "", "error: --intercept requires --distance\n"},
  };
  for (const Row& r : rows) {
    const auto run = norvane::test::RunCli(r.args);
    EXPECT_EQ(run.status, r.status) << r.args[0];
    EXPECT_EQ(run.out, r.out) << r.args[0];
    EXPECT_EQ(run.err.rfind(r.err, 0), 0u) << run.err;
  }
}
