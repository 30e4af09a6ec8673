#include "sun/SunScreen.hpp"

#include <algorithm>

#include <QDateTime>
#include <QTimeZone>
#include <QCompleter>
#include <QButtonGroup>
#include <QComboBox>
#include <QDate>
#include <QDateEdit>
#include <QEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QVBoxLayout>

#include "app/Angles.hpp"
#include "app/AppContext.hpp"
#include "app/TextFormat.hpp"
#include "app/UiHelpers.hpp"
#include "sun/SunTimes.hpp"
#include "waypoints/NavDBShell.hpp"
#include "waypoints/WaypointImport.hpp"

namespace norvane {
namespace {

// One hemisphere pair in its own exclusive group, so that N/S and E/W do not exclude each other.
void MakeHemisphere(QWidget* parent, QRadioButton* (&opt)[2], const char* name, const QString& a, const QString& b) {
  auto* group = new QButtonGroup(parent);
  opt[0] = new QRadioButton(a, parent);
  opt[1] = new QRadioButton(b, parent);
  for (int i = 0; i < 2; ++i) {
    opt[i]->setObjectName(QStringLiteral("%1%2").arg(name).arg(i));
    group->addButton(opt[i], i);
  }
  opt[0]->setChecked(true);
}

}  // namespace

SunScreen::SunScreen(QWidget* parent) : CalculatorScreen(11, "frmData11", tr("Sunrise and sunset"), parent) {
  buildPosition();
  buildDateAndTime();
  buildResults();

  // Load: today's date, the first twilight kind, the offset from the settings.
  twCombo_->setCurrentIndex(0);
  const int offset = std::clamp<int>(App().settings.LTOffset, kLocalTimeOffset.min, kLocalTimeOffset.max);
  ltOff_->setValue(offset);
  ltOffsetChanged(offset);
  timeSystemChanged();

  connectSignals();
  setTabChain();
}

// The four position boxes, and degrees and minutes with the hemisphere beside them.
void SunScreen::buildPosition() {
  latDeg_ = addBox(kLatitudeDegrees);
  latMin_ = addBox(kLatitudeMinutes);  // empty reads 0
  lonDeg_ = addBox(kLongitudeDegrees);
  lonMin_ = addBox(kLongitudeMinutes);
  for (InputBox* b : {latDeg_, latMin_, lonDeg_, lonMin_})
    b->setFixedWidth(b->fontMetrics().horizontalAdvance(QStringLiteral("0000")) + 16);

  // Position: degrees and minutes with the hemisphere beside them.
  auto* position = new QHBoxLayout;
  const auto positionFrame = [&](const QString& caption, const char* frameName, InputBox* deg, InputBox* min,
                                 int firstCaption, QRadioButton*(&opt)[2], const char* optName, const QString& a,
                                 const QString& b) {
    QGroupBox* frame = makeFrame(caption, frameName);
    auto* g = new QGridLayout(frame);
    g->addWidget(makeCaption(tr("Deg"), QStringLiteral("lbllat%1").arg(firstCaption)), 0, 0);
    g->addWidget(makeCaption(tr("Min"), QStringLiteral("lbllat%1").arg(firstCaption + 1)), 0, 1);
    g->addWidget(deg, 1, 0);
    g->addWidget(min, 1, 1);
    MakeHemisphere(frame, opt, optName, a, b);
    g->addWidget(opt[0], 0, 2);
    g->addWidget(opt[1], 1, 2);
    position->addWidget(frame);
  };
  positionFrame(tr("Latitude"), "FrameLat", latDeg_, latMin_, 0, optLat_, "OptLat", tr("N"), tr("S"));
  positionFrame(tr("Longitude"), "FrameLng", lonDeg_, lonMin_, 2, optLng_, "OptLng", tr("E"), tr("W"));
  contentLayout()->addLayout(position);
}

void SunScreen::buildDateAndTime() {
  // Date and time system.
  auto* when = new QHBoxLayout;
  QGroupBox* frameDate = makeFrame(tr("Date"), "FrameDate");
  auto* dl = new QVBoxLayout(frameDate);
  dtPicker_ = new QDateEdit(frameDate);
  dtPicker_->setObjectName("DTPicker");
  dtPicker_->setCalendarPopup(true);
  dtPicker_->setDisplayFormat(QStringLiteral("dd MMM yyyy"));
  dtPicker_->setDateRange(QDate(1900, 1, 1), QDate(2100, 12, 31));
  dtPicker_->setDate(QDate::currentDate());
  dtPicker_->setToolTip(tr("Date of the events (the UTC date)"));
  dl->addWidget(dtPicker_);
  auto* dateColumn = new QVBoxLayout;
  dateColumn->addWidget(frameDate);
  cmdImportInitial_ = MakeButton(this, tr("Import from database"), "cmdImportInitial");
  connect(cmdImportInitial_, &QPushButton::clicked, this, &SunScreen::importPosition);
  EnableWithDatabase(this, cmdImportInitial_, tr("Take the position of a waypoint of the active database"));
  dateColumn->addStretch();
  dateColumn->addWidget(cmdImportInitial_);
  importedName_ = makeCaption(QString(), "lblImportInitial");
  importedName_->setAlignment(Qt::AlignCenter);
  importedName_->setMinimumHeight(importedName_->fontMetrics().height());
  dateColumn->addWidget(importedName_);
  when->addLayout(dateColumn);

  QGroupBox* frameTime = makeFrame(tr("Time system"), "FrameUTCLT");
  auto* tl = new QGridLayout(frameTime);
  auto* ttGroup = new QButtonGroup(frameTime);
  ttOpt_[0] = new QRadioButton(tr("UTC"), frameTime);
  ttOpt_[1] = new QRadioButton(tr("LT"), frameTime);
  ttOpt_[2] = new QRadioButton(tr("Zone"), frameTime);
  ttOpt_[2]->setToolTip(tr("Local time of a time zone, with its daylight saving on the date"));
  for (int i = 0; i < 3; ++i) {
    ttOpt_[i]->setObjectName(QStringLiteral("TTOpt%1").arg(i));
    ttGroup->addButton(ttOpt_[i], i);
    tl->addWidget(ttOpt_[i], 0, i);
  }
  ttOpt_[0]->setChecked(true);
  ltOff_ = MakeValueScrollBar(frameTime, "LTOff", int(kLocalTimeOffset.min), int(kLocalTimeOffset.max), 1, 150);
  ltOff_->setToolTip(
      tr("Local time offset from UTC in whole hours (%1 to +%2)").arg(kLocalTimeOffset.min).arg(kLocalTimeOffset.max));
  ltOffsetLbl_ = new QLabel(frameTime);
  ltOffsetLbl_->setObjectName("LTOffsetLbl");
  ltOffsetLbl_->setMinimumWidth(
      ltOffsetLbl_->fontMetrics().horizontalAdvance(tr("Local time offset from UTC (h): %1").arg("-12")) + 8);
  tl->addWidget(ltOffsetLbl_, 1, 0, 1, 2);
  tl->addWidget(ltOff_, 2, 0, 1, 3);
  // Time zones of the system's tz database, found by typing any part of the name ("Kolkata").
  tzCombo_ = new QComboBox(frameTime);
  tzCombo_->setObjectName("TZCombo");
  tzCombo_->setEditable(true);
  tzCombo_->setInsertPolicy(QComboBox::NoInsert);
  for (const QByteArray& id : QTimeZone::availableTimeZoneIds()) tzCombo_->addItem(QString::fromLatin1(id));
  tzCombo_->setCurrentText(QString::fromLatin1(QTimeZone::systemTimeZoneId()));
  tzCombo_->completer()->setFilterMode(Qt::MatchContains);
  tzCombo_->completer()->setCaseSensitivity(Qt::CaseInsensitive);
  tzCombo_->completer()->setCompletionMode(QCompleter::PopupCompletion);
  tzCombo_->setToolTip(tr("IANA time zone (Asia/Kolkata, America/St_Johns): type a part of its name"));
  tzCombo_->setEnabled(false);
  tl->addWidget(tzCombo_, 3, 0, 1, 3);
  tzOffsetLbl_ = new QLabel(frameTime);
  tzOffsetLbl_->setObjectName("TZOffsetLbl");
  tl->addWidget(tzOffsetLbl_, 4, 0, 1, 3);
  when->addWidget(frameTime, 1);
  contentLayout()->addLayout(when);
}

void SunScreen::buildResults() {
  // Results: sunrise / sunset, and the twilight kind with dawn / dusk.
  auto* results = new QHBoxLayout;
  frameResults_ = makeFrame(QString(), "FrameResults");
  auto* rl = new QGridLayout(frameResults_);
  QLabel* riseSet[2];
  addResultRows(rl, {{tr("Sunrise"), "DataR0", {}, "lbldata0"}, {tr("Sunset"), "DataR1", {}, "lbldata1"}}, riseSet);
  sunrise_ = riseSet[0];
  sunset_ = riseSet[1];
  rl->setRowStretch(2, 1);
  results->addWidget(frameResults_);

  frameTwilight_ = makeFrame(QString(), "FrameTwilight");
  auto* twl = new QGridLayout(frameTwilight_);
  twCombo_ = new QComboBox(frameTwilight_);
  twCombo_->setObjectName("TWCombo");
  for (const char* name : kTwilightNames) twCombo_->addItem(tr(name));
  twCombo_->setToolTip(tr("Civil: sun 6° below the horizon; nautical: 12°; astronomical: 18°"));
  twl->addWidget(twCombo_, 0, 0, 1, 2);
  QLabel* dawnDusk[2];
  addResultRows(twl, {{tr("Dawn"), "DataR2", {}, "lbldata2"}, {tr("Dusk"), "DataR3", {}, "lbldata3"}}, dawnDusk, 1);
  dawn_ = dawnDusk[0];
  dusk_ = dawnDusk[1];
  results->addWidget(frameTwilight_);
  contentLayout()->addLayout(results);
}

void SunScreen::connectSignals() {
  for (QRadioButton* o : {optLat_[0], optLat_[1], optLng_[0], optLng_[1]})
    connect(o, &QRadioButton::toggled, this, [this](bool on) {
      if (on) optionChanged();
    });
  connect(ttOpt_[1], &QRadioButton::toggled, this, [this] {
    timeSystemChanged();
    optionChanged();
  });
  connect(ltOff_, &QScrollBar::valueChanged, this, [this](int v) {
    ltOffsetChanged(v);
    if (ttOpt_[1]->isChecked()) optionChanged();
  });
  connect(ttOpt_[2], &QRadioButton::toggled, this, [this](bool on) {
    tzCombo_->setEnabled(on);
    zoneChanged();
    if (!on) optionChanged();
  });
  connect(tzCombo_, &QComboBox::currentTextChanged, this, &SunScreen::zoneChanged);
  connect(twCombo_, &QComboBox::currentIndexChanged, this, &SunScreen::optionChanged);
  connect(dtPicker_, &QDateEdit::dateChanged, this, [this] {
    zoneChanged();  // daylight saving follows the date
    optionChanged();
  });
}

void SunScreen::setTabChain() {
  setTabSequence({latDeg_, latMin_, optLat_[0], lonDeg_, lonMin_, optLng_[0], cmdImportInitial_, dtPicker_, ttOpt_[0],
                  ltOff_, tzCombo_, twCombo_, calculateButton(), closeButton()});
}

bool SunScreen::calculate() {
  const double lat = latDeg_->value() + latMin_->value() / 60;  // an empty minutes box reads 0
  const double lon = lonDeg_->value() + lonMin_->value() / 60;
  SunQuery q;
  q.latitudeDeg = optLat_[1]->isChecked() ? -lat : lat;
  q.longitudeDeg = optLng_[1]->isChecked() ? -lon : lon;
  const QDate d = dtPicker_->date();
  q.day = static_cast<int16_t>(d.day());
  q.month = static_cast<int16_t>(d.month());
  q.year = static_cast<int16_t>(d.year());
  q.localTime = ttOpt_[1]->isChecked();
  const std::optional<int> zone = zoneOffsetMinutes();
  if (ttOpt_[2]->isChecked() && !zone) {
    showError(tr("Unknown time zone"));
    return false;
  }
  q.ltOffsetMinutes = zone.value_or(ltOff_->value() * 60);
  q.localTime = q.localTime || ttOpt_[2]->isChecked();
  q.twilightIndex = twCombo_->currentIndex();

  // "Permanent day/night" is a result too ("None" four times, the notice beside them), but one
  // that option changes clear rather than follow.
  const SunTexts t = CalculateSunTimes(q);
  sunrise_->setText(Q(t.sunrise));
  sunset_->setText(Q(t.sunset));
  dawn_->setText(Q(t.dawn));
  dusk_->setText(Q(t.dusk));
  showError(Q(t.message));
  followsOptions_ = t.calculated;
  return true;
}

void SunScreen::boxEdited(int /*index*/) { ClearResetData(); }

void SunScreen::optionChanged() {
  if (calculated() && followsOptions_)
    runCalculate();
  else if (resultsShown())
    ClearResetData();
}

std::optional<int> SunScreen::zoneOffsetMinutes() const {
  if (!ttOpt_[2]->isChecked()) return std::nullopt;
  const QByteArray id = tzCombo_->currentText().toLatin1();
  if (!QTimeZone::isTimeZoneIdAvailable(id)) return std::nullopt;
  return QTimeZone(id).offsetFromUtc(QDateTime(dtPicker_->date(), QTime(12, 0), QTimeZone::utc())) / 60;
}

void SunScreen::zoneChanged() {
  const std::optional<int> offset = zoneOffsetMinutes();
  if (offset) {
    const int m = std::abs(*offset);
    tzOffsetLbl_->setText(tr("UTC%1%2:%3 on this date")
                              .arg(*offset < 0 ? QLatin1Char('-') : QLatin1Char('+'))
                              .arg(m / 60)
                              .arg(m % 60, 2, 10, QLatin1Char('0')));
  } else {
    tzOffsetLbl_->setText(ttOpt_[2]->isChecked() ? tr("Unknown time zone") : QString());
  }
  timeSystemChanged();
  if (ttOpt_[2]->isChecked()) optionChanged();
}

void SunScreen::timeSystemChanged() {
  const bool lt = ttOpt_[1]->isChecked() || ttOpt_[2]->isChecked();
  frameResults_->setTitle(lt ? tr("Sunrise/Sunset (Local time)") : tr("Sunrise/Sunset (UTC)"));
  frameTwilight_->setTitle(lt ? tr("Twilight (Local time)") : tr("Twilight (UTC)"));
}

void SunScreen::ltOffsetChanged(int value) {
  ltOffsetLbl_->setText(tr("Local time offset from UTC (h): %1").arg(Q(SignedText(value))));
}

void SunScreen::importPosition() {
  // Whole degrees and rounded minutes: this screen has no seconds boxes.
  const CoordinateFields lat{latDeg_, latMin_, nullptr, optLat_[0], optLat_[1]};
  const CoordinateFields lon{lonDeg_, lonMin_, nullptr, optLng_[0], optLng_[1]};
  if (ImportWaypoint(this, lat, lon, importedName_) == ImportOutcome::NoDatabase) showError(tr(kNoDatabaseText));
}

void SunScreen::prepareScreenshot() {
  // London Heathrow, 51°28' N 0°27' W.
  latDeg_->setText(QStringLiteral("51"));
  latMin_->setText(QStringLiteral("28"));
  lonDeg_->setText(QStringLiteral("0"));
  lonMin_->setText(QStringLiteral("27"));
  optLng_[1]->setChecked(true);
  runCalculate();
}

}  // namespace norvane
