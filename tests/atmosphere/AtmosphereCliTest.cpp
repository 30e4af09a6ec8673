// norvane-cli atmosphere, speed, changeover, density-altitude and stall, run as a user would:
// one row per command and mode, one per kind of error. The values are the model tests'.
#include <string>

#include <gtest/gtest.h>

#include "support/RunProcess.hpp"

namespace {
norvane::test::ShellResult Cli(const std::string& args) {
  return norvane::test::RunShell(norvane::test::ShellQuote(NORVANE_CLI) + " " + args + " 2>&1");
}
}  // namespace

TEST(AtmosphereCli, OneRowPerCommandAndMode) {
  struct Row { const char *args, *out; int status; };
  const Row rows[] = {
      {"atmosphere --altitude 0",
       "temperature: 15.0\npressure: 1013.250\ndensity: 1.224999\nsound: 1225.1\ntheta: 1.0000000\n"
       "delta: 1.0000000\nsigma: 1.0000000\n", 0},
      {"atmosphere --altitude 11000 --geopotential --scientific",
       "temperature: -56.5\npressure: 2.2632E+2\ndensity: 3.6392E-1\nsound: 1062.3\ntheta: 7.5187E-1\n"
       "delta: 2.2336E-1\nsigma: 2.9708E-1\n", 0},
      {"atmosphere --altitude 0 --feet --us --disa 10 --mslp 29.53",
       "temperature: 77.0\npressure: 29.5300\ndensity: 0.0022671\nsound: 672.9\ntheta: 1.0347041\n"
       "delta: 0.9869239\nsigma: 0.9538223\n", 0},
      {"speed --fl 350 --mach 0.80", "cas: 272\ntas: 461\nmach: 0.800\neas: 295\ntat: -26.3\nq: 10681\n", 0},
      {"speed --fl 0 --cas 250 --us", "cas: 250\ntas: 250\nmach: 0.378\neas: 250\ntat: 73.8\nq: 211.6\n", 0},
      {"speed --fl 350 --tas 461.135", "cas: 272\ntas: 461\nmach: 0.800\neas: 295\ntat: -26.3\nq: 10681\n", 0},
      {"changeover --ias 400 --mach 0.50",
       "altitude: NA\nflight_level: NA\nmessage: No calculable changeover level\n", 1},
      {"density-altitude --qnh 29.92 --temperature 86 --dewpoint 50 --elevation 5000 --us",
       "pressure: 24.896\nhumidity: 29%\ndensity_altitude: 7982\n", 0},
      {"stall --vs 60 --mtow 4000 --weight 1000 --altitude 0 --us", "vs_ktas: 30.0\nvs_kcas: 30.0\n", 0},
      {"stall --clmax 1.6 --area 16.2 --mtow 1111 --weight 1000 --altitude 0 --bank 0",
       "vs_ktas: 48.3\nvs_kcas: 48.3\n", 0},
      {"descent --from 35000 --to 3000 --ias 300 --mach 0.78 --rate 2000",
       "altitude_to_lose: 32000\ntime: 16:00\ndistance: 105.0\nrod_top: 2000\nrod_bottom: 2000\nangle: 2.87\n"
       "gradient: 305\nmean_gs: 394\ntas_top: 450\ntas_bottom: 313\nchangeover: 29314\n", 0},
      {"descent --from 35000 --to 3000 --ias 280 --mach 0.78 --wind -60 --disa 20 --distance 120",
       "altitude_to_lose: 32000\ntime: 22:01\ndistance: 120.0\nrod_top: 1454\nrod_bottom: 1454\nangle: 2.71\n"
       "gradient: 267\nmean_gs: 327\ntas_top: 470\ntas_bottom: 302\nchangeover: 32464\n", 0},
      {"--json descent --from 37000 --to -1000 --ias 280 --mach 0.78 --angle 3 --disa 15",
       "{\"altitude_to_lose\": \"38000\", \"time\": \"20:35\", \"distance\": \"126.5\", \"rod_top\": \"2293\", "
       "\"rod_bottom\": \"1427\", \"angle\": \"3.00\", \"gradient\": \"300\", \"mean_gs\": \"369\", \"tas_top\": "
       "\"463\", \"tas_bottom\": \"283\", \"changeover\": \"32464\"}\n", 0},
      {"descent --from 3000 --to 3000 --ias 250 --rate 1000",
       "message: Final altitude must be below initial altitude\n", 1},
      {"--json changeover --ias 250 --mach 0.5", "{\"altitude\": \"15351\", \"flight_level\": \"154\"}\n", 0},
      {"--raw changeover --ias 50 --mach 3", "altitude: >65000\nflight_level: >650\n", 0},
  };
  for (const Row& r : rows) {
    const auto run = Cli(r.args);
    EXPECT_EQ(run.out, r.out) << r.args;
    EXPECT_EQ(run.status, r.status) << r.args;
  }
  EXPECT_NE(Cli("--raw speed --fl 350 --mach 0.8").out.find("tas: 461.13"), std::string::npos);  // full precision
  EXPECT_EQ(Cli("stall --help").status, 0);
  EXPECT_NE(Cli("--raw descent --from 35000 --to 3000 --ias 250 --angle 3 --wind -20").out.find("time: 1175.97"),
            std::string::npos);  // seconds
}

// Bad input: one line naming the option (and its range), exit status 2.
TEST(AtmosphereCli, OneRowPerKindOfError) {
  struct Row { const char *args, *message; };
  const Row rows[] = {
      {"atmosphere --altitude 84853 --geopotential", "error: --altitude: 84853 is out of range (-500 to 84852 m, geopotential)"},
      {"atmosphere --altitude 0 --mslp 1013 --us", "error: --mslp: 1013 is out of range (25.69 to 32.01 inHg)"},
      {"speed --fl 100 --cas 250 --disa 10.5", "error: --disa: 10.5 is not a whole number (-90 to 40 degrees C)"},
      {"atmosphere --altitude ten", "error: --altitude: expected a number, got \"ten\""},
      {"atmosphere", "--altitude is required"},
      {"speed --fl 35.5 --cas 250", "error: --fl: 35.5 is not a whole number (0 to 650)"},
      {"speed --fl 350 --cas 250 --mach 0.8", "excludes"},
      {"stall --clmax 1.6 --mtow 1000 --weight 1000 --altitude 0", "--clmax requires --area"},
      {"descent --from 35000 --to 3000 --ias 250", "error: one of --rate, --angle or --distance is required"},
      {"stall --vs 60 --mtow 999 --weight 1000 --altitude 0 --us", "error: --mtow: 999 is out of range (1000 to 1500000 lb)"},
  };
  for (const Row& r : rows) {
    const auto run = Cli(r.args);
    EXPECT_EQ(run.status, 2) << r.args;
    EXPECT_NE(run.out.find(r.message), std::string::npos) << r.args << "\n" << run.out;
    EXPECT_EQ(run.out.find('\n'), run.out.size() - 1) << "one line: " << run.out;
  }
}
