#pragma once
// What the four navigation screens share: coordinate frames of degree / minute (/ second) boxes
// with their hemisphere options, the import buttons, the magnetic-variation settings, and result
// writing into boxes without clearing the results.

#include <QString>
#include <utility>
#include <vector>

#include "app/CalculatorScreen.hpp"
#include "navigation/NavCalculations.hpp"
#include "waypoints/WaypointImport.hpp"

namespace norvane {

class NavigationScreen : public CalculatorScreen {
  Q_OBJECT
 public:
  using CalculatorScreen::CalculatorScreen;

  // Clears every result and resets the boxes to their defaults (ClearResetData).
  void clearResetData();

 protected:
  // A latitude or longitude entered as degrees, minutes (and seconds) with N/S or E/W options.
  struct Coordinate {
    QGroupBox* frame = nullptr;
    InputBox* deg = nullptr;
    InputBox* min = nullptr;
    InputBox* sec = nullptr;                    // null on screens without seconds
    QRadioButton* opt[2] = {nullptr, nullptr};  // N/E, S/W
    // Signed decimal degrees; empty minutes or seconds count as 0.
    double degrees() const;
    CoordinateFields fields() const;
    // Writes the boxes as a user types them and picks the hemisphere (a screenshot's position).
    void set(const QString& d, const QString& m, const QString& s, bool southOrWest) const;
  };

  // Adds the boxes of one coordinate (in index order deg, min, sec) inside a frame captioned
  // `caption`, with help texts "<who> latitude degrees (0 to 89)" and so on, and the option pair
  // <optName>0 / <optName>1. Option clicks recalculate when results are on screen.
  Coordinate addCoordinate(const QString& caption, const QString& who, bool isLongitude, bool withSeconds,
                           const QString& optName);
  // An option button of a group whose change recalculates a shown result.
  QRadioButton* makeOption(const QString& text, const QString& name, QWidget* parent);
  // "True" (OptTRK0) and "Magnetic" (OptTRK1) in `parent`, into optTRK_: Magnetic when the AutoMV
  // setting is on, until the user chooses while the program runs. A change recalculates.
  void makeTrackOptions(QWidget* parent);
  bool magneticTracks() const;
  // Option buttons whose checked default follows a setting of the Options screen: the screen keeps
  // them for its next opening only once the user has chosen one while the program runs.
  void followSetting(std::vector<QAbstractButton*> buttons);
  // "Latitude" and "Longitude" over the result labels dataR0 and dataR1, each wide enough for
  // `widest`.
  std::pair<QLabel*, QLabel*> addLatLonResults(QGridLayout* grid, const QString& widest);
  // "Import from database", named `name`, filling lat and lon, over the label (named "lbl" +
  // `name` without its "cmd") that names the imported waypoint.
  QWidget* makeImportButton(const QString& name, const Coordinate* lat, const Coordinate* lon);

  // The Options screen's magnetic-variation settings (default year and model).
  static MagSettings DefaultMagSettings();
  // "lblModel": names the model and year the computed variation uses, through `format` with %1
  // ("Track (magvar %1)" gives "Track (magvar WMM2025, 2026)").
  QLabel* makeModelLabel(const QString& format, QWidget* parent);
  // DefaultMagSettings(), the model label brought in step with them (the Options screen may have
  // changed them since the screen opened).
  MagSettings magSettings();
  // Writes text into a box from a calculation without clearing the results it belongs to.
  void writeBox(InputBox* box, const QString& text);
  // Writes a computed magnetic variation into its box with the mask "0.0" (locale separator).
  void writeVariation(InputBox* box, double variation);
  // A variation box belonging to the position lat / lon: a variation Calculate wrote there is
  // cleared when that position changes (a typed box, a hemisphere, an import), so that the next
  // result uses the new place's variation; a variation the user typed stays.
  void bindVariation(InputBox* box, const Coordinate& lat, const Coordinate& lon);
  // A box's value, or nothing when it is empty.
  static std::optional<double> OptionalValue(const InputBox* box);

  void boxEdited(int index) override;
  void closeEvent(QCloseEvent* e) override;
  // Coordinate boxes and the texts they reset to (ClearResetData).
  std::vector<std::pair<InputBox*, QString>> defaults_;
  QRadioButton* optTRK_[2] = {nullptr, nullptr};

 private:
  struct BoundVariation {
    InputBox* box = nullptr;
    std::vector<const QObject*> position;  // the coordinate boxes and hemisphere options
    bool computed = false;
  };
  // Clears the computed variations that belong to the control `source`.
  void positionChanged(const QObject* source);

  std::vector<BoundVariation> variations_;
  struct SettingDefault {
    std::vector<QAbstractButton*> buttons;
    bool chosen = false;
  };
  std::vector<SettingDefault> settingDefaults_;

  void showModel(const MagSettings& m);

  bool writing_ = false;
  QLabel* lblModel_ = nullptr;
  QString modelFormat_;
};

}  // namespace norvane
