// `norvane-cli describe --json` against the command line itself: every calculator is listed, and
// each number option takes the ends of its listed range and refuses just beyond them, so the
// catalogue a form or a script is built from cannot drift from the checks.
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <gtest/gtest.h>

#include <cmath>
#include <set>

#include "support/Golden.hpp"
#include "support/RunProcess.hpp"

namespace {

using norvane::test::RunCliLine;

std::vector<std::string> Words(const std::string& line) {  // shell words, quotes kept together
  std::vector<std::string> out;
  std::string w;
  char quote = 0;
  bool any = false;
  for (char c : line) {
    if ((c == '"' || c == '\'') && (!quote || quote == c)) {
      quote = quote ? 0 : c;
      any = true;
    } else if (c == ' ' && !quote) {
      if (any) out.push_back(w);
      w.clear();
      any = false;
    } else {
      w += c;
      any = true;
    }
  }
  if (any) out.push_back(w);
  return out;
}

std::string Line(const std::vector<std::string>& words) {
  std::string out;
  for (const std::string& w : words) out += (out.empty() ? "" : " ") + norvane::test::ShellQuote(w);
  return out;
}

std::string Number(double v) { return QString::number(v, 'g', 15).toStdString(); }

}  // namespace

TEST(CliDescribe, ListsEveryCalculatorAndEachRangeHoldsAtItsEnds) {
  const auto run = norvane::test::RunShell(norvane::test::ShellQuote(NORVANE_CLI) + " describe --json");
  ASSERT_EQ(run.status, 0) << run.out;
  QJsonParseError error;
  const QJsonDocument doc = QJsonDocument::fromJson(QByteArray::fromStdString(run.out), &error);
  ASSERT_EQ(error.error, QJsonParseError::NoError) << error.errorString().toStdString();

  // The argument lines of the command table that succeed: each number option is tried in them.
  std::vector<std::vector<std::string>> good;
  for (const auto& r : norvane::test::ReadGolden("cli/data/commands.txt")) {
    if (r.Num(1) != 0) continue;
    std::vector<std::string> w = Words(r[0]);
    while (!w.empty() && (w[0] == "--raw" || w[0] == "--json")) w.erase(w.begin());
    good.push_back(w);
  }

  std::set<std::string> listed;
  for (const QJsonValue& c : doc.object()["commands"].toArray()) {
    const std::string name = c["name"].toString().toStdString();
    listed.insert(name);
    EXPECT_FALSE(c["results"].toArray().isEmpty()) << name;
    const std::vector<std::string> path = Words(name);
    for (const QJsonValue& o : c["options"].toArray()) {
      if (o["kind"] != "number" || !o["name"].toString().startsWith("--")) continue;
      const std::string option = o["name"].toString().toStdString();
      bool tried = false;
      for (const auto& base : good) {
        if (!std::equal(path.begin(), path.end(), base.begin(), base.begin() + std::min(base.size(), path.size())))
          continue;
        // --feet and --geopotential move the altitude's range away from the listed metric one.
        if (std::find(base.begin(), base.end(), "--feet") != base.end() ||
            std::find(base.begin(), base.end(), "--geopotential") != base.end())
          continue;
        const auto at = std::find(base.begin(), base.end(), option);
        if (at == base.end() || at + 1 == base.end()) continue;
        tried = true;
        const bool us = std::find(base.begin(), base.end(), "--us") != base.end();
        const QJsonObject q = us && o["us"].isObject() ? o["us"].toObject() : o.toObject();
        const double lo = q["min"].toDouble(), hi = q["max"].toDouble();
        const double step = q["whole"].toBool() ? 1 : std::pow(10.0, -q["decimals"].toInt() - 1);
        const std::string range = Number(lo) + " to " + Number(hi);
        const auto with = [&](double v) {
          std::vector<std::string> w = base;
          w[size_t(at - base.begin()) + 1] = Number(v);
          return RunCliLine(Line(w));
        };
        for (double v : {lo, hi}) {
          const auto r = with(v);
          EXPECT_NE(r.status, 2) << Line(base) << " with " << option << " " << Number(v) << "\n" << r.out;
        }
        for (double v : {lo - step, hi + step}) {
          const auto r = with(v);
          EXPECT_EQ(r.status, 2) << Line(base) << " with " << option << " " << Number(v) << "\n" << r.out;
          EXPECT_NE(r.out.find(option + ": "), std::string::npos) << r.out;
          EXPECT_NE(r.out.find(range), std::string::npos) << "range " << range << ": " << r.out;
        }
        break;
      }
      EXPECT_TRUE(tried) << name << " " << option << ": no succeeding row of the command table uses it";
    }
  }
  for (const char* calculator :
       {"atmosphere",   "speed",       "changeover", "density-altitude", "stall",     "descent", "wind known",
        "wind unknown", "wind runway", "turn",       "holding",          "racetrack", "tracks",  "point",
        "intersection", "magvar",      "sun",        "convert",          "angle",     "calc",    "tsd"})
    EXPECT_EQ(listed.count(calculator), 1u) << calculator << " is not described";
}
