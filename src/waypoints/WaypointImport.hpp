#pragma once
// "Import from database" for any screen: opens the search dialog on the active database and
// writes the chosen waypoint's latitude and longitude into the screen's degree, minute (and
// second) boxes and hemisphere options.

#include <QString>
#include <string>

class QAbstractButton;
class QLabel;
class QLineEdit;
class QWidget;

namespace norvane {

// The boxes and options of one coordinate. sec may be null: the minutes are then rounded.
// positive is the N (or E) option, negative the S (or W) option.
struct CoordinateFields {
  QLineEdit* deg = nullptr;
  QLineEdit* min = nullptr;
  QLineEdit* sec = nullptr;
  QAbstractButton* positive = nullptr;
  QAbstractButton* negative = nullptr;
};

enum class ImportOutcome { Imported, Cancelled, NoDatabase };

// Without an active database the dialog is not opened and NoDatabase is returned (the caller
// shows kNoDatabaseText, NavDBShell.hpp). On Imported, `nameLabel` (when given) names the
// waypoint beside the boxes it filled ("EGLL airport") until one of those boxes is edited.
ImportOutcome ImportWaypoint(QWidget* parent, const CoordinateFields& lat, const CoordinateFields& lon,
                             QLabel* nameLabel = nullptr);
// "EGLL airport", "LAM VOR": the identifier and kind of waypoint, as the import names it.
QString ImportedName(const std::string& ident, int type);

}  // namespace norvane
