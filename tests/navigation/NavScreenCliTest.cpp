// norvane-cli tracks, point and intersection: the built binary, its output and exit status.
#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <sys/wait.h>

#include "support/RunProcess.hpp"

namespace {

using ScreenRun = norvane::test::ShellResult;

ScreenRun Cli(const std::string& args) {
  return norvane::test::RunShell(norvane::test::ShellQuote(NORVANE_CLI) + " " + args + " 2>&1");
}

}  // namespace

TEST(NavScreenCli, CommandsPrintTheScreensTexts) {
  struct Row { const char* args; int status; const char* out; };
  const Row rows[] = {
      {"tracks --from 45.5,7.25 --to 45.5,7.25", 0,
       "gc_dist: 0\ngc_trk_ini: ND\ngc_trk_fin: ND\nrl_dist: 0\nrl_trk_ini: ND\nrl_trk_fin: ND\n"
       "sph_dist: 0\nsph_trk_ini: ND\nsph_trk_fin: ND\n"},
      // Due north along a meridian: RL and SPH 360.0, GC 000.0; 600 NM are 1111 km.
      {"tracks --from 0,20 --to 10,20 --unit km", 0,
       "gc_dist: 1106\ngc_trk_ini: 000.0\ngc_trk_fin: 000.0\nrl_dist: 1111\nrl_trk_ini: 360.0\nrl_trk_fin: 360.0\n"
       "sph_dist: 1111\nsph_trk_ini: 360.0\nsph_trk_fin: 360.0\n"},
      {"--json tracks --from 0,20 --to -10,20 --unit m", 0,
       "{\"gc_dist\": \"1105855\", \"gc_trk_ini\": \"180.0\", \"gc_trk_fin\": \"180.0\", \"rl_dist\": \"1111200\", "
       "\"rl_trk_ini\": \"180.0\", \"rl_trk_fin\": \"180.0\", \"sph_dist\": \"1111200\", \"sph_trk_ini\": \"180.0\", "
       "\"sph_trk_fin\": \"180.0\"}\n"},
      {"tracks --from 90,0 --to 0,0", 2,
       "error: --from latitude: 90 is out of range (-89.999997 to 89.999997 degrees, 89°59'59.99\")\n"},
      {"tracks --from 0,0 --to 0,1 --mv-year 2010", 2, nullptr},
      {"intersection --p1 0,0 --track1 0 --p2 0,1 --track2 0 --mv-model igrf14 --mv-year 2009", 2,
       "error: --mv-year: 2009 is out of range (2025 to 2029)\n"},
      // 60 NM due north on the sphere is one degree; 111120 m is the same distance.
      {"point --from 45,7 --track 360 --distance 60 --model sphere", 0, "latitude: N46 00 00.00\nlongitude: E007 00 00.00\n"},
      // The hemisphere forms pilots write, without the comma too.
      {"point --from '44 30 00.0S 7 30E' --track 180 --distance 30 --model sphere", 0,
       "latitude: S45 00 00.00\nlongitude: E007 30 00.00\n"},
      {"point --from 45,7 --track 0 --distance 111120 --unit m --model sphere", 2,
       "error: --distance: 111120 is out of range (0 to 10000 m)\n"},
      {"point --from 45,7 --track 0 --distance 111.12 --unit km --model sphere", 0,
       "latitude: N46 00 00.00\nlongitude: E007 00 00.00\n"},
      // Magnetic 350 with 10 degrees east variation is true north.
      {"point --from 45,7 --track 350 --distance 60 --model sphere --magnetic --variation 10", 0,
       "latitude: N46 00 00.00\nlongitude: E007 00 00.00\nvariation: 10.0\n"},
      {"point --from 45,7 --track 90 --distance 60 --variation 3", 2, "error: --variation requires --magnetic\n"},
      {"point --from 45,7 --track 361 --distance 60", 2, "error: --track: 361 is out of range (0 to 360 degrees)\n"},
      {"point --from 45,7 --track 90 --distance 5401", 2, "error: --distance: 5401 is out of range (0 to 5400 NM)\n"},
      // E. Williams' formulary example: REO on 051 and BKE on 137 meet at 43.572 N 116.189 W.
      {"intersection --p1 42.6,-117.866 --track1 51 --p2 44.84,-117.806 --track2 137", 0,
       "latitude: N43 34 18.84\nlongitude: W116 11 19.53\n"},
      {"intersection --p1 0,0 --track1 45 --p2 0,10 --track2 135", 1,
       "latitude: Not calculable\nlongitude: Not calculable\n"},
      {"intersection --p1 10,0 --track1 0 --p2 20,90 --track2 360", 0,
       "latitude: N90 00 00.00\nlongitude: Not calculable\n"},
      // Magnetic tracks with variations given: 041 + 10E and 147 - 10W are the example's true tracks.
      {"intersection --p1 42.6,-117.866 --track1 41 --p2 44.84,-117.806 --track2 147 --magnetic --var1 10 --var2 -10",
       0, "latitude: N43 34 18.84\nlongitude: W116 11 19.53\n"},
  };
  for (const Row& r : rows) {
    const ScreenRun run = Cli(r.args);
    EXPECT_EQ(run.status, r.status) << r.args << "\n" << run.out;
    if (!r.out) continue;
    EXPECT_EQ(run.out, r.out) << r.args;
  }
}

TEST(NavScreenCli, MagneticTracksDependOnYearAndModel) {
  const ScreenRun trueTracks = Cli("tracks --from 51.5,-0.5 --to 40.6,-73.8");
  const ScreenRun igrf = Cli("tracks --from 51.5,-0.5 --to 40.6,-73.8 --magnetic");
  const ScreenRun wmm = Cli("tracks --from 51.5,-0.5 --to 40.6,-73.8 --magnetic --mv-model wmm2005 --mv-year 2009");
  EXPECT_EQ(igrf.status, 0);
  EXPECT_NE(trueTracks.out, igrf.out);
  EXPECT_NE(igrf.out, wmm.out);
  // Distances do not depend on the tracks' reference.
  EXPECT_EQ(trueTracks.out.substr(0, trueTracks.out.find('\n')), igrf.out.substr(0, igrf.out.find('\n')));
  const ScreenRun point = Cli("point --from 51.5,-0.5 --track 90 --distance 10 --magnetic");
  EXPECT_EQ(point.status, 0);
  // The variation at the origin on 1 January 2005 by IGRF-10, as "magvar" shows it (2.6W).
  EXPECT_EQ(Cli("magvar --at 51.5,-0.5 --date 2005-01-01").out, "variation: 2.6W\n");
  EXPECT_NE(point.out.find("variation: -2.6\n"), std::string::npos) << point.out;
}
