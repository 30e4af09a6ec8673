#pragma once
// The user's list of aviation web links: at most 15 titled addresses, kept compact and sorted.

#include <array>
#include <string>

namespace norvane {

struct Link {
  std::string title;
  std::string url;

  bool operator==(const Link&) const = default;
};

struct LinkTable {
  static constexpr int kCapacity = 15;
  std::array<Link, kCapacity> entries{};
  int count = 0;

  // The built-in list (14 entries).
  static LinkTable Defaults();

  // Drops entries whose trimmed title is empty, trims the titles, sorts by title ignoring case with
  // a selection sort (the first of equal titles stays first) and empties the unused slots.
  void Tidy();

  bool operator==(const LinkTable&) const = default;
};

// Removes leading and trailing blanks (spaces and tabs).
std::string TrimBlanks(const std::string& s);

}  // namespace norvane
