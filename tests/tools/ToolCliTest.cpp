// norvane-cli convert, angle and calc, end to end: one row per command and mode, one per kind of
// error. The factors and texts are the model tests'.
#include <gtest/gtest.h>

#include "support/RunProcess.hpp"

TEST(ToolCli, OneRowPerCommandModeAndKindOfError) {
  struct Row { std::vector<std::string> args; int status; const char *out, *err; };
  const Row rows[] = {
      {{"convert", "--type", "speed", "--from", "KT", "--to", "M/S", "1"}, 0, "result: 0.514444\n", ""},  // any case
      {{"--raw", "convert", "--type", "Weight", "--from", "lb", "--to", "kg", "1"}, 0, "result: 0.45359237000000002\n", ""},
      {{"--json", "convert", "--type", "Temperature", "--from", "\u00B0K", "--to", "\u00B0C", "0"}, 0,
       "{\"result\": \"-273.15\"}\n", ""},
      {{"angle", "--dms", "10", "20", "30.5"}, 0, "d: 10.34180556\ndm: 10 20.508333\ndms: 10 20 30.5000\n", ""},
      {{"angle", "--dm", "45", "30"}, 0, "d: 45.50000000\ndm: 45 30.000000\ndms: 45 30 0.0000\n", ""},
      {{"calc", "2", "*", "sin(30)"}, 0, "result: 1\n", ""},  // the words are joined
      {{"calc", "--rad", "cos(pi)"}, 0, "result: -1\n", ""},
      {{"calc", "1/(2-2)"}, 1, "message: Division by zero\n", ""},
      {{"calc", "2+"}, 2, "", "Syntax error"},
      {{"convert", "--type", "Volume", "--from", "L", "--to", "L", "1"}, 2, "", "--type"},
      {{"convert", "--type", "Weight", "--from", "kg", "--to", "lb", "1e3"}, 2, "", "VALUE"},
      {{"angle", "--dms", "45", "30", "60"}, 2, "", "(0 to 59.99)"},  // the caption's "0 to 60" is not the check
      {{"angle", "--dm", "45.5", "3"}, 2, "", "--dm degrees"},
  };
  for (const Row& r : rows) {
    const auto res = norvane::test::RunCli(r.args);
    EXPECT_EQ(res.status, r.status) << r.args[1] << res.err;
    EXPECT_EQ(res.out, r.out) << r.args[1];
    EXPECT_NE(res.err.find(r.err), std::string::npos) << res.err;
  }
}
