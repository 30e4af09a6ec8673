#pragma once
// Norvane.ini: every persistent setting, read once at start-up and written whole at exit.
// The file is a Windows profile (INI) text file; reading follows the profile API's rules
// (sections and keys ignore case, the first occurrence wins, integers are read like
// GetPrivateProfileInt and taken as 16-bit values), and an absent key or a value outside its
// range silently takes the key's default.

#include <cstdint>
#include <filesystem>
#include <string>

#include "online/LinkTable.hpp"

namespace norvane {

struct Settings {
  // [Options]
  int16_t Synchronize = 1;        // the open screen follows the menu
  int16_t RemindPosition = 0;     // save and restore the menu position
  int16_t AutoUpdateCheck = 0;    // daily update check at start-up
  std::string PrevAutoUpdate;     // date of the last automatic check
  int16_t DefaultUnitSystem = 0;  // 0 metric, 1 US units
  int16_t DefMVYear = 2005;       // 2005..2009 (models 0, 1), 2025..2029 (models 2, 3)
  int16_t DefMVModel = 0;         // 0 IGRF-10, 1 WMM2005, 2 WMM2025, 3 IGRF-14 (MagModel)
  int16_t AutoMV = 0;
  int16_t LTOffset = 0;  // hours, -12..14 (kLocalTimeOffset)
  int16_t Colours = 0;   // 0 day, 1 night; written only for the night
  // [WinPos], twips (15 per device-independent pixel)
  int16_t IniTop = 0;
  int16_t IniLeft = 0;
  // [NavDB]
  std::string DBPath;
  // [DBLinks]
  LinkTable Links = LinkTable::Defaults();

  bool operator==(const Settings&) const = default;
};

// Reads the file; a missing file gives the defaults. So does a file that exists but cannot be
// read (or is far too large to be a settings file), and then `error` says why, so that the
// program can tell the user instead of silently starting from scratch.
Settings ReadSettings(const std::filesystem::path& file, std::string* error = nullptr);
// Parses the text of a settings file.
Settings ParseSettings(const std::string& text);
// The exact bytes written at exit (CR LF line ends).
std::string SerializeSettings(const Settings& s);
// Writes the file atomically; on failure the old file stays whole and `error` says why.
bool WriteSettings(const std::filesystem::path& file, const Settings& s, std::string* error = nullptr);

inline constexpr const char* kSettingsFileName = "Norvane.ini";

}  // namespace norvane
