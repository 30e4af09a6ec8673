#include "waypoints/WaypointImport.hpp"

#include <QAbstractButton>
#include <QLabel>
#include <QLineEdit>

#include "app/AppContext.hpp"
#include "app/InputBox.hpp"
#include "app/UiHelpers.hpp"
#include "waypoints/ImportDialog.hpp"
#include "waypoints/NavDBShell.hpp"

namespace norvane {
namespace {

void Fill(const CoordinateFields& f, int32_t word, bool withSeconds, int maxDegrees) {
  // The degree box's own limit where it has one (89 or 179).
  if (const auto* box = qobject_cast<const InputBox*>(f.deg)) maxDegrees = int(box->rule().max);
  const CoordinateBoxTexts t = CoordinateBoxes(word / 256, word < 0, withSeconds, char(App().decimalSep), maxDegrees);
  if (f.deg) f.deg->setText(Q(t.deg));
  if (f.min) f.min->setText(Q(t.min));
  if (f.sec) f.sec->setText(Q(t.sec));
  QAbstractButton* option = t.negative ? f.negative : f.positive;
  if (option) option->setChecked(true);
}

// The name stays only while the boxes hold what the import wrote.
void WireClearing(QLabel* label, const CoordinateFields& lat, const CoordinateFields& lon) {
  if (label->property("clearsOnEdit").toBool()) return;
  label->setProperty("clearsOnEdit", true);
  for (const CoordinateFields* f : {&lat, &lon}) {
    for (QLineEdit* b : {f->deg, f->min, f->sec})
      if (b) QObject::connect(b, &QLineEdit::textChanged, label, &QLabel::clear);
    for (QAbstractButton* o : {f->positive, f->negative})
      if (o) QObject::connect(o, &QAbstractButton::clicked, label, &QLabel::clear);
  }
}

}  // namespace

QString ImportedName(const std::string& ident, int type) {
  static const char* const kKinds[4] = {QT_TRANSLATE_NOOP("Import", "airport"), "VOR", "NDB",
                                        QT_TRANSLATE_NOOP("Import", "intersection")};
  return Q(ident) + ' ' + QObject::tr(kKinds[type & 3]);
}

ImportOutcome ImportWaypoint(QWidget* parent, const CoordinateFields& lat, const CoordinateFields& lon,
                             QLabel* nameLabel) {
  if (!NavDBActive()) return ImportOutcome::NoDatabase;
  const NavDatabase& db = ActiveNavDB();
  const int selected = RunImportDialog(db, parent);
  if (selected == 0) return ImportOutcome::Cancelled;
  const WaypointRecord& r = db.Record(selected);
  Fill(lat, r.lat, lat.sec != nullptr, 89);
  Fill(lon, r.lon, lon.sec != nullptr, 179);
  if (nameLabel) {
    WireClearing(nameLabel, lat, lon);
    nameLabel->setText(ImportedName(IdentFromCode(RecordCode(r)), int(RecordType(r))));
  }
  return ImportOutcome::Imported;
}

}  // namespace norvane
