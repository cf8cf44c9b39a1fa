#include "views/library/AddedNote.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QPainter>

#include "views/controls/Buttons.h"
#include "views/controls/ControlTheme.h"
#include "views/controls/Labels.h"
#include "views/theme/Glass.h"
#include "views/theme/Theme.h"
#include "widgets/LibraryWords.h"

namespace tarnwick {

namespace {

constexpr int kStaysMilliseconds = 6000;
constexpr int kFoot = 16;  // Of clear space below.
constexpr int kMark = 14;
constexpr double kNoteCorner = 12;

}  // namespace

AddedNote::AddedNote(QWidget* parent)
    : QWidget(parent),
      text_(new TextLabel({}, TextStyle::Body)),
      edit_(new Button(LibraryWords::tr("Edit…"))),
      undo_(new Button(LibraryWords::tr("Undo"))) {
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(theme::kRowOverhang, theme::kRowOverhang, theme::kRowOverhang, theme::kRowOverhang);
  row->setSpacing(theme::kRowOverhang);
  row->addSpacing(theme::kPanelPadding + kMark);
  row->addWidget(text_, 1);
  row->addSpacing(theme::kRowOverhang);
  row->addWidget(edit_);
  row->addWidget(undo_);
  stays_.setSingleShot(true);
  stays_.setInterval(kStaysMilliseconds);
  connect(&stays_, &QTimer::timeout, this, [this] { hasKeyboard() ? stays_.start() : hide(); });
  connect(edit_, &QPushButton::clicked, this, [this] {
    hide();
    Q_EMIT editRequested();
  });
  connect(undo_, &QPushButton::clicked, this, [this] {
    hide();
    Q_EMIT undoRequested();
  });
  parent->installEventFilter(this);
  hide();
}

void AddedNote::say(const QString& sentence, bool editable) {
  text_->setText(sentence);
  setAccessibleName(sentence);
  edit_->setVisible(editable);
  show();
  place();
  raise();
  stays_.start();
  QAccessibleEvent alert(this, QAccessible::Alert);
  QAccessible::updateAccessibility(&alert);
}

bool AddedNote::hasKeyboard() const {
  const QWidget* focus = window()->focusWidget();
  return focus && isAncestorOf(focus);
}

void AddedNote::setVisible(bool visible) {
  const bool passesOn = !visible && hasKeyboard();
  QWidget::setVisible(visible);
  if (passesOn) parentWidget()->setFocus(Qt::OtherFocusReason);
}

void AddedNote::place() {
  layout()->activate();
  const int most = parentWidget()->width() - theme::kPanelPadding * 2;
  resize(std::min(sizeHint().width(), most), sizeHint().height());
  move((parentWidget()->width() - width()) / 2, parentWidget()->height() - height() - kFoot);
}

bool AddedNote::eventFilter(QObject* watched, QEvent* event) {
  if (watched == parentWidget() && event->type() == QEvent::Resize && isVisible()) place();
  return QWidget::eventFilter(watched, event);
}

void AddedNote::enterEvent(QEnterEvent* event) {
  stays_.stop();
  QWidget::enterEvent(event);
}

void AddedNote::leaveEvent(QEvent* event) {
  stays_.start();
  QWidget::leaveEvent(event);
}

void AddedNote::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const ControlLook& look = lookOf(*this);
  drawRounded(painter, rect(), kNoteCorner, look.palette.tileDragged);
  drawInnerLine(painter, rect(), kNoteCorner, hairline(painter), look.palette.gapOutline);
  const int x = isRightToLeft() ? width() - theme::kPanelPadding - kMark : theme::kPanelPadding;
  drawControlSymbol(painter, QStringLiteral("checkmark"), QRectF(x, (height() - kMark) / 2.0, kMark, kMark),
                    look.palette.accentWord(Accent::Green));
}

}  // namespace tarnwick
