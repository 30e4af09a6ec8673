#include "cli/Catalogue.hpp"

#include <CLI/CLI.hpp>

#include <cmath>

#include "cli/CliSupport.hpp"

namespace norvane::cli {
namespace {

std::string CommandPath(const CLI::App* cmd) {
  std::string name = cmd->get_name();
  for (const CLI::App* p = cmd->get_parent(); p && p->get_parent(); p = p->get_parent())
    name = p->get_name() + " " + name;
  return name;
}

std::string JsonList(const std::vector<std::string>& items) {
  std::string out = "[";
  for (size_t i = 0; i < items.size(); ++i) out += (i ? ", " : "") + JsonQuote(items[i]);
  return out + "]";
}

std::string QuantityJson(const Quantity& q) {
  return "\"caption\": " + JsonQuote(q.caption) + ", \"unit\": " + JsonQuote(CliUnit(q)) +
         ", \"min\": " + Shortest(q.min) + ", \"max\": " + Shortest(q.max) +
         ", \"whole\": " + (q.whole ? "true" : "false") + ", \"decimals\": " + std::to_string(q.rangeDecimals) +
         ", \"optional\": " + (q.optional ? "true" : "false");
}

std::string OptionJson(const OptionEntry& o) {
  std::string out = "{\"name\": " + JsonQuote(o.name) + ", \"kind\": " + JsonQuote(o.kind);
  if (o.quantity) out += ", " + QuantityJson(*o.quantity);
  if (o.usQuantity) out += ", \"us\": {" + QuantityJson(*o.usQuantity) + "}";
  if (!o.variants.empty()) {
    out += ", \"variants\": [";
    for (size_t i = 0; i < o.variants.size(); ++i)
      out += (i ? ", {\"when\": " : "{\"when\": ") + JsonList(o.variants[i].first) + ", " +
             QuantityJson(o.variants[i].second) + "}";
    out += "]";
  }
  if (!o.values.empty()) out += ", \"values\": " + JsonList(o.values);
  out += ", \"default\": " + (o.defaultValue.empty() ? std::string("null") : JsonQuote(o.defaultValue));
  out += std::string(", \"required\": ") + (o.required ? "true" : "false");
  out += ", \"help\": " + JsonQuote(o.help) + "}";
  return out;
}

std::string DescribeJson() {
  std::string out = "{\"commands\": [";
  const auto& all = Catalogue();
  for (size_t i = 0; i < all.size(); ++i) {
    const CommandEntry& c = all[i];
    out += i ? ",\n  " : "\n  ";
    out += "{\"name\": " + JsonQuote(c.name) + ", \"summary\": " + JsonQuote(c.summary) + ", \"options\": [";
    for (size_t k = 0; k < c.options.size(); ++k) out += (k ? ", " : "") + OptionJson(c.options[k]);
    out += "], \"results\": " + JsonList(c.results) + "}";
  }
  return out + "\n]}\n";
}

std::string DescribeText() {
  std::string out;
  for (const CommandEntry& c : Catalogue()) {
    out += c.name + "\n";
    for (const OptionEntry& o : c.options) {
      out += "  " + o.name + "  " + o.kind;
      if (o.quantity) {
        out += "  " + Shortest(o.quantity->min) + " to " + Shortest(o.quantity->max);
        if (!CliUnit(*o.quantity).empty()) out += " " + std::string(CliUnit(*o.quantity));
        if (o.quantity->whole) out += ", whole";
      }
      if (o.usQuantity) {
        out += " (with --us " + Shortest(o.usQuantity->min) + " to " + Shortest(o.usQuantity->max);
        if (!CliUnit(*o.usQuantity).empty()) out += " " + std::string(CliUnit(*o.usQuantity));
        out += ")";
      }
      for (const auto& [when, q] : o.variants) {
        out += " (with";
        for (const std::string& w : when) out += " " + w;
        out += " " + Shortest(q.min) + " to " + Shortest(q.max);
        if (!CliUnit(q).empty()) out += " " + std::string(CliUnit(q));
        out += ")";
      }
      if (!o.values.empty()) {
        out += " ";
        for (size_t i = 0; i < o.values.size(); ++i) out += (i ? "|" : "") + o.values[i];
      }
      if (!o.defaultValue.empty()) out += "  default " + o.defaultValue;
      if (o.required) out += "  required";
      out += "\n";
    }
    out += "  results:";
    for (const std::string& r : c.results) out += " " + r;
    out += "\n";
  }
  return out;
}

}  // namespace

std::vector<CommandEntry>& Catalogue() {
  static std::vector<CommandEntry> commands;
  return commands;
}

double ReadQuantity(std::string_view option, std::string_view text, const Quantity& q) {
  const auto v = ParseNumber(text);
  if (!v) throw UsageError(std::string(option) + ": expected a number, got \"" + std::string(text) + "\"");
  RequireRange(option, *v, q.min, q.max, CliUnit(q));
  if (q.whole && *v != std::floor(*v)) {
    std::string unit = CliUnit(q).empty() ? "" : " " + std::string(CliUnit(q));
    throw UsageError(std::string(option) + ": " + std::string(text) + " is not a whole number (" + Shortest(q.min) +
                     " to " + Shortest(q.max) + unit + ")");
  }
  return *v;
}

GivenOption OneOf(std::initializer_list<std::pair<std::string_view, const std::string*>> options) {
  size_t i = 0;
  for (const auto& [name, text] : options) {
    if (!text->empty()) return {i, name, *text};
    ++i;
  }
  std::string names;
  i = 0;
  for (const auto& option : options) {
    names += i == 0 ? "" : i + 1 == options.size() ? " or " : ", ";
    names += option.first;
    ++i;
  }
  throw UsageError("one of " + names + " is required");
}

std::string QuantityHelp(const Quantity& q) {
  std::string s(q.caption);
  if (!CliUnit(q).empty()) s += ", " + std::string(CliUnit(q));
  s += q.whole ? ", whole number " : ", ";
  return s + Shortest(q.min) + " to " + Shortest(q.max);
}

Describer::Describer(CLI::App* command, std::vector<std::string> results) : command_(command) {
  index_ = Catalogue().size();
  Catalogue().push_back({CommandPath(command), command->get_description(), {}, std::move(results)});
}

CommandEntry& Describer::entry() { return Catalogue()[index_]; }

CLI::Option* Describer::number(const std::string& name, std::string& value, const Quantity& q, bool required,
                               const std::string& extra, std::optional<Quantity> us) {
  std::string help = QuantityHelp(q);
  if (us)
    help += " (with --us: " + std::string(CliUnit(*us)) + ", " + Shortest(us->min) + " to " + Shortest(us->max) + ")";
  if (!extra.empty()) help += " " + extra;
  CLI::Option* o = command_->add_option(name, value, help);
  if (required) o->required();
  OptionEntry e{name, "number", q, us, {}, value, required, help, {}};
  entry().options.push_back(std::move(e));
  return o;
}

void Describer::variant(std::vector<std::string> when, const Quantity& q) {
  entry().options.back().variants.emplace_back(std::move(when), q);
}

CLI::Option* Describer::choice(const std::string& name, std::string& value, const std::vector<std::string>& values,
                               const std::string& help) {
  CLI::Option* o = command_->add_option(name, value, help)->check(CLI::IsMember(values));
  entry().options.push_back({name, "choice", std::nullopt, std::nullopt, values, value, false, help, {}});
  return o;
}

CLI::Option* Describer::flag(const std::string& name, bool& value, const std::string& help) {
  CLI::Option* o = command_->add_flag(name, value, help);
  entry().options.push_back({name, "flag", std::nullopt, std::nullopt, {}, {}, false, help, {}});
  return o;
}

CLI::Option* Describer::text(const std::string& name, std::string& value, const std::string& kind, bool required,
                             const std::string& help) {
  CLI::Option* o = command_->add_option(name, value, help);
  if (required) o->required();
  entry().options.push_back({name, kind, std::nullopt, std::nullopt, {}, value, required, help, {}});
  return o;
}

CLI::Option* Describer::positional(const std::string& name, std::string& value, const std::string& kind,
                                   const std::string& help, std::optional<Quantity> q) {
  CLI::Option* o = command_->add_option(name, value, help)->required();
  entry().options.push_back({name, kind, q, std::nullopt, {}, {}, true, help, {}});
  return o;
}

void RegisterDescribeCommand(CLI::App& app) {
  CLI::App* cmd = app.add_subcommand("describe",
                                     "Lists every calculator command with its options (unit, range, "
                                     "whole or real, choices, default) and its result keys; with --json "
                                     "as one JSON object.");
  cmd->callback([] {
    WriteOutput(stdout, GlobalOutputMode().json ? DescribeJson() : DescribeText());
    ExitStatus() = kExitOk;
  });
}

}  // namespace norvane::cli
