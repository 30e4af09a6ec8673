#include "navigation/NavigationScreen.hpp"

#include <algorithm>

#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "app/Angles.hpp"
#include "app/AppContext.hpp"
#include "app/TextFormat.hpp"
#include "app/UiHelpers.hpp"
#include "waypoints/NavDBShell.hpp"

namespace norvane {

double NavigationScreen::Coordinate::degrees() const {
  const double m = min->isEmpty() ? 0 : min->value();
  const double s = !sec || sec->isEmpty() ? 0 : sec->value();
  return DmsToDegrees(deg->value(), m, s, opt[1]->isChecked());
}

CoordinateFields NavigationScreen::Coordinate::fields() const { return {deg, min, sec, opt[0], opt[1]}; }

void NavigationScreen::Coordinate::set(const QString& d, const QString& m, const QString& s, bool southOrWest) const {
  deg->setText(d);
  min->setText(m);
  if (sec) sec->setText(s);
  opt[southOrWest ? 1 : 0]->setChecked(true);
}

NavigationScreen::Coordinate NavigationScreen::addCoordinate(const QString& caption, const QString& who,
                                                             bool isLongitude, bool withSeconds,
                                                             const QString& optName) {
  Coordinate c;
  c.frame = makeFrame(caption);
  // "Origin latitude degrees (0 to 89)"; the quantity's own caption when no point is named.
  const auto add = [&](const Quantity& q) {
    QString tip = QString::fromStdString(ToolTipText(q));
    if (!who.isEmpty()) tip = who + ' ' + tip[0].toLower() + tip.mid(1);
    return addBox(RuleOf(q), tip);
  };
  c.deg = add(isLongitude ? kLongitudeDegrees : kLatitudeDegrees);
  c.min = add(isLongitude ? kLongitudeMinutes : kLatitudeMinutes);
  if (withSeconds) c.sec = add(isLongitude ? kLongitudeSeconds : kLatitudeSeconds);

  auto* grid = new QGridLayout(c.frame);
  grid->setHorizontalSpacing(4);
  grid->setVerticalSpacing(2);
  const int charWidth = c.deg->fontMetrics().horizontalAdvance(QLatin1Char('0'));
  int col = 0;
  for (auto [box, label] : {std::pair{c.deg, tr("Deg")}, std::pair{c.min, tr("Min")}, std::pair{c.sec, tr("Sec")}}) {
    if (!box) continue;
    auto* l = makeCaption(label);
    l->setBuddy(box);
    grid->addWidget(l, 0, col, Qt::AlignBottom);
    box->setFixedWidth(charWidth * (box->maxLength() + 1) + 14);
    box->setAlignment(Qt::AlignRight);
    grid->addWidget(box, 1, col);
    defaults_.emplace_back(box, QString());
    ++col;
  }
  const QString letters[2] = {isLongitude ? tr("E") : tr("N"), isLongitude ? tr("W") : tr("S")};
  for (int i = 0; i < 2; ++i) {
    c.opt[i] = makeOption(letters[i], optName + QString::number(i), c.frame);
    grid->addWidget(c.opt[i], i, col);
  }
  c.opt[0]->setChecked(true);
  return c;
}

QRadioButton* NavigationScreen::makeOption(const QString& text, const QString& name, QWidget* parent) {
  auto* b = new QRadioButton(text, parent);
  b->setObjectName(name);
  connect(b, &QRadioButton::toggled, this, [this, b](bool on) {
    if (!on) return;
    positionChanged(b);
    recalculateIfShown();
  });
  return b;
}

void NavigationScreen::makeTrackOptions(QWidget* parent) {
  optTRK_[0] = makeOption(tr("True"), "OptTRK0", parent);
  optTRK_[1] = makeOption(tr("Magnetic"), "OptTRK1", parent);
  optTRK_[App().settings.AutoMV == 1 ? 1 : 0]->setChecked(true);
  followSetting({optTRK_[0], optTRK_[1]});
}

void NavigationScreen::followSetting(std::vector<QAbstractButton*> buttons) {
  const auto kept = App().screenInputs.find(objectName());
  const bool chosen = kept != App().screenInputs.end() && kept->second.contains(buttons.front()->objectName());
  const size_t index = settingDefaults_.size();
  for (QAbstractButton* b : buttons)
    connect(b, &QAbstractButton::toggled, this, [this, index](bool on) {
      if (on) settingDefaults_[index].chosen = true;
    });
  settingDefaults_.push_back({std::move(buttons), chosen});
}

void NavigationScreen::closeEvent(QCloseEvent* e) {
  CalculatorScreen::closeEvent(e);  // remembers every input
  const auto kept = App().screenInputs.find(objectName());
  if (kept == App().screenInputs.end()) return;
  for (const SettingDefault& d : settingDefaults_)
    if (!d.chosen)
      for (const QAbstractButton* b : d.buttons) kept->second.remove(b->objectName());
}

std::pair<QLabel*, QLabel*> NavigationScreen::addLatLonResults(QGridLayout* grid, const QString& widest) {
  QLabel* labels[2];
  const QString captions[2] = {tr("Latitude"), tr("Longitude")};
  for (int i = 0; i < 2; ++i) {
    grid->addWidget(makeCaption(captions[i]), 0, i, Qt::AlignHCenter);
    labels[i] = makeResult(QStringLiteral("dataR%1").arg(i));
    labels[i]->setMinimumWidth(labels[i]->fontMetrics().horizontalAdvance(widest) + 40);
    grid->addWidget(labels[i], 1, i);
  }
  return {labels[0], labels[1]};
}

bool NavigationScreen::magneticTracks() const { return optTRK_[1]->isChecked(); }

QWidget* NavigationScreen::makeImportButton(const QString& name, const Coordinate* lat, const Coordinate* lon) {
  auto* box = new QWidget(this);
  auto* column = new QVBoxLayout(box);
  column->setContentsMargins(0, 0, 0, 0);
  auto* b = MakeButton(box, tr("Import from database"), name);
  auto* named = new QLabel(box);
  named->setObjectName(QStringLiteral("lbl") + name.mid(3));
  named->setAlignment(Qt::AlignCenter);
  named->setMinimumHeight(named->fontMetrics().height());
  column->addWidget(b);
  column->addWidget(named);
  EnableWithDatabase(this, b, tr("Take the coordinates of a waypoint from the active database"));
  const CoordinateFields latFields = lat->fields(), lonFields = lon->fields();
  connect(b, &QPushButton::clicked, this, [this, latFields, lonFields, named] {
    if (ImportWaypoint(this, latFields, lonFields, named) == ImportOutcome::NoDatabase) showError(tr(kNoDatabaseText));
  });
  return box;
}

MagSettings NavigationScreen::DefaultMagSettings() {
  const Settings& s = App().settings;
  return {s.DefMVYear, MagModel(s.DefMVModel)};
}

QLabel* NavigationScreen::makeModelLabel(const QString& format, QWidget* parent) {
  lblModel_ = new QLabel(parent);
  lblModel_->setObjectName("lblModel");
  modelFormat_ = format;
  showModel(DefaultMagSettings());
  return lblModel_;
}

MagSettings NavigationScreen::magSettings() {
  const MagSettings m = DefaultMagSettings();
  showModel(m);
  return m;
}

void NavigationScreen::showModel(const MagSettings& m) {
  if (!lblModel_) return;
  lblModel_->setText(modelFormat_.arg(QString::fromStdString(MagSettingsText(m))));
  lblModel_->setToolTip(tr("Computed magnetic variation: %1 model, 1 January %2 (Options screen)")
                            .arg(QString::fromUtf8(MagModelName(m.model)))
                            .arg(m.year));
}

void NavigationScreen::writeBox(InputBox* box, const QString& text) {
  writing_ = true;
  box->setText(text);
  writing_ = false;
}

void NavigationScreen::writeVariation(InputBox* box, double variation) {
  writeBox(box, LocaleText(FormatMask(variation, "0.0")));
  for (BoundVariation& v : variations_)
    if (v.box == box) v.computed = true;
}

void NavigationScreen::bindVariation(InputBox* box, const Coordinate& lat, const Coordinate& lon) {
  BoundVariation v;
  v.box = box;
  for (const Coordinate* c : {&lat, &lon})
    for (const QObject* o :
         {static_cast<const QObject*>(c->deg), static_cast<const QObject*>(c->min), static_cast<const QObject*>(c->sec),
          static_cast<const QObject*>(c->opt[0]), static_cast<const QObject*>(c->opt[1])})
      if (o) v.position.push_back(o);
  variations_.push_back(std::move(v));
}

void NavigationScreen::positionChanged(const QObject* source) {
  for (BoundVariation& v : variations_) {
    if (source == v.box) {
      v.computed = false;  // typed by the user: it stays
    } else if (v.computed && std::find(v.position.begin(), v.position.end(), source) != v.position.end()) {
      v.computed = false;
      writeBox(v.box, QString());
    }
  }
}

std::optional<double> NavigationScreen::OptionalValue(const InputBox* box) {
  if (box->isEmpty()) return std::nullopt;
  return box->value();
}

void NavigationScreen::boxEdited(int index) {
  if (writing_) return;
  positionChanged(box(index));
  CalculatorScreen::boxEdited(index);
}

void NavigationScreen::clearResetData() {
  for (auto& [box, text] : defaults_) box->setText(text);
  clearData();
}

}  // namespace norvane
