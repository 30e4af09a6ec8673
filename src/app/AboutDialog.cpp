#include "app/AboutDialog.hpp"

#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "app/AppContext.hpp"
#include "app/UiHelpers.hpp"

namespace norvane {

AboutDialog::AboutDialog(QWidget* parent) : QDialog(parent) {
  setObjectName("frmAbout");
  setWindowTitle(tr("About Norvane"));
  auto* root = new QVBoxLayout(this);
  root->setSizeConstraint(QLayout::SetFixedSize);
  auto* title = new QLabel(QStringLiteral("<h2>Norvane</h2>"), this);
  root->addWidget(title);
  auto* version =
      new QLabel(tr("Version %1.%2").arg(NORVANE_VERSION_MAJOR).arg(NORVANE_VERSION_MINOR, 2, 10, QChar('0')), this);
  version->setObjectName("LblVersion");
  root->addWidget(version);
  auto* text = new QLabel(tr("Aeronautical calculator: standard atmosphere, airspeeds, wind, turns, holdings,\n"
                             "tracks and distances, magnetic variation, sunrise and sunset, unit conversions,\n"
                             "waypoints and airport weather. A command-line edition, norvane-cli, runs every\n"
                             "calculator without a window."),
                          this);
  root->addWidget(text);
  if (!App().settingsNotice.isEmpty()) {
    auto* notice = new QLabel(App().settingsNotice, this);
    notice->setObjectName("LblSettingsNotice");
    notice->setStyleSheet(QStringLiteral("color: %1").arg(Colours().invalidText.name()));
    root->addWidget(notice);
  }
  extension_ = new QVBoxLayout;
  root->addLayout(extension_);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
  buttons->button(QDialogButtonBox::Close)->setObjectName("cmdClose");
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  root->addWidget(buttons);
  if (Hooks().decorateAbout) Hooks().decorateAbout(this);
}

}  // namespace norvane
