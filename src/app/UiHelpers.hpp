#pragma once
// Small Qt helpers shared by the screens: colours, the open-file dialog, text conversion.

#include <QColor>
#include <QPalette>
#include <QPoint>
#include <QRect>
#include <QSize>
#include <QString>
#include <initializer_list>
#include <string>

class QWidget;
class QLabel;
class QPushButton;
class QScrollBar;

namespace norvane {

// The colours the program paints with. By day: the system's look with the program's own accents
// (the valid and invalid text, the armed Calculate button, the menu items). By night: a dark, dim
// palette for every window, in which every text keeps a contrast of at least 4.5:1.
struct ColourScheme {
  bool night;
  QColor validText, invalidText;  // input boxes, error texts
  QColor calculateArmed;
  // The push button that has the keyboard focus: Enter or Space presses it.
  QColor focusedButton, focusedCalculate;
  QColor menuIdle, menuHighlight, menuOpen;
  QColor marked;  // background of a result label that the screen points out
  // Pictures: the paper, its frame and grid, the main ink, secondary texts and lines.
  QColor paper, frame, grid, ink, darkLabel, label, quietLabel, course;
  QColor entry[3];      // direct, teardrop, parallel sectors
  QColor entryText[3];  // their names, drawn over the sectors
  QColor track;         // the typed track to the fix
  QColor wind;
  QColor path, changeover, changeoverText;  // descent profile
};

extern const ColourScheme kDayColours;
extern const ColourScheme kNightColours;

// The scheme in use: App().night chooses.
const ColourScheme& Colours();
// The application palettes of the two schemes.
QPalette DayPalette();
QPalette NightPalette();

inline QString Q(const std::string& s) { return QString::fromStdString(s); }
inline std::string S(const QString& s) { return s.toStdString(); }

// Sets the background of a widget through its palette (the Fusion style honours it).
void SetBackground(QWidget* w, const QColor& c);
// Sets the text colour of a widget through its palette.
void SetTextColor(QWidget* w, const QColor& c);

struct OpenFileResult {
  QString fileTitle;  // bare file name, empty when cancelled
  QString filePath;   // full path, empty when cancelled
};
// The system open-file dialog: the file must exist; the filter is "Description (*.ext)".
OpenFileResult OpenFileDialog(QWidget* parent, const QString& title, const QString& initialDir, const QString& filter);

// A number formatted by the core (always with ".") as the user reads and types it: with the
// locale's decimal separator (App().decimalSep).
QString LocaleText(const std::string& s);

// Each label shows the text at its place in `texts`, in the locale's form.
void ShowLocaleTexts(std::initializer_list<QLabel*> labels, std::initializer_list<std::string> texts);

// A push button named `name`. It is never an auto-default button: Enter belongs to the screen,
// which moves the focus with it.
QPushButton* MakeButton(QWidget* parent, const QString& text, const QString& name, const QString& toolTip = {});

// A horizontal scroll bar that holds a whole number: reachable with Tab, moved with the arrow
// keys, Right and Up adding (QScrollBar inverts its keys by default, for the mouse wheel).
QScrollBar* MakeValueScrollBar(QWidget* parent, const QString& name, int min, int max, int pageStep, int minWidth);

// A caption, a value scroll bar and the right-aligned label that shows its value, sharing one
// tool tip. The value label is wide enough for `widestValue`.
struct ValueScroll {
  QLabel* caption;
  QScrollBar* bar;
  QLabel* value;
};
ValueScroll MakeValueScroll(QWidget* parent, const QString& caption, const QString& name, int min, int max,
                            int pageStep, const QString& widestValue, const QString& toolTip);

// Where a window of frame size `frame` goes beside `anchor` (both frame geometries): right of it
// where it fits on `area` (the available geometry of the anchor's screen), else left of it, else
// below it, and in every case moved wholly onto `area` (top-left first when it is larger).
QPoint PlaceBeside(const QRect& anchor, const QSize& frame, const QRect& area);
// The top-left at which a window of frame size `frame` lies wholly on `area`, nearest to `at`.
QPoint ClampOnto(const QPoint& at, const QSize& frame, const QRect& area);

// The locale's decimal separator: the second character of the text form of 0.5.
char16_t LocaleDecimalSep();

}  // namespace norvane
