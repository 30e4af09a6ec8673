#pragma once
// The update check's part of the desktop program: the About box's update button, the update
// dialog frmUpdate, the daily check on the menu's first tick and the start-up clean-up.

#include <QDialog>

class QLabel;
class QPushButton;
class QTimer;

namespace norvane {

class AboutDialog;
class TransferCancel;

// frmUpdate: replaces the executable on its first timer tick and reports the outcome. Close,
// Escape and the window's close button work at any time: during the update they cancel it (the
// program stays as it was, the partial download is removed) and close the dialog.
class UpdateDialog : public QDialog {
  Q_OBJECT
 public:
  explicit UpdateDialog(QWidget* parent = nullptr);
  bool updated() const { return updated_; }
  bool running() const { return running_; }

 public slots:
  void reject() override;  // during the update: cancels it, then closes

 private:
  void onTick();

  QLabel* lblUpdate_;
  QPushButton* cmdClose_;
  QTimer* timer_;
  TransferCancel* cancel_;
  bool updated_ = false;
  bool finished_ = false;
  bool running_ = false;
};

// Adds CmdUpdate and LblUpdate to the About box (or, for a package-managed install, a note).
void DecorateAboutBox(AboutDialog* about);

// Shows frmUpdate modally; true when the executable was replaced.
bool RunUpdateDialog(QWidget* parent);

// The daily automatic check (first tick of the menu timer); true when the program should end.
bool FirstTickUpdateCheck(QWidget* menu);

// Asks "A new Norvane version (x.yy) is available / Would you like to update it now ?".
bool AskToUpdate(QWidget* parent, int16_t version);

// Today's date as stored in PrevAutoUpdate (the system's short date form).
std::string TodayText();

}  // namespace norvane
