// norvane-cli convert and angle, end to end: the built binary with real arguments.
#include <gtest/gtest.h>

#include "support/RunProcess.hpp"

namespace norvane {
namespace {

test::ProcessResult Cli(const std::vector<std::string>& args) { return test::RunProcess(NORVANE_CLI, args); }

TEST(ToolCli, ConvertPrintsTheScreenText) {
  struct Row {
    std::vector<std::string> args;
    const char* out;
  } rows[] = {
      {{"convert", "--type", "Length-Distance", "--from", "nm", "--to", "km", "100"}, "result: 185.2\n"},
      {{"convert", "--type", "Temperature", "--from", "\u00B0C", "--to", "\u00B0F", "0"}, "result: 32.0\n"},
      {{"convert", "--type", "Temperature", "--from", "\u00B0K", "--to", "\u00B0C", "0"}, "result: -273.15\n"},
      {{"convert", "--type", "Temperature", "--from", "\u00B0F", "--to", "\u00B0C", "-40"}, "result: -40.0\n"},
      {{"convert", "--type", "Speed", "--from", "kt", "--to", "km/h", "100"}, "result: 185.2\n"},
      {{"convert", "--type", "Fuel (JetA1)", "--from", "L", "--to", "L", "1000"}, "result: 1000.0\n"},
      {{"convert", "--type", "speed", "--from", "KT", "--to", "M/S", "1"}, "result: 0.514444\n"},
      {{"convert", "--type", "Length-Distance", "--from", "m", "--to", "km", "0.01"}, "result: 1.00 E-5\n"},
      {{"--raw", "convert", "--type", "Weight", "--from", "lb", "--to", "kg", "1"}, "result: 0.45359237000000002\n"},
      {{"--json", "convert", "--type", "Weight", "--from", "lb", "--to", "kg", "1"}, "{\"result\": \"0.453592\"}\n"},
  };
  for (const Row& r : rows) {
    const auto res = Cli(r.args);
    EXPECT_EQ(res.status, 0) << res.err;
    EXPECT_EQ(res.out, r.out);
  }
}

TEST(ToolCli, AnglePrintsAllThreeForms) {
  struct Row {
    std::vector<std::string> args;
    const char* out;
  } rows[] = {
      {{"angle", "--dm", "45", "30"}, "d: 45.50000000\ndm: 45 30.000000\ndms: 45 30 0.0000\n"},
      {{"angle", "--d", "45.5"}, "d: 45.50000000\ndm: 45 30.000000\ndms: 45 30 0.0000\n"},
      {{"angle", "--dms", "10", "20", "30.5"}, "d: 10.34180556\ndm: 10 20.508333\ndms: 10 20 30.5000\n"},
      {{"angle", "--dm", "7", "1"}, "d: 7.01666667\ndm: 7 1.000000\ndms: 7 1 0.0000\n"},
  };
  for (const Row& r : rows) {
    const auto res = Cli(r.args);
    EXPECT_EQ(res.status, 0) << res.err;
    EXPECT_EQ(res.out, r.out);
  }
}

TEST(ToolCli, BadInputIsAUsageErrorNamingTheOption) {
  struct Row {
    std::vector<std::string> args;
    const char* mentions;
  } rows[] = {
      {{"convert", "--type", "Volume", "--from", "L", "--to", "L", "1"}, "--type"},
      {{"convert", "--type", "Weight", "--from", "st", "--to", "kg", "1"}, "--from"},
      {{"convert", "--type", "Weight", "--from", "kg", "--to", "oz", "1"}, "--to"},
      {{"convert", "--type", "Weight", "--from", "kg", "--to", "lb", "1e3"}, "VALUE"},
      {{"convert", "--type", "Weight", "--from", "kg", "--to", "lb", "100000000"}, "VALUE"},
      {{"convert", "--type", "Weight", "--from", "kg", "--to", "lb"}, "VALUE"},
      {{"angle", "--d", "180.5"}, "--d"},
      {{"angle", "--dm", "45.5", "3"}, "--dm degrees"},
      {{"angle", "--dm", "45", "60"}, "--dm minutes"},
      {{"angle", "--dms", "45", "30", "60"}, "(0 to 59.99)"},  // the caption's "0 to 60" is not the check
      {{"angle", "--dms", "45", "30.5", "0"}, "--dms minutes"},
      {{"angle", "--dms", "45", "30"}, "--dms"},
      {{"angle"}, "--d"},
      {{"angle", "--d", "1", "--dm", "1", "2"}, "excludes"},
  };
  for (const Row& r : rows) {
    const auto res = Cli(r.args);
    EXPECT_EQ(res.status, 2) << r.mentions;
    EXPECT_EQ(res.out, "");
    EXPECT_EQ(res.err.rfind("error: ", 0), 0u) << res.err;
    EXPECT_NE(res.err.find(r.mentions), std::string::npos) << res.err;
  }
}

TEST(ToolCli, HelpListsTypesUnitsAndRanges) {
  const auto conv = Cli({"convert", "--help"});
  EXPECT_EQ(conv.status, 0);
  for (const char* s : {"Length-Distance: ft m km nm sm", "Temperature: \u00B0C \u00B0F \u00B0K", "-99999999 to 99999999"})
    EXPECT_NE(conv.out.find(s), std::string::npos) << s;
  const auto ang = Cli({"angle", "--help"});
  for (const char* s : {"0 to 180", "59.999999", "0 to 59.99"}) EXPECT_NE(ang.out.find(s), std::string::npos) << s;
}

TEST(ToolCli, CalcPrintsTheResultLineOrFails) {
  struct Row {
    std::vector<std::string> args;
    int status;
    const char* out;
  } rows[] = {
      {{"calc", "-2^2"}, 0, "result: -4\n"},
      {{"calc", "2", "*", "sin(30)"}, 0, "result: 1\n"},
      {{"calc", "--rad", "cos(pi)"}, 0, "result: -1\n"},
      {{"--raw", "calc", "1/3"}, 0, "result: 0.33333333333333331\n"},
      {{"calc", "1/(2-2)"}, 1, "message: Division by zero\n"},
      {{"calc", "sqrt(-1)"}, 1, "message: Math error\n"},
      {{"calc", "2+"}, 2, ""},
  };
  for (const Row& r : rows) {
    const auto res = Cli(r.args);
    EXPECT_EQ(res.status, r.status) << r.args.back();
    EXPECT_EQ(res.out, r.out);
  }
  EXPECT_NE(Cli({"calc", "2+"}).err.find("Syntax error"), std::string::npos);
}

}  // namespace
}  // namespace norvane
