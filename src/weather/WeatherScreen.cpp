#include "weather/WeatherScreen.hpp"

#include <QButtonGroup>
#include <QFontDatabase>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QVBoxLayout>

#include "app/Accessibility.hpp"
#include "app/UiHelpers.hpp"
#include "atmosphere/AtmosphereCalculations.hpp"
#include "online/Internet.hpp"
#include "weather/MetarDecoder.hpp"
#include "weather/MetarText.hpp"
#include "weather/WeatherClient.hpp"

namespace norvane {

namespace {
// The kind of report chosen last, kept while the program runs.
int& LastKind() {
  static int kind = 0;
  return kind;
}
}  // namespace

WeatherScreen::WeatherScreen(QWidget* parent) : CalculatorScreen(17, "frmData17", tr("Airport weather"), parent) {
  setLive(true);  // the fetch button takes the place of Calculate

  auto* top = new QHBoxLayout;
  top->addWidget(buildAirport());
  top->addWidget(buildKind());
  addFetchButtons(top);
  contentLayout()->addLayout(top);

  buildReport();
  setTabChain();
}

// The ICAO code and the field elevation.
QGroupBox* WeatherScreen::buildAirport() {
  BoxRule code;
  code.mode = KeyMode::Letters;
  code.toUpper = true;
  code.maxLength = 4;
  code.check = BoxRule::Check::None;
  inboxICAO_ = addBox(code, tr("ICAO location indicator of the airport: four letters (e.g. EGLL)"));
  inboxICAO_->setObjectName("inboxICAO");
  inboxICAO_->setMaximumWidth(inboxICAO_->fontMetrics().horizontalAdvance(QStringLiteral("WWWWWW")) + 16);

  auto* airport = makeFrame(tr("Airport"), "FrameAirport");
  auto* al = new QHBoxLayout(airport);
  al->addWidget(makeCaption(tr("ICAO code"), "lblICAO"));
  al->addWidget(inboxICAO_);
  // The waypoint database holds no elevations: the user types the field's, for the density altitude.
  inboxElevation_ = addBox(kMetarFieldElevation);
  inboxElevation_->setObjectName("inboxElevation");
  inboxElevation_->setMaximumWidth(inboxElevation_->fontMetrics().horizontalAdvance(QStringLiteral("-15000")) + 24);
  al->addWidget(makeCaption(tr("Elevation (ft)"), "lblElevation"));
  al->addWidget(inboxElevation_);
  return airport;
}

// METAR or TAF, remembered while the program runs.
QGroupBox* WeatherScreen::buildKind() {
  auto* kind = makeFrame(tr("Data"), "FrameKind");
  auto* kl = new QHBoxLayout(kind);
  auto* group = new QButtonGroup(this);
  const QString captions[2] = {tr("METAR report"), tr("TAF forecast")};
  for (int i = 0; i < 2; ++i) {
    optW_[i] = new QRadioButton(captions[i], kind);
    optW_[i]->setObjectName(QStringLiteral("OptW%1").arg(i));
    group->addButton(optW_[i], i);
    kl->addWidget(optW_[i]);
  }
  optW_[LastKind() == 1 ? 1 : 0]->setChecked(true);
  connect(group, &QButtonGroup::idClicked, this, [](int id) { LastKind() = id; });
  return kind;
}

void WeatherScreen::addFetchButtons(QHBoxLayout* top) {
  cmdGetWeather_ = MakeButton(this, tr("&Get weather"), "CmdGetWeather",
                              tr("Fetch the latest report of this airport from the weather server"));
  cmdGetWeather_->setEnabled(false);
  connect(cmdGetWeather_, &QPushButton::clicked, this, &WeatherScreen::getWeather);
  top->addWidget(cmdGetWeather_, 0, Qt::AlignBottom);
  cmdCancel_ = MakeButton(this, tr("&Cancel"), "CmdCancel", tr("Stop waiting for the weather server"));
  cmdCancel_->setEnabled(false);
  connect(cmdCancel_, &QPushButton::clicked, this, &WeatherScreen::cancelFetch);
  top->addWidget(cmdCancel_, 0, Qt::AlignBottom);
}

// The state line, and the report as received and decoded on two tabs.
void WeatherScreen::buildReport() {
  lblR_ = new QLabel(this);
  lblR_->setObjectName("LblR");
  lblR_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  lblR_->setMinimumHeight(lblR_->fontMetrics().lineSpacing() + 4);  // no jump when it fills
  lblR_->setProperty("norvaneCaption", tr("Report"));
  MarkResult(lblR_);
  NameResults({lblR_});
  contentLayout()->addWidget(lblR_);

  textWeather_ = new QPlainTextEdit(this);
  textWeather_->setObjectName("TextWeather");
  textWeather_->setReadOnly(true);
  textWeather_->setLineWrapMode(QPlainTextEdit::WidgetWidth);
  textWeather_->setTabChangesFocus(true);
  QFont mono = QFontDatabase::systemFont(QFontDatabase::FixedFont);
  textWeather_->setFont(mono);
  const QFontMetrics fm(mono);
  textWeather_->setMinimumSize(fm.horizontalAdvance(QString(64, QChar('W'))) + 24, fm.lineSpacing() * 9 + 16);

  // The decoded report in plain language beside the report as received.
  textDecoded_ = new QPlainTextEdit(this);
  textDecoded_->setObjectName("TextDecoded");
  textDecoded_->setReadOnly(true);
  textDecoded_->setLineWrapMode(QPlainTextEdit::WidgetWidth);
  textDecoded_->setTabChangesFocus(true);
  textDecoded_->setMinimumSize(textWeather_->minimumSize());
  tabWeather_ = new QTabWidget(this);
  tabWeather_->setObjectName("TabWeather");
  tabWeather_->setAccessibleName(tr("Report"));
  tabWeather_->addTab(textWeather_, tr("&Raw"));
  tabWeather_->addTab(textDecoded_, tr("&Decoded"));
  contentLayout()->addWidget(tabWeather_);
}

void WeatherScreen::setTabChain() {
  setTabSequence({inboxICAO_, inboxElevation_, optW_[0], optW_[1], cmdGetWeather_, cmdCancel_, tabWeather_,
                  textWeather_, textDecoded_, closeButton()});
}

bool WeatherScreen::busy() const { return transfer_ != nullptr; }

void WeatherScreen::boxEdited(int index) {
  if (index == 1) {  // a new elevation only changes the density altitude
    showDecoded();
    return;
  }
  // A new code abandons a request still running for the old one.
  cancelFetch();
  SetTextColor(inboxICAO_, IsIcaoCode(S(inboxICAO_->text())) ? Colours().validText : Colours().invalidText);
}

void WeatherScreen::cancelFetch() {
  delete transfer_;  // aborts silently
  transfer_ = nullptr;
  cmdCancel_->setEnabled(false);
  lblR_->clear();
  NameResults({lblR_});
  textWeather_->clear();
  textDecoded_->clear();
  report_.clear();
  cmdGetWeather_->setEnabled(IsIcaoCode(S(inboxICAO_->text())));
}

void WeatherScreen::getWeather() {
  const std::string code = S(inboxICAO_->text());
  if (!IsIcaoCode(code) || busy()) return;
  lblR_->clear();
  NameResults({lblR_});
  report_.clear();
  setWeatherText(tr("..Getting data.."), Colours().validText);
  cmdGetWeather_->setEnabled(false);
  cmdCancel_->setEnabled(true);
  reply_.clear();
  transfer_ = new UrlTransfer(this);
  connect(transfer_, &UrlTransfer::Finished, this, &WeatherScreen::showResult);
  transfer_->Start(StationFileUrl(code, optW_[1]->isChecked() ? WeatherKind::Taf : WeatherKind::Metar),
                   kWeatherReplyLimit, [this](const char* data, int64_t size) {
                     reply_.append(data, static_cast<size_t>(size));
                     return true;
                   });
}

void WeatherScreen::showResult(int code) {
  transfer_->deleteLater();
  transfer_ = nullptr;
  cmdCancel_->setEnabled(false);
  cmdGetWeather_->setEnabled(IsIcaoCode(S(inboxICAO_->text())));
  const WeatherResult w = WeatherFromReply(static_cast<int16_t>(code), reply_);
  if (w.code == 0) {
    // UTF-8 cleaned of control characters by the reader (SafeServerText).
    lblR_->setText(QString::fromStdString(RecordedText(w)));
    NameResults({lblR_});
    // A TAF one change group per line, whatever line breaks the server kept.
    const bool taf = optW_[1]->isChecked();
    setWeatherText(QString::fromStdString(taf ? ReportLines(w.report) : w.report), Colours().validText);
    report_ = w.report;
    showDecoded();
  } else {
    setWeatherText(QString::fromLatin1(WeatherErrorText(w.code).c_str()), Colours().invalidText);
  }
}

void WeatherScreen::setWeatherText(const QString& text, const QColor& colour) {
  // Both views show progress and failures, whichever is in front.
  for (QPlainTextEdit* view : {textWeather_, textDecoded_}) {
    SetTextColor(view, colour);
    view->setPlainText(QString(text).replace(QLatin1String("\r\n"), QLatin1String("\n")));
  }
}

void WeatherScreen::showDecoded() {
  if (report_.empty()) return;
  std::optional<double> elevation;
  if (inboxElevation_->isValid() && !inboxElevation_->isEmpty()) elevation = inboxElevation_->value();
  QStringList lines;
  for (const DecodedLine& line : DescribeReport(DecodeReport(report_), elevation))
    lines << QString::fromStdString(line.text);
  SetTextColor(textDecoded_, Colours().validText);
  textDecoded_->setPlainText(lines.join(QLatin1Char('\n')));
}

void WeatherScreen::prepareScreenshot() { inboxICAO_->setText(QStringLiteral("EGLL")); }

}  // namespace norvane
