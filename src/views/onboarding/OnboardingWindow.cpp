#include "views/onboarding/OnboardingWindow.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QScrollBar>
#include <QStackedWidget>
#include <QVBoxLayout>

#include "base/LocalFigures.h"
#include "store/AppStore.h"
#include "views/controls/Buttons.h"
#include "views/controls/ControlAccessible.h"
#include "views/controls/ScrollArea.h"
#include "views/onboarding/OnboardingPages.h"
#include "views/theme/Glass.h"

namespace tarnwick {

namespace {

constexpr QSize kOnboardingSize{880, 692};
constexpr int kSide = 26;  // The cards of the layouts have six pixels of their own around them.
constexpr int kFooter = 74;
constexpr int kButtonHeight = 32;
constexpr int kButtonWidth = 93;
constexpr int kBackWidth = 61;
constexpr int kDot = 6;
constexpr int kDotGap = 6;
constexpr int kChosenDot = 18;
constexpr int kLayoutPage = 1;

}  // namespace

/// How far along the pages are.
class PageDots final : public QWidget {
 public:
  explicit PageDots(int count) : count_(count) {
    setAccessibleRole(*this, QAccessible::StaticText);
    setFixedSize((count - 1) * (kDot + kDotGap) + kChosenDot, kDot);
  }

  void setPage(int page) {
    page_ = page;
    setAccessibleName(
        OnboardingWindow::tr("Step %1 of %2").arg(LocalFigures::number(page + 1), LocalFigures::number(count_)));
    update();
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const ControlLook& look = lookOf(*this);
    const bool mirrored = layoutDirection() == Qt::RightToLeft;
    double x = 0;
    for (int i = 0; i < count_; ++i) {
      const bool chosen = i == page_;
      const int wide = chosen ? kChosenDot : kDot;
      const QRectF dot(mirrored ? width() - x - wide : x, 0, wide, kDot);
      drawRounded(painter, dot, kDot / 2.0, chosen ? look.accentColor() : look.palette.hairline);
      x += wide + kDotGap;
    }
  }

 private:
  int count_;
  int page_ = 0;
};

OnboardingWindow::OnboardingWindow(AppStore& store, WindowServices services, int page)
    : AppWindow(store, tr("Welcome to Tarnwick")),
      store_(store),
      services_(std::move(services)),
      pages_(new QStackedWidget),
      dots_(new PageDots(kPages)),
      later_(new Button(tr("Later"))),
      back_(new Button(tr("Back"))),
      on_(new Button(tr("Continue"), Button::Role::Primary)) {
  auto* body = new QWidget;
  auto* column = new QVBoxLayout(body);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addWidget(pages_, 1);
  for (int i = 0; i < kPages; ++i) addPage();

  auto* footer = new QWidget;
  footer->setFixedHeight(kFooter);
  auto* row = new QHBoxLayout(footer);
  row->setContentsMargins(kSide + 6, 0, kSide + 6, 0);
  row->setSpacing(8);
  row->addWidget(dots_);
  row->addStretch();
  for (Button* button : {later_, back_, on_}) {
    button->setFixedHeight(kButtonHeight);
    row->addWidget(button);
  }
  back_->setMinimumWidth(kBackWidth);
  on_->setMinimumWidth(kButtonWidth);
  column->addWidget(footer);
  setContent(nullptr, body);

  connect(later_, &QPushButton::clicked, this, &QWidget::close);
  connect(back_, &QPushButton::clicked, this, [this] { turnTo(this->page() - 1); });
  connect(on_, &QPushButton::clicked, this, &OnboardingWindow::goOn);
  resize(kOnboardingSize);
  turnTo(std::clamp(page, 0, kPages - 1));
}

OnboardingWindow::~OnboardingWindow() = default;

int OnboardingWindow::page() const { return pages_->currentIndex(); }

void OnboardingWindow::addPage() {
  // A screen that is too small for a page scrolls it.
  auto* area = new ScrollArea;
  area->setShowsMore(true);
  pages_->addWidget(area);
}

QWidget* OnboardingWindow::makePage(int page) {
  switch (page) {
    case 0:
      return makeWelcomePage();
    case kLayoutPage:
      return makeLayoutPage(store_, services_);
    case 2:
      return makeDesktopPage(store_, services_);
    default:
      return makeDonePage(store_, services_);
  }
}

OnboardingWindow::Keys OnboardingWindow::keysNow() const {
  const DesktopAbilities now = services_.abilities();
  return {now.keysAnswered, now.keys.available, now.commandBarKey};
}

void OnboardingWindow::followKeys() {
  if (page() > kLayoutPage && keysNow() != keys_) turnTo(page());
}

void OnboardingWindow::turnTo(int page) {
  if (page < 0 || page >= kPages) return;
  keys_ = keysNow();
  // Made when it is turned to: at the start, when this window opens, parts of the desktop have not answered yet.
  QWidget* made = makePage(page);
  static_cast<ScrollArea*>(pages_->widget(page))->setWidget(made);
  pages_->setCurrentIndex(page);
  dots_->setPage(page);
  later_->setVisible(page + 1 < kPages);
  back_->setVisible(page > 0);
  on_->setLabel(page + 1 == kPages ? tr("Done") : tr("Continue"));
  on_->setFocus(Qt::NoFocusReason);
  Q_EMIT pageChanged(page);
}

void OnboardingWindow::goOn() {
  if (page() + 1 < kPages) return turnTo(page() + 1);
  store_.edit([](DockConfiguration& config) { config.onboardingComplete = true; });
  close();
}

/// A page that is higher than the window may hold nothing that takes the keyboard.
void OnboardingWindow::scroll(QAbstractSlider::SliderAction action) {
  static_cast<ScrollArea*>(pages_->currentWidget())->verticalScrollBar()->triggerAction(action);
}

void OnboardingWindow::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
    goOn();
  else if (event->matches(QKeySequence::Back))
    turnTo(page() - 1);
  else if (event->matches(QKeySequence::MoveToPreviousPage))
    scroll(QAbstractSlider::SliderPageStepSub);
  else if (event->matches(QKeySequence::MoveToNextPage))
    scroll(QAbstractSlider::SliderPageStepAdd);
  else
    AppWindow::keyPressEvent(event);
}

}  // namespace tarnwick
