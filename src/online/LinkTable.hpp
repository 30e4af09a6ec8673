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

  // The editor's operations; each tidies the table afterwards.
  // Appends `link` when its title is not blank and a slot is free; returns its position after
  // sorting, -1 when nothing was added.
  int Add(const Link& link);
  // Replaces entry `index`; returns its position after sorting, -1 when the index is not in use
  // or the new title is blank (the entry is then dropped, as a blank title always is).
  int Replace(int index, const Link& link);
  // Removes entry `index` (ignored when not in use).
  void Remove(int index);
  bool Full() const { return count >= kCapacity; }

  bool operator==(const LinkTable&) const = default;

 private:
  // Tidy() that reports where the entry at `tracked` went (-1 when dropped).
  int TidyTracking(int tracked);
};

// Removes leading and trailing blanks (spaces and tabs).
std::string TrimBlanks(const std::string& s);

}  // namespace norvane
