// norvane-cli tracks, point and intersection: one row per command and mode, one per kind of error.
#include <gtest/gtest.h>

#include <cstdio>
#include <string>

#include "support/RunProcess.hpp"

using norvane::test::RunCliLine;

TEST(NavScreenCli, OneRowPerCommandModeAndKindOfError) {
  struct Row { const char* args; int status; const char* out; };
  const Row rows[] = {
      // Due north along a meridian: RL and SPH 360.0, GC 000.0; 600 NM are 1111 km.
      {"tracks --from 0,20 --to 10,20 --unit km", 0,
       "gc_dist: 1106\ngc_trk_ini: 000.0\ngc_trk_fin: 000.0\nrl_dist: 1111\nrl_trk_ini: 360.0\nrl_trk_fin: 360.0\n"
       "sph_dist: 1111\nsph_trk_ini: 360.0\nsph_trk_fin: 360.0\n"},
      {"tracks --from 90,0 --to 0,0", 2,
       "error: --from latitude: 90 is out of range (-89.999997 to 89.999997 degrees, 89°59'59.99\")\n"},
      {"intersection --p1 0,0 --track1 0 --p2 0,1 --track2 0 --mv-model igrf14 --mv-year 2009", 2,
       "error: --mv-year: 2009 is out of range (2025 to 2029)\n"},
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
      {"point --from 45,7 --track 0 --distance 111120 --unit m --model sphere", 2,
       "error: --distance: 111120 is out of range (0 to 10000 m)\n"},
      {"point --from 45,7 --track 90 --distance 60 --variation 3", 2, "error: --variation requires --magnetic\n"},
      // Magnetic tracks with variations given: 041 + 10E and 147 - 10W are E. Williams' example's
      // true tracks (REO on 051 and BKE on 137 meet at 43.572 N 116.189 W).
      {"intersection --p1 42.6,-117.866 --track1 41 --p2 44.84,-117.806 --track2 147 --magnetic --var1 10 --var2 -10",
       0, "latitude: N43 34 18.84\nlongitude: W116 11 19.53\n"},
      {"intersection --p1 0,0 --track1 45 --p2 0,10 --track2 135", 1,
       "latitude: Not calculable\nlongitude: Not calculable\n"},
  };
  for (const Row& r : rows) {
    const auto run = RunCliLine(r.args);
    EXPECT_EQ(run.status, r.status) << r.args << "\n" << run.out;
    EXPECT_EQ(run.out, r.out) << r.args;
  }
  // Magnetic tracks: the year and model of the options; the origin's variation is written out.
  const auto wmm = RunCliLine("point --from 51.5,-0.5 --track 90 --distance 10 --magnetic --mv-model wmm2005 --mv-year 2009");
  const double v = std::stod(RunCliLine("--raw magvar --at 51.5,-0.5 --date 2009-01-01 --model wmm2005").out.substr(11));
  char line[32];
  std::snprintf(line, sizeof line, "variation: %.1f\n", v);
  EXPECT_NE(wmm.out.find(line), std::string::npos) << wmm.out << line;
}
