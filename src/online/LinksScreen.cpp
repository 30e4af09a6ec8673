#include "online/LinksScreen.hpp"

#include <QDesktopServices>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>
#include <QUrl>
#include <QVBoxLayout>

#include <algorithm>

#include "app/AppContext.hpp"
#include "app/UiHelpers.hpp"
#include "online/Internet.hpp"

namespace norvane {

namespace {
LinkTable& Links() { return App().settings.Links; }
constexpr int kConnectionPollMs = 2000;
constexpr int kConnectRearmMs = 1500;
}  // namespace

LinksScreen::LinksScreen(QWidget* parent) : CalculatorScreen(18, "frmData18", tr("Aviation data links"), parent) {
  setLive(true);
  setInputValid(0, true);

  buildList();

  auto* help = makeCaption(tr("Use editor below to customize your aviation data links"), "lblHelp");
  QFont italic = help->font();
  italic.setItalic(true);
  help->setFont(italic);
  contentLayout()->addWidget(help);

  contentLayout()->addWidget(buildEditor());
  startTimers();

  fillList(0);
  setMode(Mode::Browse);
  refreshConnectionState();
}

// The links, and Connect to open the selected one.
void LinksScreen::buildList() {
  listLinks_ = new QListWidget(this);
  listLinks_->setObjectName("ListLinks");
  listLinks_->setToolTip(tr("Double-click a link to open it in your web browser"));
  listLinks_->setMinimumSize(320, listLinks_->fontMetrics().lineSpacing() * 15 + 8);
  connect(listLinks_, &QListWidget::currentRowChanged, this, &LinksScreen::showSelected);
  connect(listLinks_, &QListWidget::itemActivated, this, [this] {
    if (cmdConnect_->isEnabled()) connectSelected();
  });
  contentLayout()->addWidget(listLinks_);

  cmdConnect_ = MakeButton(this, tr("Connect"), "cmdConnect", tr("Open the selected link in your web browser"));
  connect(cmdConnect_, &QPushButton::clicked, this, &LinksScreen::connectSelected);
  contentLayout()->addWidget(cmdConnect_);
}

// Title and link boxes, and the editing buttons.
QGroupBox* LinksScreen::buildEditor() {
  auto* editor = makeFrame(tr("Link editor"), "FrameEditor");
  auto* el = new QGridLayout(editor);
  titleBox_ = new QLineEdit(editor);
  titleBox_->setObjectName("TitleBox");
  titleBox_->setMaxLength(80);
  linkBox_ = new QLineEdit(editor);
  linkBox_->setObjectName("LinkBox");
  linkBox_->setMaxLength(500);
  el->addWidget(makeCaption(tr("Title")), 0, 0);
  el->addWidget(titleBox_, 0, 1);
  el->addWidget(makeCaption(tr("Link")), 1, 0);
  el->addWidget(linkBox_, 1, 1);
  auto* buttons = new QHBoxLayout;
  const char* captions[kEditButtonCount] = {"Add", "Edit", "Delete", "Save", "Cancel", "Restore"};
  const char* tips[kEditButtonCount] = {"Add a new data link",       "Edit selected data link",
                                        "Delete selected data link", "Save the link",
                                        "Discard the changes",       "Restore default program links"};
  for (int i = 0; i < kEditButtonCount; ++i) {
    cmdEditLink_[i] = MakeButton(editor, tr(captions[i]), QStringLiteral("cmdEditLink%1").arg(i), tr(tips[i]));
    connect(cmdEditLink_[i], &QPushButton::clicked, this, [this, i] { onEditButton(i); });
    buttons->addWidget(cmdEditLink_[i]);
  }
  el->addLayout(buttons, 2, 0, 1, 2);
  return editor;
}

void LinksScreen::startTimers() {
  timer_ = new QTimer(this);
  timer_->setObjectName("Timer");
  timer_->setSingleShot(true);
  timer_->setInterval(kConnectRearmMs);
  connect(timer_, &QTimer::timeout, this, &LinksScreen::refreshConnectionState);
  cxTimer_ = new QTimer(this);
  cxTimer_->setObjectName("CxTimer");
  cxTimer_->setInterval(kConnectionPollMs);
  connect(cxTimer_, &QTimer::timeout, this, &LinksScreen::refreshConnectionState);
  cxTimer_->start();
}

void LinksScreen::fillList(int select) {
  const QSignalBlocker block(listLinks_);
  listLinks_->clear();
  for (int i = 0; i < Links().count; ++i) listLinks_->addItem(Q(Links().entries[i].title));
  listLinks_->setCurrentRow(select >= 0 && select < Links().count ? select : (Links().count > 0 ? 0 : -1));
  showSelected();
}

void LinksScreen::showSelected() {
  if (mode_ != Mode::Browse) return;
  const int row = listLinks_->currentRow();
  const bool valid = row >= 0 && row < Links().count;
  titleBox_->setText(valid ? Q(Links().entries[row].title) : QString());
  linkBox_->setText(valid ? Q(Links().entries[row].url) : QString());
  titleBox_->setCursorPosition(0);
  linkBox_->setCursorPosition(0);
  setMode(Mode::Browse);
}

void LinksScreen::setMode(Mode mode) {
  mode_ = mode;
  const bool editing = mode != Mode::Browse;
  const bool selected = listLinks_->currentRow() >= 0;
  for (QLineEdit* box : {titleBox_, linkBox_}) {
    box->setReadOnly(!editing);
    box->setEnabled(editing);  // greyed while locked
  }
  listLinks_->setEnabled(!editing);
  cmdEditLink_[kAdd]->setEnabled(!editing && !Links().Full());
  cmdEditLink_[kEdit]->setEnabled(!editing && selected);
  cmdEditLink_[kDelete]->setEnabled(!editing && selected);
  cmdEditLink_[kSave]->setEnabled(editing);
  cmdEditLink_[kCancel]->setEnabled(editing);
  cmdEditLink_[kRestore]->setEnabled(!editing);
  refreshConnectionState();
}

void LinksScreen::refreshConnectionState() {
  connected_ = InternetConnected();
  cmdConnect_->setText(connected_ ? tr("Connect") : tr("[No Internet connection]"));
  cmdConnect_->setEnabled(connected_ && !timer_->isActive() && listLinks_->currentRow() >= 0 && mode_ == Mode::Browse);
}

void LinksScreen::connectSelected() {
  const int row = listLinks_->currentRow();
  if (row < 0 || row >= Links().count || !connected_) return;
  const QUrl url = QUrl::fromUserInput(Q(Links().entries[row].url).trimmed());
  errorLabel()->clear();
  // Only the web: a link to a file, a share, a script or another program's scheme would hand the
  // system's handler whatever an edited settings file put there.
  const QString scheme = url.scheme().toLower();
  if (!url.isValid() || url.host().isEmpty() || (scheme != QLatin1String("http") && scheme != QLatin1String("https"))) {
    showError(tr("Only web addresses (http:// or https://) can be opened: %1").arg(Q(Links().entries[row].url)));
    return;
  }
  if (!QDesktopServices::openUrl(url)) {
    showError(tr("No web browser could be started"));
    return;
  }
  // One click, one page: a second click while the browser starts would open it twice.
  timer_->start();
  refreshConnectionState();
}

void LinksScreen::onEditButton(int which) {
  errorLabel()->clear();
  switch (which) {
    case kAdd:
      if (Links().Full()) return;
      titleBox_->clear();
      linkBox_->setText(QStringLiteral("https://"));
      setMode(Mode::Adding);
      titleBox_->setFocus();
      break;
    case kEdit:
      if (listLinks_->currentRow() < 0) return;
      setMode(Mode::Editing);
      titleBox_->setFocus();
      titleBox_->selectAll();
      break;
    case kDelete: {
      const int row = listLinks_->currentRow();
      if (row < 0) return;
      Links().Remove(row);
      fillList(std::min(row, Links().count - 1));
      break;
    }
    case kSave:
      save();
      break;
    case kCancel:
      setMode(Mode::Browse);
      showSelected();
      break;
    case kRestore:
      restoreDefaults();
      break;
  }
}

void LinksScreen::save() {
  const Link link{S(titleBox_->text()), S(linkBox_->text().trimmed())};
  int select = listLinks_->currentRow();
  if (mode_ == Mode::Adding) {
    const int at = Links().Add(link);  // a blank title adds nothing
    if (at >= 0) select = at;
  } else if (mode_ == Mode::Editing) {
    select = Links().Replace(select, link);
  }
  mode_ = Mode::Browse;
  fillList(select);
}

void LinksScreen::restoreDefaults() {
  QMessageBox box(QMessageBox::Information, QStringLiteral("Norvane"),
                  tr("This will reset your link list to default program values - Continue ?"),
                  QMessageBox::Yes | QMessageBox::No, this);
  box.setDefaultButton(QMessageBox::No);
  box.setObjectName("RestoreQuestion");
  if (box.exec() != QMessageBox::Yes) return;
  Links() = LinkTable::Defaults();
  fillList(0);
}

}  // namespace norvane
