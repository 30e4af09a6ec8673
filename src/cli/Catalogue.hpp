#pragma once
// The calculator commands as data: each command's options (numbers with their quantity, choices,
// flags, coordinates, dates) and its result keys. Commands add their options through a Describer,
// which registers the option with CLI11 and its description here in one step, so that
// `norvane-cli describe` and the option help can never disagree with the checks.

#include <initializer_list>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "app/Quantity.hpp"

namespace CLI {
class App;
class Option;
}  // namespace CLI

namespace norvane::cli {

struct OptionEntry {
  std::string name;                    // "--tas", or the positional's name in capitals ("VALUE")
  std::string kind;                    // "number", "choice", "flag", "coordinates", "date", "text"
  std::optional<Quantity> quantity;    // a number's range (metric where --us changes it)
  std::optional<Quantity> usQuantity;  // a number's range with --us, when it differs
  std::vector<std::string> values;     // a choice's values
  std::string defaultValue;            // empty: no default
  bool required = false;
  std::string help;
  // A number's range where other options move it: the words that must all hold ("--feet" for a
  // flag given, "--unit=km" for a choice), most specific first; the first that holds applies.
  std::vector<std::pair<std::vector<std::string>, Quantity>> variants;
};

struct CommandEntry {
  std::string name;  // "speed", "wind known"
  std::string summary;
  std::vector<OptionEntry> options;
  std::vector<std::string> results;  // result keys in printing order
};

// Every described command, in registration order.
std::vector<CommandEntry>& Catalogue();

// Reads an option's text as the quantity: a number, inside the range, whole where it must be.
// Throws UsageError naming the option and its range: "--tas: 2000 is out of range (50 to 1500 kt)".
double ReadQuantity(std::string_view option, std::string_view text, const Quantity& q);

// The one option given of a group that needs exactly one (the others exclude it): its index in
// `options` and its name and text. Throws UsageError "one of --cas, --tas or --mach is required".
struct GivenOption {
  size_t index;
  std::string_view name;
  const std::string& text;
};
GivenOption OneOf(std::initializer_list<std::pair<std::string_view, const std::string*>> options);

// The option help of a number: "True air speed, kt, whole number 50 to 1500".
std::string QuantityHelp(const Quantity& q);

// Adds options to one subcommand and their descriptions to its catalogue entry. The quantities'
// texts must be string literals (the catalogue keeps views of them).
class Describer {
 public:
  Describer(CLI::App* command, std::vector<std::string> results);
  // A number option kept as text (read with ReadQuantity in the callback). `us` is its quantity
  // under --us when that differs; `extra` is appended to the help ("(needs --distance)").
  CLI::Option* number(const std::string& name, std::string& value, const Quantity& q, bool required,
                      const std::string& extra = {}, std::optional<Quantity> us = std::nullopt);
  // The range of the number option added last where `when` holds (see OptionEntry::variants).
  void variant(std::vector<std::string> when, const Quantity& q);
  CLI::Option* choice(const std::string& name, std::string& value, const std::vector<std::string>& values,
                      const std::string& help);
  CLI::Option* flag(const std::string& name, bool& value, const std::string& help);
  // Coordinates ("coordinates"), dates ("date") or free text ("text").
  CLI::Option* text(const std::string& name, std::string& value, const std::string& kind, bool required,
                    const std::string& help);
  // A positional argument (the option name is the type name, "VALUE").
  CLI::Option* positional(const std::string& name, std::string& value, const std::string& kind, const std::string& help,
                          std::optional<Quantity> q = std::nullopt);
  CommandEntry& entry();

 private:
  CLI::App* command_;
  size_t index_;
};

// `norvane-cli describe [--json]`: every calculator command with its options and result keys.
void RegisterDescribeCommand(CLI::App& app);

}  // namespace norvane::cli
