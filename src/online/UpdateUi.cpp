#include "online/UpdateUi.hpp"

#include <QApplication>
#include <QDate>
#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

#include <cstdio>

#include "app/AboutDialog.hpp"
#include "app/AppContext.hpp"
#include "app/UiHelpers.hpp"
#include "online/Internet.hpp"
#include "online/SelfUpdate.hpp"
#include "online/ServerAddresses.hpp"
#include "online/UpdateInfo.hpp"

namespace norvane {

UpdateDialog::UpdateDialog(QWidget* parent) : QDialog(parent) {
  setObjectName("frmUpdate");
  setWindowTitle(tr("Norvane update"));
  auto* root = new QVBoxLayout(this);
  root->setSizeConstraint(QLayout::SetFixedSize);
  lblUpdate_ = new QLabel(this);
  lblUpdate_->setObjectName("LblUpdate");
  lblUpdate_->setMinimumWidth(
      lblUpdate_->fontMetrics().horizontalAdvance(QString::fromLatin1(update_text::kCompleted)) + 40);
  lblUpdate_->setAlignment(Qt::AlignCenter);
  root->addWidget(lblUpdate_);
  cmdClose_ = new QPushButton(tr("Close"), this);
  cmdClose_->setObjectName("cmdClose");
  cmdClose_->setToolTip(tr("Stop the update (the program stays as it is) or close this window"));
  connect(cmdClose_, &QPushButton::clicked, this, [this] { finished_ ? accept() : reject(); });
  cancel_ = new TransferCancel(this);
  root->addWidget(cmdClose_, 0, Qt::AlignHCenter);
  timer_ = new QTimer(this);
  timer_->setObjectName("Timer");
  timer_->setInterval(100);
  connect(timer_, &QTimer::timeout, this, &UpdateDialog::onTick);
  timer_->start();
}

void UpdateDialog::onTick() {
  timer_->stop();
  running_ = true;
  lblUpdate_->setText(QString::fromLatin1(update_text::kInProgress));
  QApplication::setOverrideCursor(Qt::WaitCursor);
  updated_ = DoSelfUpdate(RunningExecutablePath(), cancel_);
  QApplication::restoreOverrideCursor();
  running_ = false;
  finished_ = true;
  if (cancel_->Cancelled() && !updated_) return QDialog::reject();
  lblUpdate_->setText(QString::fromLatin1(updated_ ? update_text::kCompleted : update_text::kFailed));
  cmdClose_->setDefault(true);
  cmdClose_->setFocus();
}

void UpdateDialog::reject() {
  if (running_) {
    // The transfer ends at once; onTick removes what was downloaded and closes the dialog.
    cancel_->Cancel();
    return;
  }
  timer_->stop();
  QDialog::reject();
}

bool RunUpdateDialog(QWidget* parent) {
  UpdateDialog dialog(parent);
  dialog.exec();
  return dialog.updated();
}

bool AskToUpdate(QWidget* parent, int16_t version) {
  QMessageBox box(QMessageBox::Question, QStringLiteral("Norvane"),
                  QString::fromLatin1(UpdateQuestionText(version).c_str()).replace("\r\n", "\n"),
                  QMessageBox::Yes | QMessageBox::No, parent);
  box.setObjectName("UpdateQuestion");
  return box.exec() != QMessageBox::No;
}

void DecorateAboutBox(AboutDialog* about) {
  auto* row = new QHBoxLayout;
  auto* lblUpdate = new QLabel(about);
  lblUpdate->setObjectName("LblUpdate");
  lblUpdate->setWordWrap(true);
  if (!CanReplaceExecutable(RunningExecutablePath())) {
    lblUpdate->setText(QString::fromLatin1(update_text::kPackageManaged));
    row->addWidget(lblUpdate, 1);
    about->extensionLayout()->addLayout(row);
    return;
  }
  auto* cmdUpdate = MakeButton(about, QObject::tr("Check for &update"), "CmdUpdate",
                               QObject::tr("Look for a newer version of Norvane on the update server"));
  row->addWidget(cmdUpdate);
  row->addWidget(lblUpdate, 1);
  about->extensionLayout()->addLayout(row);

  QObject::connect(cmdUpdate, &QPushButton::clicked, about, [about, cmdUpdate, lblUpdate] {
    lblUpdate->setText(QString::fromLatin1(update_text::kChecking));
    if (!InternetConnected()) {
      lblUpdate->setText(QString::fromLatin1(update_text::kNoConnection));
      return;
    }
    cmdUpdate->setEnabled(false);
    StartUpdateCheck(about, [about, cmdUpdate, lblUpdate](const UpdateOffer& offer) {
      cmdUpdate->setEnabled(true);
      lblUpdate->setText(QString::fromLatin1(VerdictText(offer.verdict)));
      if (offer.verdict == ServerVersionVerdict::NewVersion && AskToUpdate(about, offer.version)) {
        about->setUpdateRequested(true);
        about->accept();
      }
    });
  });
}

std::string TodayText() { return S(QLocale().toString(QDate::currentDate(), QLocale::ShortFormat)); }

bool FirstTickUpdateCheck(QWidget* menu) {
  Settings& s = App().settings;
  // A package-managed install is updated by the system: no check, no question.
  if (s.AutoUpdateCheck != 1 || !CanReplaceExecutable(RunningExecutablePath())) return false;
  // The day is saved before the server is asked: a program killed during the check (a server
  // that holds it, a crash) is not sent to the same server again at every start that day.
  const std::optional<int16_t> version = AutomaticUpdateCheck(s.AutoUpdateCheck, s.PrevAutoUpdate, TodayText(), [&s] {
    std::string why;
    if (!WriteSettings(App().settingsFile(), s, &why))
      std::fprintf(stderr, "norvane: settings not saved to %s: %s\n", App().settingsFile().c_str(), why.c_str());
  });
  if (!version || !AskToUpdate(menu, *version)) return false;
  return RunUpdateDialog(menu);
}

}  // namespace norvane
