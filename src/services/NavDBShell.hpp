#pragma once
// The active waypoint database of the desktop program and its wiring into the shell: the start-up
// check, the first-tick load, the label text, choosing another file, and the sample database
// offered when the settings name none.

#include <QString>
#include <string>

#include "services/NavDatabase.hpp"

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

}  // namespace norvane
