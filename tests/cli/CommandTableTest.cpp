// norvane-cli as a user runs it, row by row from the golden table data/commands.txt.
#include <gtest/gtest.h>

#include "support/Golden.hpp"
#include "support/RunProcess.hpp"

TEST(CliCommands, EveryRowOfTheCommandTable) {
  for (const norvane::test::GoldenRow& r : norvane::test::ReadGolden("cli/data/commands.txt")) {
    const auto run = norvane::test::RunCliLine(r[0]);
    EXPECT_EQ(run.status, int(r.Num(1))) << r.where << "\n" << run.out;
    const std::string& want = r[2];
    if (want.ends_with("...")) {
      EXPECT_EQ(run.out.substr(0, want.size() - 3), want.substr(0, want.size() - 3)) << r.where;
    } else if (want != "*") {
      EXPECT_EQ(run.out, want) << r.where;
    }
  }
}
