#include <algorithm>
#include <initializer_list>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "cli/Catalogue.hpp"
#include "cli/CliSupport.hpp"
#include "cli/Commands.hpp"
#include "tools/TinyCalculator.hpp"
#include "tools/UnitConversion.hpp"

namespace norvane::cli {
namespace {

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
  throw UsageError(std::string(option) + ": \"" + name + "\" is not a unit of " + UnitTable()[type].name + " (" +
                   Join(names) + ")");
}

// Every type's unit names, each once, in the table's order: the values --from and --to may take.
std::vector<std::string> AllUnitNames() {
  std::vector<std::string> names;
  for (const UnitType& t : UnitTable())
    for (const UnitDef& u : t.units)
      if (std::find(names.begin(), names.end(), u.name) == names.end()) names.push_back(u.name);
  return names;
}

// A required choice listed in the catalogue but checked in the callback: names match ignoring
// case too, and an unknown one is answered with the names that fit (a type's own units).
void AddLooseChoice(Describer& d, const std::string& name, std::string& value, const std::vector<std::string>& values,
                    const std::string& help, const std::string& typeName) {
  CLI::Option* o = d.choice(name, value, values, help)->required()->type_name(typeName);
  o->get_validator(0)->active(false);
  d.entry().options.back().required = true;
}

// An option taking one number per part ("--dm D M"), listed as text naming the parts' quantities.
CLI::Option* AddNumbers(CLI::App* cmd, Describer& d, const std::string& name, std::vector<std::string>& values,
                        std::initializer_list<Quantity> parts, const std::string& typeName) {
  std::string help;
  for (const Quantity& q : parts) help += (help.empty() ? "" : "; ") + QuantityHelp(q);
  d.entry().options.push_back({name, "text", std::nullopt, std::nullopt, {}, {}, false, typeName + ": " + help, {}});
  return cmd->add_option(name, values, help)->type_name(typeName)->expected(static_cast<int>(parts.size()));
}

Quantity Box(DegreeFormat format, DegreePart part) { return DegreeBoxFor(format, part).quantity; }

}  // namespace

void RegisterToolCommands(CLI::App& app) {
  struct ConvertOptions {
    std::string type, from, to, value;
  };
  auto conv = std::make_shared<ConvertOptions>();
  CLI::App* convert = app.add_subcommand("convert",
                                         "Convert a value between two units of one quantity, e.g.\n"
                                         "  norvane-cli convert --type \"Length-Distance\" --from nm --to km 100\n"
                                         "  norvane-cli convert --type Temperature --from \"°C\" --to \"°F\" 0");
  Describer dc(convert, {"result"});
  std::vector<std::string> types;
  for (const UnitType& t : UnitTable()) types.push_back(t.name);
  AddLooseChoice(dc, "--type", conv->type, types, "Unit type, as listed below", "TYPE");
  AddLooseChoice(dc, "--from", conv->from, AllUnitNames(), "Unit of VALUE, one of the type's units", "UNIT");
  AddLooseChoice(dc, "--to", conv->to, AllUnitNames(), "Unit of the result, one of the type's units", "UNIT");
  dc.positional("VALUE", conv->value, "number", QuantityHelp(kConvertValue), kConvertValue)->type_name("NUMBER");
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
    const double value = ReadQuantity("VALUE", conv->value, kConvertValue);
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
  CLI::App* angle =
      app.add_subcommand("angle",
                         "Write an angle as decimal degrees (d), degrees and decimal minutes (dm) and degrees,\n"
                         "minutes and decimal seconds (dms). Give exactly one of --d, --dm, --dms.");
  Describer da(angle, {"d", "dm", "dms"});
  CLI::Option* d = da.number("--d", ang->d, Box(DegreeFormat::D, DegreePart::Degrees), false)->type_name("V");
  CLI::Option* dm =
      AddNumbers(angle, da, "--dm", ang->dm,
                 {Box(DegreeFormat::DM, DegreePart::Degrees), Box(DegreeFormat::DM, DegreePart::Minutes)}, "D M");
  CLI::Option* dms =
      AddNumbers(angle, da, "--dms", ang->dms,
                 {Box(DegreeFormat::DMS, DegreePart::Degrees), Box(DegreeFormat::DMS, DegreePart::Minutes),
                  Box(DegreeFormat::DMS, DegreePart::Seconds)},
                 "D M S");
  d->excludes(dm)->excludes(dms);
  dm->excludes(dms);
  angle->callback([ang, d, dm, dms] {
    const auto read = [](const std::string& option, const std::string& text, DegreeFormat format, DegreePart part) {
      return ReadQuantity(option, text, Box(format, part));
    };
    double total = 0;
    if (d->count()) {
      total = DegreesTotal(DegreeFormat::D, read("--d", ang->d, DegreeFormat::D, DegreePart::Degrees), {}, {});
    } else if (dm->count()) {
      const double deg = read("--dm degrees", ang->dm[0], DegreeFormat::DM, DegreePart::Degrees);
      const double min = read("--dm minutes", ang->dm[1], DegreeFormat::DM, DegreePart::Minutes);
      total = DegreesTotal(DegreeFormat::DM, deg, min, {});
    } else if (dms->count()) {
      const double deg = read("--dms degrees", ang->dms[0], DegreeFormat::DMS, DegreePart::Degrees);
      const double min = read("--dms minutes", ang->dms[1], DegreeFormat::DMS, DegreePart::Minutes);
      const double sec = read("--dms seconds", ang->dms[2], DegreeFormat::DMS, DegreePart::Seconds);
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
  CLI::App* calc =
      app.add_subcommand("calc",
                         "Evaluate an expression as the tiny math calculator does, e.g.\n"
                         "  norvane-cli calc \"2*sin(30)+sqrt(2)^2\"\n"
                         "Operators + - * / ^ and a postfix % (per cent), parentheses; functions sin cos tan asin\n"
                         "acos atan (degrees unless --rad), sqrt ln log (base 10) exp abs; the constant pi.\n"
                         "Results to 12 significant digits, scientific from 1E+12 and below 1E-6.");
  Describer dcalc(calc, {"result", "message"});
  dcalc.flag("--rad", calcOpt->radians, "Trigonometry in radians instead of degrees");
  const std::string expressionHelp = "The expression (several words are joined by blanks)";
  calc->add_option("EXPRESSION", calcOpt->words, expressionHelp)->type_name("TEXT")->required();
  dcalc.entry().options.push_back({"EXPRESSION", "text", std::nullopt, std::nullopt, {}, {}, true, expressionHelp, {}});
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
      out.Fail(r.text);
    }
    ExitStatus() = out.Print();
  });
}

}  // namespace norvane::cli
