#pragma once
// frmMenu: the program's main window. Twenty items in two columns and one full-width item below
// them open the calculator screens, one at a time, beside the menu; a timer runs the first-tick
// tasks and keeps the open screen attached to the menu.

#include <QPoint>
#include <QWidget>
#include <array>
#include <string>

#include "app/ScreenRegistry.hpp"

class QLabel;
class QFrame;
class QTimer;

namespace norvane {

class CalculatorScreen;
class MenuItem;

class MainMenu : public QWidget {
  Q_OBJECT
 public:
  static constexpr int kItemCount = 21;
  static const std::array<const char*, kItemCount> kCaptions;

  explicit MainMenu(const ScreenRegistry& registry, QWidget* parent = nullptr);
  ~MainMenu() override;

  int currentForm() const { return currentForm_; }
  int hiIndex() const { return hiIndex_; }
  CalculatorScreen* openScreen() const { return screen_; }
  QLabel* labelDB() const { return labelDB_; }
  QTimer* timer() const { return timer_; }

  // Opens item k as a click with the left button would (menutitle_Click).
  void chooseItem(int k);
  // Highlights item k (mouse hover or keyboard), returning the previous one to idle.
  void highlight(int k, bool byKeyboard);
  // Moves the menu to `topLeft`, or onto the nearest screen when no screen shows it there.
  void placeAt(const QPoint& topLeft);
  // Sets the timer interval from the Synchronize setting (20 ms or 100 ms).
  void applySynchronize();
  // Shows the active database's name, or `failureText` when there is none.
  void refreshDatabaseLabel(const QString& failureText);
  // Runs the first-tick tasks now (normally the first timer tick does).
  void firstTick();
  // Writes the window position and the settings file (done on close); false with the reason in
  // `error` when the file could not be written (the old one then stays as it was).
  bool saveSettings(std::string* error = nullptr);
  // Item colour helper: paints the frame and the caption of item k.
  void setItemColor(int k, const QColor& c);
  QColor itemColor(int k) const;
  // Repaints the items in the colours in use (after UseColours).
  void applyColours();

 signals:
  void screenOpened(int k);
  // The first tick's tasks are done (the database is loaded or refused).
  void firstTickFinished();

 protected:
  void keyPressEvent(QKeyEvent* e) override;
  void closeEvent(QCloseEvent* e) override;
  void changeEvent(QEvent* e) override;
  void paintEvent(QPaintEvent* e) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  bool focusNextPrevChild(bool next) override;
  void showEvent(QShowEvent* e) override;

 private:
  void placeScreen();
  void step(int key);
  void onTick();
  void onScreenUnloaded(int k);
  void chooseDatabase();
  void showAbout();

  const ScreenRegistry& registry_;
  std::array<MenuItem*, kItemCount> items_{};
  QLabel* labelDB_ = nullptr;
  QLabel* labelVersion_ = nullptr;
  QTimer* timer_ = nullptr;
  CalculatorScreen* screen_ = nullptr;
  int currentForm_ = -1;
  int hiIndex_ = -1;
  bool hiByMouse_ = false;
  bool minimized_ = false;
  bool firstTickDone_ = false;
  bool firstTickQueued_ = false;
  bool lastPressNotLeft_ = false;
  bool closing_ = false;
  bool placeOnShow_ = false;
  QPoint lastMenuPos_;
};

}  // namespace norvane
