// `norvane-cli describe --json` against the command line itself: every calculator is listed, and
// each number option takes the ends of its listed range and refuses just beyond them, so the
// catalogue a form or a script is built from cannot drift from the checks.
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <regex>
#include <set>

#include "support/Golden.hpp"
#include "support/RunProcess.hpp"

namespace {

using norvane::test::RunCliLine;

std::string Number(double v) { return QString::number(v, 'g', 15).toStdString(); }

}  // namespace

TEST(CliDescribe, ListsEveryCalculatorAndEachRangeHoldsAtItsEnds) {
  const auto run = norvane::test::RunShell(norvane::test::ShellQuote(NORVANE_CLI) + " describe --json");
  ASSERT_EQ(run.status, 0) << run.out;
  QJsonParseError error;
  const QJsonDocument doc = QJsonDocument::fromJson(QByteArray::fromStdString(run.out), &error);
  ASSERT_EQ(error.error, QJsonParseError::NoError) << error.errorString().toStdString();

  // The argument lines of the command table that succeed (as the shell reads them, without --raw
  // or --json): each number option is tried in them.
  std::vector<std::string> good;
  for (const auto& r : norvane::test::ReadGolden("cli/data/commands.txt")) {
    if (r.Num(1) != 0) continue;
    std::string line = r[0];
    while (line.starts_with("--raw ") || line.starts_with("--json ")) line.erase(0, line.find(' ') + 1);
    good.push_back(line);
  }

  std::set<std::string> listed;
  for (const QJsonValue& c : doc.object()["commands"].toArray()) {
    const std::string name = c["name"].toString().toStdString();
    listed.insert(name);
    EXPECT_FALSE(c["results"].toArray().isEmpty()) << name;
    for (const QJsonValue& o : c["options"].toArray()) {
      if (o["kind"] != "number" || !o["name"].toString().startsWith("--")) continue;
      const std::string option = o["name"].toString().toStdString();
      // The listed range, then each range that other options move it to ("--feet", "--unit=km").
      std::vector<std::pair<std::set<std::string>, QJsonObject>> ranges{{{}, o.toObject()}};
      std::set<std::string> movers;
      for (const QJsonValue& v : o["variants"].toArray()) {
        std::set<std::string> when;
        for (const QJsonValue& w : v["when"].toArray()) when.insert(w.toString().toStdString());
        movers.insert(when.begin(), when.end());
        ranges.emplace_back(when, v.toObject());
      }
      for (const auto& [when, described] : ranges) {
        bool tried = false;
        for (const std::string& base : good) {
          const auto has = [&base](std::string word) {
            if (const size_t eq = word.find('='); eq != word.npos) word[eq] = ' ';
            return (base + " ").find(" " + word + " ") != base.npos;
          };
          const bool same = std::all_of(movers.begin(), movers.end(),
                                        [&](const std::string& m) { return has(m) == (when.count(m) == 1); });
          std::smatch at;
          if (!base.starts_with(name + " ") || !same ||
              !std::regex_search(base, at, std::regex(" " + option + " ([^ ]+)")))
            continue;
          tried = true;
          const QJsonObject q = has("--us") && described["us"].isObject() ? described["us"].toObject() : described;
          const double lo = q["min"].toDouble(), hi = q["max"].toDouble();
          const double step = q["whole"].toBool() ? 1 : std::pow(10.0, -q["decimals"].toInt() - 1);
          const std::string range = Number(lo) + " to " + Number(hi);
          const auto with = [&](double v) {
            return RunCliLine(at.prefix().str() + " " + option + " " + Number(v) + at.suffix().str());
          };
          for (double v : {lo, hi}) {
            const auto r = with(v);
            EXPECT_NE(r.status, 2) << base << " with " << option << " " << Number(v) << "\n" << r.out;
          }
          for (double v : {lo - step, hi + step}) {
            const auto r = with(v);
            EXPECT_EQ(r.status, 2) << base << " with " << option << " " << Number(v) << "\n" << r.out;
            EXPECT_NE(r.out.find(option + ": "), std::string::npos) << r.out;
            EXPECT_NE(r.out.find(range), std::string::npos) << "range " << range << ": " << r.out;
          }
          break;
        }
        std::string where;
        for (const std::string& w : when) where += " " + w;
        EXPECT_TRUE(tried) << name << " " << option << where << ": no succeeding row of the command table uses it";
      }
    }
  }
  for (const char* calculator :
       {"atmosphere",   "speed",       "changeover", "density-altitude", "stall",     "descent", "wind known",
        "wind unknown", "wind runway", "turn",       "holding",          "racetrack", "tracks",  "point",
        "intersection", "magvar",      "sun",        "convert",          "angle",     "calc",    "tsd"})
    EXPECT_EQ(listed.count(calculator), 1u) << calculator << " is not described";
}
