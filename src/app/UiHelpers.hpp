#pragma once
// Small Qt helpers shared by the screens: colours, the open-file dialog, text conversion.

#include <QColor>
#include <QPoint>
#include <QRect>
#include <QSize>
#include <QString>
#include <string>

class QWidget;
class QLabel;
class QPushButton;
class QScrollBar;

namespace norvane {

inline const QColor kValidText(0, 128, 0);
inline const QColor kInvalidText(192, 0, 0);
inline const QColor kCalculateArmed(208, 255, 208);
inline const QColor kMenuIdle(208, 208, 208);
inline const QColor kMenuHighlight(255, 240, 224);
inline const QColor kMenuOpen(255, 208, 208);
// The push button that has the keyboard focus: Enter or Space presses it.
inline const QColor kFocusedButton(176, 208, 255);
inline const QColor kFocusedCalculate(128, 224, 128);

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
OpenFileResult OpenFileDialog(QWidget* parent, const QString& title, const QString& initialDir,
                              const QString& filter);

// A number formatted by the core (always with ".") as the user reads and types it: with the
// locale's decimal separator (App().decimalSep).
QString LocaleText(const std::string& s);

// A horizontal scroll bar that holds a whole number: reachable with Tab, moved with the arrow
// keys, Right and Up adding (QScrollBar inverts its keys by default, for the mouse wheel).
QScrollBar* MakeValueScrollBar(QWidget* parent, const QString& name, int min, int max, int pageStep,
                               int minWidth);

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
