#pragma once
// frmAbout: program name, version and purpose; the update service adds its part through a hook.

#include <QDialog>

class QVBoxLayout;

namespace norvane {

class AboutDialog : public QDialog {
  Q_OBJECT
 public:
  explicit AboutDialog(QWidget* parent = nullptr);
  bool updateRequested() const { return updateRequested_; }
  void setUpdateRequested(bool on) { updateRequested_ = on; }
  // Where a service may add its own controls (above the Close button).
  QVBoxLayout* extensionLayout() const { return extension_; }

 private:
  bool updateRequested_ = false;
  QVBoxLayout* extension_ = nullptr;
};

}  // namespace norvane
