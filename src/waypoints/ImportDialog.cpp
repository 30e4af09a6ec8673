#include "waypoints/ImportDialog.hpp"

#include <QFontDatabase>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

#include "app/InputBox.hpp"
#include "app/UiHelpers.hpp"
#include "waypoints/NavDatabase.hpp"

namespace norvane {

ImportDialog::ImportDialog(const NavDatabase& db, QWidget* parent) : QDialog(parent), db_(db) {
  setObjectName("frmImport");
  setWindowTitle(tr("Search database"));
  setModal(true);

  auto* root = new QVBoxLayout(this);
  root->addLayout(buildSearchRow());

  listICAO_ = new QListWidget(this);
  listICAO_->setObjectName("ListICAO");
  listICAO_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  listICAO_->setMinimumWidth(listICAO_->fontMetrics().horizontalAdvance(QStringLiteral("WWWWW  APTN00°00' E000°00' ")) +
                             40);
  listICAO_->setMinimumHeight(listICAO_->fontMetrics().height() * 7);
  listICAO_->installEventFilter(this);
  root->addWidget(listICAO_);

  lblInfo_ = new QLabel(this);
  lblInfo_->setObjectName("lblInfo");
  lblInfo_->setMinimumHeight(lblInfo_->fontMetrics().height() + 6);
  root->addWidget(lblInfo_);

  root->addLayout(buildButtons());
  connectSignals();
  inICAO_->setFocus();
}

// "Identifier", its box and Search.
QHBoxLayout* ImportDialog::buildSearchRow() {
  auto* top = new QHBoxLayout;
  auto* caption = new QLabel(tr("Identifier"), this);
  top->addWidget(caption);
  BoxRule rule;
  rule.mode = KeyMode::LettersDigits;
  rule.toUpper = true;
  rule.maxLength = 5;
  rule.check = BoxRule::Check::None;
  inICAO_ = new InputBox(rule, this);
  inICAO_->setObjectName("inICAO");
  inICAO_->setToolTip(tr("Waypoint identifier: 1 to 5 letters or digits"));
  inICAO_->setFixedWidth(inICAO_->fontMetrics().horizontalAdvance(QStringLiteral("WWWWWW")) + 16);
  inICAO_->installEventFilter(this);
  caption->setBuddy(inICAO_);
  top->addWidget(inICAO_);
  cmdSearch_ = new QPushButton(tr("Search"), this);
  cmdSearch_->setObjectName("cmdSearch");
  cmdSearch_->setEnabled(false);
  top->addWidget(cmdSearch_);
  top->addStretch();
  return top;
}

QHBoxLayout* ImportDialog::buildButtons() {
  auto* bottom = new QHBoxLayout;
  bottom->addStretch();
  cmdSelect_ = new QPushButton(tr("Select"), this);
  cmdSelect_->setObjectName("cmdSelect");
  cmdSelect_->setEnabled(false);
  bottom->addWidget(cmdSelect_);
  cmdExit_ = new QPushButton(tr("Exit"), this);
  cmdExit_->setObjectName("cmdExit");
  bottom->addWidget(cmdExit_);
  return bottom;
}

void ImportDialog::connectSignals() {
  connect(inICAO_, &QLineEdit::textChanged, this, [this](const QString& t) {
    cmdSearch_->setEnabled(!t.isEmpty());
    lblInfo_->clear();
  });
  connect(cmdSearch_, &QPushButton::clicked, this, &ImportDialog::search);
  connect(listICAO_, &QListWidget::currentRowChanged, this, &ImportDialog::showInfo);
  connect(listICAO_, &QListWidget::itemDoubleClicked, this, [this] { selectCurrent(); });
  connect(cmdSelect_, &QPushButton::clicked, this, &ImportDialog::selectCurrent);
  connect(cmdExit_, &QPushButton::clicked, this, &QDialog::reject);
}

void ImportDialog::search() {
  listICAO_->clear();
  cmdSelect_->setEnabled(false);
  first_ = 0;
  const IdentMatch m = db_.FindIdent(S(inICAO_->text()));
  if (m.first == 0) {
    lblInfo_->setText(tr("..Not found.."));
    inICAO_->setFocus();
    return;
  }
  if (m.first == m.last) {
    selectedRecord_ = m.first;
    accept();
    return;
  }
  first_ = m.first;
  for (int32_t i = m.first; i <= m.last; ++i) listICAO_->addItem(Q(ListLine(db_.Record(i))));
  listICAO_->setCurrentRow(0);
  cmdSelect_->setEnabled(true);
  listICAO_->setFocus();
}

void ImportDialog::showInfo(int row) {
  if (row < 0 || first_ == 0) return;
  lblInfo_->setText(Q(TypeText(db_.Record(first_ + row))));
}

void ImportDialog::selectCurrent() {
  const int row = listICAO_->currentRow();
  if (row < 0 || first_ == 0) return;
  selectedRecord_ = first_ + row;
  accept();
}

bool ImportDialog::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress) {
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key == Qt::Key_Return || key == Qt::Key_Enter) {
      if (watched == inICAO_) {
        focusNextChild();  // Enter moves on to Search, never searches by itself
        return true;
      }
      if (watched == listICAO_) {
        selectCurrent();
        return true;
      }
    }
  }
  return QDialog::eventFilter(watched, event);
}

int RunImportDialog(const NavDatabase& db, QWidget* parent) {
  ImportDialog dialog(db, parent);
  return dialog.exec() == QDialog::Accepted ? dialog.selectedRecord() : 0;
}

}  // namespace norvane
