#pragma once
// The active waypoint database of the desktop program and its wiring into the shell: the start-up
// check, the first-tick load, the label text, choosing another file, and the sample database
// offered when the settings name none.

#include <QString>

class QAbstractButton;
class QWidget;
#include <string>

#include "waypoints/NavDatabase.hpp"

namespace norvane {

// The one database of this process (NavDB_routines' state).
NavDatabase& ActiveNavDB();
// True while a valid database is loaded (DBError false, records in memory).
bool NavDBActive();

// Installs the database hooks of the shell (ShellHooks): check at start-up, load at the first
// tick, open a chosen file, the display name, and the sample database as the default.
void InstallNavDBHooks();

// The shipped sample database: "sample.dat" beside the executable (build tree) or in
// ../share/norvane (installed); empty when neither exists.
std::string SampleDatabasePath(const std::string& executableDir);

// What the import buttons say instead of opening the search dialog without a database.
inline const char* const kNoDatabaseText = "No active Waypoint Database";

// Keeps an import button enabled only while a database is active, checked whenever `screen` is
// shown or activated (the database is chosen on the menu or the Options screen while the screen
// stays open). `tip` is its tool tip while enabled; disabled, it names the missing database.
void EnableWithDatabase(QWidget* screen, QAbstractButton* button, const QString& tip);

}  // namespace norvane
