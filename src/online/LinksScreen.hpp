#pragma once
// frmData18 "Aviation data links": the user's list of up to 15 web links, opened in the default
// browser, with an editor. Changes go to the settings in memory and reach Norvane.ini at exit.

#include "app/CalculatorScreen.hpp"

class QLineEdit;
class QListWidget;
class QTimer;

namespace norvane {

class LinksScreen : public CalculatorScreen {
  Q_OBJECT
 public:
  enum EditButton { kAdd, kEdit, kDelete, kSave, kCancel, kRestore, kEditButtonCount };

  explicit LinksScreen(QWidget* parent = nullptr);

  // Opens the selected address in the default browser.
  void connectSelected();
  // Reads the system's connection state and sets the Connect button accordingly.
  void refreshConnectionState();

 private:
  enum class Mode { Browse, Adding, Editing };

  void buildList();
  QGroupBox* buildEditor();
  void startTimers();

  void fillList(int select);
  void showSelected();
  void setMode(Mode mode);
  void onEditButton(int which);
  void save();
  void restoreDefaults();

  QListWidget* listLinks_;
  QPushButton* cmdConnect_;
  QLineEdit* titleBox_;
  QLineEdit* linkBox_;
  QPushButton* cmdEditLink_[kEditButtonCount];
  QTimer* timer_;    // Connect stays disabled a moment after opening a link
  QTimer* cxTimer_;  // polls the connection state
  Mode mode_ = Mode::Browse;
  bool connected_ = true;
};

}  // namespace norvane
