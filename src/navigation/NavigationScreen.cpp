#include "navigation/NavigationScreen.hpp"

#include <algorithm>

#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <map>
#include <QVBoxLayout>

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

NavigationScreen::Coordinate NavigationScreen::addCoordinate(const QString& caption, const QString& who,
                                                             bool isLongitude, bool withSeconds, const QString& optName) {
  Coordinate c;
  c.frame = makeFrame(caption);
  const QString axis = isLongitude ? tr("longitude") : tr("latitude");
  const auto help = [&](const QString& part, const QString& range) {
    QString text = axis + ' ' + part + " (" + range + ")";
    if (who.isEmpty()) text[0] = text[0].toUpper();
    else text = who + ' ' + text;
    return text;
  };
  const int maxDeg = isLongitude ? 179 : 89;
  BoxRule deg{KeyMode::UnsignedInt, 0, double(maxDeg)};
  deg.maxLength = isLongitude ? 3 : 2;
  BoxRule min{KeyMode::UnsignedInt, 0, 59};
  min.maxLength = 2;
  min.allowEmpty = true;
  BoxRule sec{KeyMode::UnsignedReal, 0, 59.99};
  sec.maxLength = 5;
  sec.allowEmpty = true;
  c.deg = addBox(deg, help(tr("degrees"), tr("0 to %1").arg(maxDeg)));
  c.min = addBox(min, help(tr("minutes"), tr("0 to 59")));
  if (withSeconds) c.sec = addBox(sec, help(tr("seconds"), tr("0 to 59.99")));

  auto* grid = new QGridLayout(c.frame);
  grid->setHorizontalSpacing(4);
  grid->setVerticalSpacing(2);
  const int charWidth = c.deg->fontMetrics().horizontalAdvance(QLatin1Char('0'));
  int col = 0;
  for (auto [box, label, chars] : {std::tuple{c.deg, tr("Deg"), isLongitude ? 3 : 2}, std::tuple{c.min, tr("Min"), 2},
                                   std::tuple{c.sec, tr("Sec"), 5}}) {
    if (!box) continue;
    auto* l = makeCaption(label);
    l->setBuddy(box);
    grid->addWidget(l, 0, col, Qt::AlignBottom);
    box->setFixedWidth(charWidth * (chars + 1) + 14);
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
  static std::map<int, int> kept;  // menu index -> option, while the program runs
  const auto it = kept.find(menuIndex());
  const int choice = it != kept.end() ? it->second : (App().settings.AutoMV == 1 ? 1 : 0);
  optTRK_[0] = makeOption(tr("True"), "OptTRK0", parent);
  optTRK_[1] = makeOption(tr("Magnetic"), "OptTRK1", parent);
  optTRK_[choice]->setChecked(true);
  for (int i = 0; i < 2; ++i)
    connect(optTRK_[i], &QRadioButton::toggled, this, [this, i](bool on) {
      if (on) kept[menuIndex()] = i;
    });
}

bool NavigationScreen::magneticTracks() const { return optTRK_[1]->isChecked(); }

QWidget* NavigationScreen::makeImportButton(const QString& name, const Coordinate* lat, const Coordinate* lon) {
  auto* box = new QWidget(this);
  auto* column = new QVBoxLayout(box);
  column->setContentsMargins(0, 0, 0, 0);
  auto* b = new QPushButton(tr("Import from database"), box);
  auto* named = new QLabel(box);
  named->setObjectName(QStringLiteral("lbl") + name.mid(3));
  named->setAlignment(Qt::AlignCenter);
  named->setMinimumHeight(named->fontMetrics().height());
  column->addWidget(b);
  column->addWidget(named);
  b->setObjectName(name);
  b->setAutoDefault(false);
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
    for (const QObject* o : {static_cast<const QObject*>(c->deg), static_cast<const QObject*>(c->min),
                             static_cast<const QObject*>(c->sec), static_cast<const QObject*>(c->opt[0]),
                             static_cast<const QObject*>(c->opt[1])})
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
