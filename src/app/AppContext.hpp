#pragma once
// Process-wide state of the desktop program: set once at start-up, read by every screen.

#include <QString>
#include <QVariantMap>
#include <map>
#include <functional>
#include <string>

#include "app/Settings.hpp"

class QWidget;

namespace norvane {

class MainMenu;

struct AppContext {
  std::string appPath;  // program folder, ends with the separator (Norvane.ini lives here)
  char16_t decimalSep = u'.';
  Settings settings;
  MainMenu* menu = nullptr;  // the main menu, when it exists
  // Each screen's last inputs and options by form name, kept while the program runs.
  std::map<QString, QVariantMap> screenInputs;
  // Why the settings will not reach the file at exit, shown in the About box; empty when they
  // will. keepSettingsFile: the file could not be read, so writing at exit would replace the
  // user's settings by defaults.
  QString settingsNotice;
  bool keepSettingsFile = false;
  // The night colour scheme is in use (the Colours setting, or --night for screenshots).
  bool night = false;

  std::string settingsFile() const { return appPath + kSettingsFileName; }
};

// The one context of this process.
AppContext& App();

// Reads Norvane.ini into ctx.settings at start-up, sets settingsNotice / keepSettingsFile and
// uses the colours it names.
// Returns why the file could not be read, "" when it could (or does not exist yet).
std::string LoadSettings(AppContext& ctx);

// Chooses the colour scheme (Colours()) and gives the application its palette; the Fusion style
// honours it, so every window, dialog and message box follows. The menu repaints its items.
void UseColours(bool night);

// Seams for services that live outside the shell. Each is optional: an unset hook means the
// service is not part of this build, and the shell behaves as if no database / no update
// service existed.
struct ShellHooks {
  // Waypoint database. check: validate the file named by the path (start-up, before the menu is
  // shown). load: read the checked file into memory (first timer tick). open: check + load a file
  // the user chose. All return true on success. displayName: the active database's label text.
  std::function<bool(const std::string& path)> checkDatabase;
  std::function<bool()> loadDatabase;
  std::function<bool(const std::string& path)> openDatabase;
  std::function<QString()> databaseDisplayName;
  // Why there is no active database ("europe.dat: waypoint 12 is out of identifier order"), empty
  // while one is active; and whether that reason may pass by itself (the file missing or
  // unreadable, as on a disk not plugged in), so that the settings keep its path.
  std::function<QString()> databaseProblem;
  std::function<bool()> databaseMayReturn;
  // A sensible database to offer when the settings name none (e.g. the shipped sample).
  std::function<std::string()> defaultDatabasePath;

  // Start-up housekeeping after the settings are read (e.g. removing a left-over Norvane.bak).
  std::function<void()> afterSettingsRead;
  // First tick of the menu timer, after the database label: the daily update check. Returns true
  // when the program should end (an update was installed).
  std::function<bool(QWidget* menu)> firstTickUpdateCheck;
  // Adds the update part to the About box; returns true when the user asked to update now.
  std::function<void(QWidget* aboutDialog)> decorateAbout;
  // Runs the update dialog modally; returns true when the executable was replaced.
  std::function<bool(QWidget* parent)> runUpdate;
};
ShellHooks& Hooks();

// Asks for a waypoint database file and opens it (the menu's label, the Options screen's button);
// the settings keep its path when it loads and forget it when not. False when cancelled.
bool ChooseDatabase(QWidget* parent);

}  // namespace norvane
