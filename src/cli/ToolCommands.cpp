#include <cmath>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "cli/CliSupport.hpp"
#include "cli/Commands.hpp"
#include "tools/TinyCalculator.hpp"
#include "tools/UnitConversion.hpp"

namespace norvane::cli {
namespace {

constexpr double kMaxConvertValue = 99999999;

std::string UnitTableHelp() {
  std::string s = "Unit types and their units:\n";
  for (const UnitType& t : UnitTable()) {
    s += "  " + t.name + ":";
    for (const UnitDef& u : t.units) s += " " + u.name;
    s += "\n";
  }
  return s;
}

std::string Join(const std::vector<std::string>& items) {
  std::string s;
  for (const auto& i : items) s += (s.empty() ? "" : ", ") + i;
  return s;
}

int RequireUnit(const char* option, int type, const std::string& name) {
  if (const auto u = FindUnit(type, name)) return *u;
  std::vector<std::string> names;
  for (const UnitDef& d : UnitTable()[type].units) names.push_back(d.name);
  throw UsageError(std::string(option) + ": \"" + name + "\" is not a unit of " + UnitTable()[type].name +
                   " (" + Join(names) + ")");
}

double RequireNumber(const std::string& option, const std::string& text) {
  const auto v = ParseNumber(text);
  if (!v) throw UsageError(option + ": expected a number, got \"" + text + "\"");
  return *v;
}

// Applies one degree-converter box rule (the screen's check) to a command-line value.
double CheckDegreeBox(const std::string& option, const std::string& text, DegreeFormat format, int box) {
  const DegreeBoxRule rule = DegreeBoxRuleFor(format, box);
  const double v = RequireNumber(option, text);
  const std::string range = Shortest(rule.min) + " to " + Shortest(rule.max);
  if (rule.integer && v != std::floor(v))
    throw UsageError(option + ": expected a whole number from " + range + ", got \"" + text + "\"");
  if (v < rule.min || v > rule.max)
    throw UsageError(option + ": " + Shortest(v) + " is out of range (" + range + ")");
  return v;
}

}  // namespace

void RegisterToolCommands(CLI::App& app) {
  struct ConvertOptions {
    std::string type, from, to, value;
  };
  auto conv = std::make_shared<ConvertOptions>();
  CLI::App* convert = app.add_subcommand(
      "convert", "Convert a value between two units of one quantity, e.g.\n"
                 "  norvane-cli convert --type \"Length-Distance\" --from nm --to km 100\n"
                 "  norvane-cli convert --type Temperature --from \"°C\" --to \"°F\" 0");
  convert->add_option("--type", conv->type, "Unit type, as listed below")->type_name("TYPE")->required();
  convert->add_option("--from", conv->from, "Unit of VALUE, one of the type's units")->type_name("UNIT")->required();
  convert->add_option("--to", conv->to, "Unit of the result, one of the type's units")->type_name("UNIT")->required();
  convert->add_option("VALUE", conv->value, "Value to convert, -99999999 to 99999999")->type_name("NUMBER")->required();
  convert->footer(UnitTableHelp() + "Type and unit names are matched exactly, or else ignoring case (NM is nm).");
  convert->callback([conv] {
    const auto type = FindUnitType(conv->type);
    if (!type) {
      std::vector<std::string> names;
      for (const UnitType& t : UnitTable()) names.push_back(t.name);
      throw UsageError("--type: unknown unit type \"" + conv->type + "\" (" + Join(names) + ")");
    }
    const int from = RequireUnit("--from", *type, conv->from);
    const int to = RequireUnit("--to", *type, conv->to);
    const double value = RequireNumber("VALUE", conv->value);
    RequireRange("VALUE", value, -kMaxConvertValue, kMaxConvertValue);
    const double result = ConvertUnits(*type, from, to, value);
    ResultPrinter out;
    out.Add("result", FormatConversionResult(result), result);
    ExitStatus() = out.Print();
  });

  struct AngleOptions {
    std::string d;
    std::vector<std::string> dm, dms;
  };
  auto ang = std::make_shared<AngleOptions>();
  CLI::App* angle = app.add_subcommand(
      "angle", "Write an angle as decimal degrees (d), degrees and decimal minutes (dm) and degrees,\n"
               "minutes and decimal seconds (dms). Give exactly one of --d, --dm, --dms.");
  CLI::Option* d = angle->add_option("--d", ang->d, "Decimal degrees, 0 to 180")->type_name("V");
  CLI::Option* dm = angle->add_option("--dm", ang->dm,
                                      "Whole degrees 0 to 180 and decimal minutes 0 to 59.999999")
                        ->type_name("D M")
                        ->expected(2);
  CLI::Option* dms = angle->add_option("--dms", ang->dms,
                                       "Whole degrees 0 to 180, whole minutes 0 to 59 and decimal "
                                       "seconds 0 to 59.99")
                         ->type_name("D M S")
                         ->expected(3);
  d->excludes(dm)->excludes(dms);
  dm->excludes(dms);
  angle->callback([ang, d, dm, dms] {
    double total = 0;
    if (d->count()) {
      total = DegreesTotal(DegreeFormat::D, CheckDegreeBox("--d", ang->d, DegreeFormat::D, 0), {}, {});
    } else if (dm->count()) {
      const double deg = CheckDegreeBox("--dm degrees", ang->dm[0], DegreeFormat::DM, 0);
      const double min = CheckDegreeBox("--dm minutes", ang->dm[1], DegreeFormat::DM, 1);
      total = DegreesTotal(DegreeFormat::DM, deg, min, {});
    } else if (dms->count()) {
      const double deg = CheckDegreeBox("--dms degrees", ang->dms[0], DegreeFormat::DMS, 0);
      const double min = CheckDegreeBox("--dms minutes", ang->dms[1], DegreeFormat::DMS, 1);
      const double sec = CheckDegreeBox("--dms seconds", ang->dms[2], DegreeFormat::DMS, 2);
      total = DegreesTotal(DegreeFormat::DMS, deg, min, sec);
    } else {
      throw UsageError("angle: give one of --d V, --dm D M or --dms D M S");
    }
    ResultPrinter out;
    out.Add("d", FormatDegreesD(total), total);
    out.Add("dm", FormatDegreesDM(total));
    out.Add("dms", FormatDegreesDMS(total));
    ExitStatus() = out.Print();
  });

  struct CalcOptions {
    bool radians = false;
    std::vector<std::string> words;
  };
  auto calcOpt = std::make_shared<CalcOptions>();
  CLI::App* calc = app.add_subcommand(
      "calc", "Evaluate an expression as the tiny math calculator does, e.g.\n"
              "  norvane-cli calc \"2*sin(30)+sqrt(2)^2\"\n"
              "Operators + - * / ^ and a postfix % (per cent), parentheses; functions sin cos tan asin\n"
              "acos atan (degrees unless --rad), sqrt ln log (base 10) exp abs; the constant pi.\n"
              "Results to 12 significant digits, scientific from 1E+12 and below 1E-6.");
  calc->add_flag("--rad", calcOpt->radians, "Trigonometry in radians instead of degrees");
  calc->add_option("EXPRESSION", calcOpt->words, "The expression (several words are joined by blanks)")
      ->type_name("TEXT")
      ->required();
  calc->callback([calcOpt] {
    std::string expression;
    for (const auto& w : calcOpt->words) expression += (expression.empty() ? "" : " ") + w;
    TinyCalculator calculator;
    calculator.SetAngleUnit(calcOpt->radians ? AngleUnit::Radians : AngleUnit::Degrees);
    const CalcOutcome r = calculator.Evaluate(expression);
    if (r.kind == CalcOutcome::Kind::SyntaxError)
      throw UsageError("EXPRESSION: " + r.text + (r.detail.empty() ? "" : ": " + r.detail));
    ResultPrinter out;
    if (r.ok()) {
      out.Add("result", r.text, r.value);
    } else {
      out.Message(r.text);
      out.SetFailed();
    }
    ExitStatus() = out.Print();
  });
}

}  // namespace norvane::cli
