#include "app/OptionsScreen.hpp"

#include <algorithm>

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QVBoxLayout>

#include "app/AboutDialog.hpp"
#include "app/AppContext.hpp"
#include "app/MainMenu.hpp"
#include "app/TextFormat.hpp"
#include "app/UiHelpers.hpp"
#include "sun/SunTimes.hpp"
#include "navigation/GeoMag.hpp"

namespace norvane {

OptionsScreen::OptionsScreen(QWidget* parent) : CalculatorScreen(19, "frmData19", tr("Options and default"), parent) {
  setRemembersInputs(false);  // it shows the settings, which keep themselves
  calculateButton()->hide();
  closeButton()->hide();
  setInputValid(0, true);

  auto* top = new QHBoxLayout;
  top->addWidget(buildProgramOptions());
  for (QGroupBox* frame : {makeOptionGroup(tr("Default unit system"), "FrameUnits", "OptMetricUS",
                                           {tr("Metric"), tr("US units")}, optMetricUS_, Qt::Vertical)
                               .frame,
                           makeOptionGroup(tr("Colours"), "FrameColours", "OptColours", {tr("Day"), tr("Night")},
                                           optColours_, Qt::Vertical)
                               .frame}) {
    static_cast<QBoxLayout*>(frame->layout())->addStretch();
    top->addWidget(frame);
  }
  contentLayout()->addLayout(top);
  contentLayout()->addWidget(buildMagVar());
  contentLayout()->addWidget(buildLtOffset());
  contentLayout()->addWidget(buildDatabase());
  contentLayout()->addLayout(buildButtons());
  loadSettings();
}

QGroupBox* OptionsScreen::buildProgramOptions() {
  auto* program = makeFrame(tr("Program options"), "FrameProgram");
  auto* pl = new QVBoxLayout(program);
  checkSynchro_ = new QCheckBox(tr("Synchronize windows"), program);
  checkSynchro_->setObjectName("CheckSynchro");
  checkRemindPos_ = new QCheckBox(tr("Remind windows position"), program);
  checkRemindPos_->setObjectName("CheckRemindPos");
  checkAutoUpdate_ = new QCheckBox(tr("Auto check for update"), program);
  checkAutoUpdate_->setObjectName("CheckAutoUpdate");
  pl->addWidget(checkSynchro_);
  pl->addWidget(checkRemindPos_);
  pl->addWidget(checkAutoUpdate_);
  return program;
}

QGroupBox* OptionsScreen::buildMagVar() {
  auto* mv = makeFrame(tr("Magnetic variation"), "FrameMV");
  mv->setToolTip(tr("Default magnetic variation year and system used in navigation calculations"));
  auto* ml = new QGridLayout(mv);
  mvCombo_ = new QComboBox(mv);
  mvCombo_->setObjectName("MVCombo");
  // DefMVOpt<i> is model i of the settings file: IGRF-10, WMM2005, WMM2025, IGRF-14.
  for (int i = 0; i < kMagModelCount; ++i) {
    defMVOpt_[i] = new QRadioButton(QString::fromUtf8(MagModelName(MagModel(i))), mv);
    defMVOpt_[i]->setObjectName(QStringLiteral("DefMVOpt%1").arg(i));
    ml->addWidget(defMVOpt_[i], i / 2, i % 2);
    connect(defMVOpt_[i], &QRadioButton::toggled, this, [this, i](bool on) {
      if (on) showModelYears(MagModel(i));
    });
  }
  ml->addWidget(new QLabel(tr("Magvar year"), mv), 2, 0);
  ml->addWidget(mvCombo_, 2, 1);
  checkAutoMV_ = new QCheckBox(tr("Automatic MV calculation  "), mv);
  checkAutoMV_->setObjectName("CheckAutoMV");
  ml->addWidget(checkAutoMV_, 3, 0, 1, 2);
  return mv;
}

QGroupBox* OptionsScreen::buildLtOffset() {
  auto* lt = makeFrame(tr("Local time offset from UTC"), "FrameLT");
  auto* ll = new QHBoxLayout(lt);
  ll->addWidget(new QLabel(tr("LT offset (h)"), lt));
  ltOff_ = MakeValueScrollBar(lt, "LTOff", int(kLocalTimeOffset.min), int(kLocalTimeOffset.max), 1, 160);
  ll->addWidget(ltOff_, 1);
  ltOffsetLbl_ = new QLabel(lt);
  ltOffsetLbl_->setObjectName("LTOffsetLbl");
  ltOffsetLbl_->setMinimumWidth(30);
  ll->addWidget(ltOffsetLbl_);
  connect(ltOff_, &QScrollBar::valueChanged, this, &OptionsScreen::showLtOffset);
  return lt;
}

QGroupBox* OptionsScreen::buildDatabase() {
  auto* db = makeFrame(tr("Active waypoint database"), "FrameDB");
  auto* dl = new QHBoxLayout(db);
  lblDBName_ = new QLabel(db);
  lblDBName_->setObjectName("LblDBName");
  lblDBReason_ = new QLabel(db);  // why a database was refused
  lblDBReason_->setObjectName("LblDBReason");
  lblDBReason_->setWordWrap(true);
  auto* names = new QVBoxLayout;
  names->addWidget(lblDBName_);
  names->addWidget(lblDBReason_);
  dl->addLayout(names, 1);
  auto* cmdSetNavDB = MakeButton(db, tr("Set database"), "cmdSetNavDB");
  connect(cmdSetNavDB, &QPushButton::clicked, this, &OptionsScreen::setDatabase);
  dl->addWidget(cmdSetNavDB);
  return db;
}

// "Norvane information and update", Save and Cancel.
QHBoxLayout* OptionsScreen::buildButtons() {
  auto* bottom = new QHBoxLayout;
  auto* lblInfo =
      new QLabel(QStringLiteral("<a href=\"about\">%1</a>").arg(tr("Norvane information and update")), this);
  lblInfo->setObjectName("lblInfo");
  connect(lblInfo, &QLabel::linkActivated, this, [this] {
    AboutDialog about(this);
    about.exec();
    if (about.updateRequested() && Hooks().runUpdate && Hooks().runUpdate(this) && App().menu) App().menu->close();
  });
  bottom->addWidget(lblInfo, 1);
  auto* cmdSave = MakeButton(this, tr("Save"), "cmdSave", tr("Save and exit"));
  connect(cmdSave, &QPushButton::clicked, this, &OptionsScreen::save);
  bottom->addWidget(cmdSave);
  auto* cmdCancel = MakeButton(this, tr("Cancel"), "cmdCancel");
  connect(cmdCancel, &QPushButton::clicked, this, &QWidget::close);
  bottom->addWidget(cmdCancel);
  return bottom;
}

// Every control from the settings in memory.
void OptionsScreen::loadSettings() {
  const Settings& s = App().settings;
  checkSynchro_->setChecked(s.Synchronize == 1);
  checkRemindPos_->setChecked(s.RemindPosition == 1);
  checkAutoUpdate_->setChecked(s.AutoUpdateCheck == 1);
  optMetricUS_[s.DefaultUnitSystem == 1 ? 1 : 0]->setChecked(true);
  optColours_[s.Colours == 1 ? 1 : 0]->setChecked(true);
  const MagModel model = s.DefMVModel >= 0 && s.DefMVModel < kMagModelCount ? MagModel(s.DefMVModel) : MagModel::IGRF10;
  defMVOpt_[int(model)]->setChecked(true);
  showModelYears(model);
  mvCombo_->setCurrentIndex(std::clamp(s.DefMVYear - MagModelEpoch(model), 0, mvCombo_->count() - 1));
  checkAutoMV_->setChecked(s.AutoMV == 1);
  ltOff_->setValue(s.LTOffset);
  showLtOffset(s.LTOffset);
  showDatabase(tr("No active valid database"));
}

void OptionsScreen::showDatabase(const QString& failureText) {
  const ShellHooks& h = Hooks();
  const QString name = h.databaseDisplayName ? h.databaseDisplayName() : QString();
  lblDBName_->setText(name.isEmpty() ? failureText : name);
  lblDBReason_->setText(name.isEmpty() && h.databaseProblem ? h.databaseProblem() : QString());
  lblDBReason_->setVisible(!lblDBReason_->text().isEmpty());
}

void OptionsScreen::showModelYears(MagModel model) {
  // The same place in the list: a year of one 2005 model stays the same year in the other.
  const int index = std::max(0, mvCombo_->currentIndex());
  mvCombo_->clear();
  for (int y = MagModelEpoch(model); y <= MagModelLastYear(model); ++y) mvCombo_->addItem(QString::number(y));
  mvCombo_->setCurrentIndex(std::min(index, mvCombo_->count() - 1));
}

void OptionsScreen::showLtOffset(int v) { ltOffsetLbl_->setText(Q(SignedText(v))); }

void OptionsScreen::save() {
  Settings& s = App().settings;
  s.Synchronize = checkSynchro_->isChecked() ? 1 : 0;
  s.RemindPosition = checkRemindPos_->isChecked() ? 1 : 0;
  s.AutoUpdateCheck = checkAutoUpdate_->isChecked() ? 1 : 0;
  s.DefaultUnitSystem = optMetricUS_[0]->isChecked() ? 0 : 1;
  for (int i = 0; i < kMagModelCount; ++i)
    if (defMVOpt_[i]->isChecked()) s.DefMVModel = static_cast<int16_t>(i);
  s.DefMVYear = static_cast<int16_t>(mvCombo_->currentText().toInt());
  s.AutoMV = checkAutoMV_->isChecked() ? 1 : 0;
  s.LTOffset = static_cast<int16_t>(ltOff_->value());
  s.Colours = optColours_[1]->isChecked() ? 1 : 0;
  if (App().menu) App().menu->applySynchronize();
  UseColours(s.Colours == 1);
  close();
}

void OptionsScreen::setDatabase() {
  if (!ChooseDatabase(this)) return;
  showDatabase(tr("Invalid Database (error)"));
  if (App().menu) App().menu->refreshDatabaseLabel(tr("No active Waypoint Database"));
}

void OptionsScreen::closeEvent(QCloseEvent* e) {
  CalculatorScreen::closeEvent(e);  // the menu's unload step also enables LabelDB again
}

}  // namespace norvane
