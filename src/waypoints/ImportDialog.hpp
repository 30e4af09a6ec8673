#pragma once
// frmImport, "Search database": finds an identifier in the active waypoint database and hands the
// chosen record to the screen that opened it.

#include <QDialog>

class QHBoxLayout;
class QLabel;
class QListWidget;
class QPushButton;

namespace norvane {

class InputBox;
class NavDatabase;

class ImportDialog : public QDialog {
  Q_OBJECT
 public:
  explicit ImportDialog(const NavDatabase& db, QWidget* parent = nullptr);

  // The chosen record number (1-based), 0 when none was chosen (SelectedRecord).
  int selectedRecord() const { return selectedRecord_; }

  // cmdSearch: one match closes the dialog with it; several fill the list; none says so.
  void search();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QHBoxLayout* buildSearchRow();
  QHBoxLayout* buildButtons();
  void connectSignals();
  void selectCurrent();
  void showInfo(int row);

  const NavDatabase& db_;
  InputBox* inICAO_;
  QPushButton* cmdSearch_;
  QListWidget* listICAO_;
  QLabel* lblInfo_;
  QPushButton* cmdSelect_;
  QPushButton* cmdExit_;
  int first_ = 0;  // record number of the list's first line
  int selectedRecord_ = 0;
};

// Shows the dialog modally; returns the chosen record number, 0 for none.
int RunImportDialog(const NavDatabase& db, QWidget* parent);

}  // namespace norvane
