// norvane-cli atmosphere, speed, changeover, density-altitude, stall and descent, run as a user
// would: one row per command and mode, one per kind of error. The values are the model tests'.
#include <gtest/gtest.h>

#include "support/RunProcess.hpp"

using norvane::test::RunCli;

TEST(AtmosphereCli, OneRowPerCommandAndMode) {
  struct Row { std::vector<std::string> args; const char* out; int status; };
  const Row rows[] = {
      {{"atmosphere", "--altitude", "11000", "--geopotential", "--scientific"},
       "temperature: -56.5\npressure: 2.2632E+2\ndensity: 3.6392E-1\nsound: 1062.3\ntheta: 7.5187E-1\n"
       "delta: 2.2336E-1\nsigma: 2.9708E-1\n", 0},
      {{"atmosphere", "--altitude", "0", "--feet", "--us", "--disa", "10", "--mslp", "29.53"},
       "temperature: 77.0\npressure: 29.5300\ndensity: 0.0022671\nsound: 672.9\ntheta: 1.0347041\n"
       "delta: 0.9869239\nsigma: 0.9538223\n", 0},
      {{"speed", "--fl", "350", "--mach", "0.80"}, "cas: 272\ntas: 461\nmach: 0.800\neas: 295\ntat: -26.3\nq: 10681\n", 0},
      {{"speed", "--fl", "0", "--cas", "250", "--us"}, "cas: 250\ntas: 250\nmach: 0.378\neas: 250\ntat: 73.8\nq: 211.6\n", 0},
      {{"speed", "--fl", "350", "--tas", "461.135"}, "cas: 272\ntas: 461\nmach: 0.800\neas: 295\ntat: -26.3\nq: 10681\n", 0},
      {{"changeover", "--ias", "400", "--mach", "0.50"},
       "altitude: NA\nflight_level: NA\nmessage: No calculable changeover level\n", 1},
      {{"--json", "changeover", "--ias", "250", "--mach", "0.5"}, "{\"altitude\": \"15351\", \"flight_level\": \"154\"}\n", 0},
      {{"density-altitude", "--qnh", "29.92", "--temperature", "86", "--dewpoint", "50", "--elevation", "5000", "--us"},
       "pressure: 24.896\nhumidity: 29%\ndensity_altitude: 7982\n", 0},
      {{"stall", "--vs", "60", "--mtow", "4000", "--weight", "1000", "--altitude", "0", "--us"}, "vs_ktas: 30.0\nvs_kcas: 30.0\n", 0},
      {{"stall", "--clmax", "1.6", "--area", "16.2", "--mtow", "1111", "--weight", "1000", "--altitude", "0", "--bank", "0"},
       "vs_ktas: 48.3\nvs_kcas: 48.3\n", 0},
      {{"descent", "--from", "35000", "--to", "3000", "--ias", "250", "--rate", "2000"},
       "altitude_to_lose: 32000\ntime: 16:00\ndistance: 89.2\nrod_top: 2000\nrod_bottom: 2000\nangle: 3.38\n"
       "gradient: 359\nmean_gs: 335\ntas_top: 427\ntas_bottom: 261\nchangeover: None\n", 0},
      {{"descent", "--from", "35000", "--to", "3000", "--ias", "280", "--mach", "0.78", "--wind", "-60", "--disa", "20",
        "--distance", "120"},
       "altitude_to_lose: 32000\ntime: 22:01\ndistance: 120.0\nrod_top: 1454\nrod_bottom: 1454\nangle: 2.71\n"
       "gradient: 267\nmean_gs: 327\ntas_top: 470\ntas_bottom: 302\nchangeover: 32464\n", 0},
      {{"--json", "descent", "--from", "37000", "--to", "-1000", "--ias", "280", "--mach", "0.78", "--angle", "3", "--disa", "15"},
       "{\"altitude_to_lose\": \"38000\", \"time\": \"20:35\", \"distance\": \"126.5\", \"rod_top\": \"2293\", "
       "\"rod_bottom\": \"1427\", \"angle\": \"3.00\", \"gradient\": \"300\", \"mean_gs\": \"369\", \"tas_top\": "
       "\"463\", \"tas_bottom\": \"283\", \"changeover\": \"32464\"}\n", 0},
      {{"descent", "--from", "3000", "--to", "3000", "--ias", "250", "--rate", "1000"},
       "message: Final altitude must be below initial altitude\n", 1},
  };
  for (const Row& r : rows) {
    const auto run = RunCli(r.args);
    EXPECT_EQ(run.out, r.out) << r.args[0];
    EXPECT_EQ(run.status, r.status) << r.args[0];
  }
  EXPECT_NE(RunCli({"--raw", "speed", "--fl", "350", "--mach", "0.8"}).out.find("tas: 461.13"), std::string::npos);
}

// Bad input: one line naming the option (and its range), exit status 2.
TEST(AtmosphereCli, OneRowPerKindOfError) {
  struct Row { std::vector<std::string> args; const char* message; };
  const Row rows[] = {
      {{"atmosphere", "--altitude", "84853", "--geopotential"},
       "error: --altitude: 84853 is out of range (-500 to 84852 m, geopotential)\n"},
      {{"speed", "--fl", "100", "--cas", "250", "--disa", "10.5"}, "error: --disa: 10.5 is not a whole number (-90 to 40 degrees C)\n"},
      {{"atmosphere", "--altitude", "ten"}, "error: --altitude: expected a number, got \"ten\"\n"},
      {{"atmosphere"}, "error: --altitude is required\n"},
      {{"speed", "--fl", "350", "--cas", "250", "--mach", "0.8"}, "excludes"},
      {{"stall", "--clmax", "1.6", "--mtow", "1000", "--weight", "1000", "--altitude", "0"}, "--clmax requires --area"},
      {{"descent", "--from", "35000", "--to", "3000", "--ias", "250"}, "error: one of --rate, --angle or --distance is required\n"},
  };
  for (const Row& r : rows) {
    const auto run = RunCli(r.args);
    EXPECT_EQ(run.status, 2) << r.message;
    EXPECT_NE(run.err.find(r.message), std::string::npos) << run.err;
    EXPECT_EQ(run.err.find('\n'), run.err.size() - 1) << "one line: " << run.err;
  }
}
