#include "views/window/MessageStrip.h"

#include <QAccessible>
#include <QCoreApplication>
#include <QHBoxLayout>
#include <QPainter>
#include <QStyle>
#include <utility>

#include "store/AppStore.h"
#include "views/controls/Buttons.h"
#include "views/controls/ControlTheme.h"
#include "views/controls/Labels.h"
#include "views/theme/Glass.h"
#include "views/window/WindowTheme.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

struct MessageStripWords {
  Q_DECLARE_TR_FUNCTIONS(MessageStrip)
};

constexpr double kGroundShare = 0.14;  // Of the accent.
constexpr int kSymbol = 16;
constexpr int kInset = 12;
constexpr int kAboveStrip = 12;  // The clear space over the ground.

}  // namespace

MessageStrip::MessageStrip(AppStore& store, QWidget* parent)
    : QWidget(parent),
      store_(store),
      text_(new TextLabel({}, TextStyle::Body)),
      keptButton_(new Button(MessageStripWords::tr("Open Without Them…"), Button::Role::Quiet)),
      dismiss_(new IconButton(u"xmark"_s, MessageStripWords::tr("Dismiss"))) {
  text_->setWordWrap(true);
  text_->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
  dismiss_->setGround(false);
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(theme::kBodyPadding + kInset + kSymbol + theme::kRowGap, kAboveStrip + kInset / 2,
                          theme::kBodyPadding + kInset / 2, kInset / 2);
  row->setSpacing(theme::kRowGap);
  row->addWidget(text_, 1);
  row->addWidget(keptButton_);
  row->addWidget(dismiss_);
  connect(dismiss_, &QPushButton::clicked, this, [this] { store_.clearError(); });
  connect(keptButton_, &QPushButton::clicked, this, [this] {
    if (openKept_) openKept_();
  });
  connect(&store, &AppStore::errorChanged, this, &MessageStrip::update);
  update();
}

void MessageStrip::leaveOut(const QString& message) {
  leftOut_ = message;
  update();
}

void MessageStrip::setOpenKept(std::function<void()> open) {
  openKept_ = std::move(open);
  update();
}

void MessageStrip::update() {
  const QString message = store_.error() == leftOut_ ? QString() : store_.error();
  setVisible(!message.isEmpty());
  if (message.isEmpty()) return;
  text_->setText(message);
  keptButton_->setVisible(openKept_ && store_.keptSettings());
  setAccessibleName(message);
  QAccessibleEvent alert(this, QAccessible::Alert);
  QAccessible::updateAccessibility(&alert);
  QWidget::update();
}

void MessageStrip::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const ControlLook& look = lookOf(*this);
  const QColor accent = look.palette.accent(Accent::Orange);
  const QRectF ground = rect().adjusted(theme::kBodyPadding, kAboveStrip, -theme::kBodyPadding, 0);
  drawRounded(painter, ground, theme::kRowCorner, faded(accent, kGroundShare));
  const QRect symbol(theme::kBodyPadding + kInset, kAboveStrip + (height() - kAboveStrip - kSymbol) / 2, kSymbol,
                     kSymbol);
  drawControlSymbol(painter, u"exclamationmark.circle"_s, QStyle::visualRect(layoutDirection(), rect(), symbol),
                    accent);
}

}  // namespace tarnwick
