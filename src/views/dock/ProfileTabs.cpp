#include "views/dock/ProfileTabs.h"

#include <QWheelEvent>
#include <algorithm>
#include <cmath>
#include <utility>

#include "dock/rules/ProfileDirection.h"
#include "views/theme/Theme.h"
#include "views/theme/Typography.h"

namespace tarnwick {

namespace {

const QString kTabs = QStringLiteral("tabs");    // How far the glass has grown for the tabs.
const QString kSlide = QStringLiteral("slide");  // How far the row is from the middle of its glass.

}  // namespace

ProfileTabs::ProfileTabs(const DockRow& row, const RowLayout& layout, Animator& animator, Scheduler& scheduler)
    : row_(row), layout_(layout), scheduler_(scheduler), springs_(animator) {
  connect(&springs_, &SpringSet::moved, this, &ProfileTabs::moved);
  connect(&springs_, &SpringSet::rested, this, [this] {
    slide_.reset();
    Q_EMIT rested();
  });
}

void ProfileTabs::takeRow() {
  springs_.setReduced(row_.reduceMotion);
  if (!row_.offersTabs()) wanted_ = false;
  springs_.jump(kTabs, wanted_ ? theme::kTabRowHeight * row_.scale : 0);
}

// --- Tabs -----------------------------------------------------------------------------------------------------------

bool ProfileTabs::show(bool shown, bool isSeen) {
  shown = shown && row_.keepsSpaceForTabs();
  if (shown == std::exchange(wanted_, shown)) return false;
  const double grown = shown ? theme::kTabRowHeight * row_.scale : 0;
  // Where the window is cut to the glass, its shape does not follow every frame.
  if (isSeen && row_.composited && !row_.reduceMotion)
    springs_.animate(kTabs, grown);
  else
    springs_.jump(kTabs, grown);
  return true;
}

void ProfileTabs::hover(bool inside, bool held) {
  const bool coming = held ? wanted_ : inside && row_.offersTabs();
  if (coming == coming_) return;
  coming_ = coming;
  work_.reset();
  if (coming == wanted_) return;
  work_ = scheduler_.after(theme::kTabsDelay, [this] { Q_EMIT due(coming_); });
}

double ProfileTabs::share() const {
  return std::clamp(springs_.value(kTabs) / (theme::kTabRowHeight * row_.scale), 0.0, 1.0);
}

bool ProfileTabs::areMoving() const { return springs_.isMoving(kTabs); }

double ProfileTabs::nameWidth(qsizetype tab) const {
  // The widths that were measured are rounded to whole pixels.
  return (layout_.tabs[tab].width() + 1) / row_.scale - theme::kTabPadding * 2;
}

QString ProfileTabs::tip(qsizetype tab) const {
  const TextLine line(row_.tabs[tab], TextStyle::TabLabel, row_.scale);
  return line.width() > nameWidth(tab) ? row_.tabs[tab] : QString();
}

bool ProfileTabs::turn(const QWheelEvent& event) {
  const auto shown = std::ranges::find_if_not(layout_.tabs, &QRectF::isEmpty);
  if (shown == layout_.tabs.end() || !layout_.glass.contains(event.position())) return false;
  if (event.position().y() < shown->top() || event.position().y() >= shown->bottom()) return false;
  const int sideways = layout_.mirrored ? -event.angleDelta().x() : event.angleDelta().x();
  const int turned = event.angleDelta().y() != 0 ? event.angleDelta().y() : sideways;
  const int steps = wheel_.steps(0, turned);
  if (steps == 0) return true;
  const qsizetype tab = row_.activeTab + (steps > 0 ? -1 : 1);
  if (tab >= 0 && tab < row_.tabs.size()) Q_EMIT activated(tab);
  return true;
}

// --- Switching by a drag --------------------------------------------------------------------------------------------

void ProfileTabs::swipeBy(double distance) {
  if (row_.reduceMotion) return;
  springs_.jump(kSlide, std::round(distance * theme::kSwipeFollows));
  Q_EMIT moved();
}

void ProfileTabs::endSwipe(double distance, double velocity) {
  const qsizetype count = row_.tabs.size();
  if (count > 1 && swipeSwitches(distance, velocity)) {
    // Like a strip of paper: a drag to the left brings what lies right, which is the one before for some.
    const bool forward = (distance < 0) != layout_.mirrored;
    swipedForward_ = forward;
    Q_EMIT activated((row_.activeTab + (forward ? 1 : count - 1)) % count);
    swipedForward_.reset();
  }
  if (!slide_) springs_.animate(kSlide, 0);
}

bool ProfileTabs::isForward(const DockRow& next) const {
  return swipedForward_.value_or(
      ProfileDirection::isForward(row_.activeTab, next.activeTab, std::max(next.tabs.size(), row_.tabs.size())));
}

// --- The slide ------------------------------------------------------------------------------------------------------

void ProfileTabs::beginSlide(const QPixmap& old, bool forward) {
  RowSlide slide;
  slide.old = old;
  slide.oldStart = offset();
  slide.from = slide.oldStart + (forward != layout_.mirrored ? 1 : -1) * theme::kSlideTravel * row_.scale;
  slide_ = std::move(slide);
  springs_.jump(kSlide, slide_->from);
  springs_.animate(kSlide, 0);
}

double ProfileTabs::offset() const { return springs_.value(kSlide); }

}  // namespace tarnwick
