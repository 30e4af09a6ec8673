#include "app/Accessibility.hpp"

#include <QAbstractButton>
#include <QBoxLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLayout>
#include <QTabWidget>

namespace norvane {
namespace {

QString Clean(QString s) {
  s.remove(QLatin1Char('&'));
  s = s.trimmed();
  if (s.endsWith(QLatin1Char(':'))) s.chop(1);
  return s;
}

bool IsResult(const QWidget* w) { return w->property("norvaneResult").toBool(); }

// The layout that holds w directly, searched from its parent's top layout.
QLayout* HoldingLayout(QLayout* l, QWidget* w, int* index) {
  if (!l) return nullptr;
  for (int i = 0; i < l->count(); ++i) {
    QLayoutItem* item = l->itemAt(i);
    if (item->widget() == w) {
      *index = i;
      return l;
    }
    if (QLayout* found = HoldingLayout(item->layout(), w, index)) return found;
  }
  return nullptr;
}

// The label a reader sees just before w: left of it in a grid, before it in a row or column.
QLabel* LabelBefore(QWidget* w) {
  if (!w->parentWidget()) return nullptr;
  int index = -1;
  QLayout* l = HoldingLayout(w->parentWidget()->layout(), w, &index);
  if (!l) return nullptr;
  if (auto* grid = qobject_cast<QGridLayout*>(l)) {
    int row, col, rowSpan, colSpan;
    grid->getItemPosition(index, &row, &col, &rowSpan, &colSpan);
    for (int c = col - 1; c >= 0; --c)
      if (QLayoutItem* item = grid->itemAtPosition(row, c))
        if (auto* label = qobject_cast<QLabel*>(item->widget()); label && !IsResult(label)) return label;
    // A caption over a column of results ("Latitude" above its value).
    for (int r = row - 1; r >= 0; --r)
      if (QLayoutItem* item = grid->itemAtPosition(r, col))
        if (auto* label = qobject_cast<QLabel*>(item->widget()); label && !IsResult(label)) return label;
    return nullptr;
  }
  for (int i = index - 1; i >= 0; --i) {
    QWidget* before = l->itemAt(i)->widget();
    if (!before) continue;
    auto* label = qobject_cast<QLabel*>(before);
    return label && !IsResult(label) ? label : nullptr;
  }
  return nullptr;
}

QString CaptionOf(QWidget* w) {
  for (QLabel* label : w->window()->findChildren<QLabel*>())
    if (label->buddy() == w && !label->text().isEmpty()) return Clean(label->text());
  if (auto* b = qobject_cast<QAbstractButton*>(w); b && !b->text().isEmpty()) return Clean(b->text());
  if (QLabel* label = LabelBefore(w); label && !label->text().isEmpty()) return Clean(label->text());
  const QString tip = w->toolTip();
  const qsizetype bracket = tip.indexOf(QLatin1String(" ("));
  if (!tip.isEmpty()) return Clean(bracket > 0 ? tip.left(bracket) : tip);
  // A page of a tab widget is named by its tab, a lone control in a frame by the frame.
  for (QWidget* p = w->parentWidget(); p; p = p->parentWidget()) {
    if (auto* tabs = qobject_cast<QTabWidget*>(p)) {
      for (int i = 0; i < tabs->count(); ++i)
        if (tabs->widget(i) == w || tabs->widget(i)->isAncestorOf(w)) return Clean(tabs->tabText(i));
    }
    if (auto* frame = qobject_cast<QGroupBox*>(p)) return Clean(frame->title());
    if (p->isWindow()) break;
  }
  return {};
}

}  // namespace

void NameControls(QWidget* root) {
  for (QWidget* w : root->findChildren<QWidget*>()) {
    if (w->focusPolicy() == Qt::NoFocus || !w->accessibleName().isEmpty()) continue;
    w->setAccessibleName(CaptionOf(w));
    QString description = w->toolTip();
    if (description.isEmpty())
      if (auto* group = qobject_cast<QGroupBox*>(w->parentWidget())) description = Clean(group->title());
    if (w->accessibleDescription().isEmpty()) w->setAccessibleDescription(description);
  }
}

void MarkResult(QLabel* result) { result->setProperty("norvaneResult", true); }

void NameResults(const std::vector<QLabel*>& results) {
  for (QLabel* r : results) {
    QString caption = r->property("norvaneCaption").toString();
    if (caption.isEmpty()) {
      const QLabel* label = LabelBefore(r);
      caption = label && !label->text().isEmpty() ? Clean(label->text()) : CaptionOf(r);
      r->setProperty("norvaneCaption", caption);
      r->setAccessibleDescription(r->toolTip());
    }
    r->setAccessibleName(r->text().isEmpty() ? caption : caption + QStringLiteral(": ") + r->text());
  }
}

}  // namespace norvane
