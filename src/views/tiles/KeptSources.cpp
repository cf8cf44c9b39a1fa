#include "views/tiles/KeptSources.h"

#include <algorithm>
#include <utility>

#include "widgets/catalog/Catalog.h"

namespace tarnwick {
namespace {

constexpr qint64 kSecondsOfAMinute = 60;

bool isSameTile(const DockWidget& one, const DockWidget& other) { return one.id == other.id && one.kind == other.kind; }

qint64 minuteOf(const QDateTime& moment) { return moment.toSecsSinceEpoch() / kSecondsOfAMinute; }

bool anyWidget(const DockWidget&) { return true; }

class GivenSource final : public TileSource {
 public:
  explicit GivenSource(std::function<TileSources()> give) : give_(std::move(give)) {}
  void fill(TileSources& sources, const QList<DockWidget>&) override { sources = give_(); }

 private:
  std::function<TileSources()> give_;
};

}  // namespace

KeptSources::KeptSources(Setup setup) : setup_(std::move(setup)) {
  for (const auto& source : setup_.own) all_ << source.get();
  all_ << setup_.borrowed;
  for (TileSource* source : std::as_const(all_)) follow(*source);
}

std::unique_ptr<KeptSources> KeptSources::given(std::function<TileSources()> give) {
  Setup setup;
  setup.own.push_back(std::make_unique<GivenSource>(std::move(give)));
  return std::make_unique<KeptSources>(std::move(setup));
}

QSet<QUuid> KeptSources::setWidgets(const QList<DockWidget>& widgets) {
  const QList<DockWidget> before = std::exchange(widgets_, widgets);
  if (!std::ranges::equal(before, widgets_, isSameTile)) return takeAll() ? idsOf(anyWidget) : QSet<QUuid>();
  const auto isEdited = [&before](const DockWidget& widget) { return !before.contains(widget); };
  QSet<QUuid> edited = idsOf(isEdited);
  if (edited.isEmpty() || !isSeen()) return {};
  // An edit of one widget, such as a letter in a note, asks for nothing that other tiles show.
  for (TileSource* source : std::as_const(all_)) {
    const auto isRead = [&](const DockWidget& widget) { return isEdited(widget) && source->readsOptionsOf(widget); };
    if (std::ranges::any_of(widgets_, isRead)) source->fill(values_, widgets_);
  }
  takeMoment();
  return edited;
}

bool KeptSources::takeAll() {
  if (isFilled_ && !isSeen()) return false;
  isFilled_ = true;
  isLate_ = false;
  values_ = {};
  for (TileSource* source : std::as_const(all_)) source->fill(values_, widgets_);
  takeMoment();
  minute_ = minuteOf(values_.now);
  return true;
}

/// Most seconds change nothing but the time.
void KeptSources::beat() {
  if (!isSeen()) return;
  if (isLate_) {
    takeAll();
    Q_EMIT changed(idsOf(anyWidget));
    return;
  }
  const QDateTime now = setup_.now ? setup_.now() : values_.now;
  const bool turns = minuteOf(now) != minute_;
  minute_ = minuteOf(now);
  const QSet<QUuid> due = idsOf([&](const DockWidget& widget) {
    const TickCadence cadence = setup_.cadence ? setup_.cadence(widget) : TickCadence::Still;
    return cadence == TickCadence::Second || (turns && cadence == TickCadence::Minute);
  });
  if (due.isEmpty()) return;
  values_.now = now;
  if (turns)
    for (TileSource* source : std::as_const(all_))
      if (source->turnsWithTheMinute()) source->fill(values_, widgets_);
  Q_EMIT changed(due);
}

void KeptSources::follow(TileSource& source) {
  connect(&source, &TileSource::changed, this, [this, &source](const QList<Family>& families) {
    take(source, [this, &families](const DockWidget& widget) { return shows(widget, families); });
  });
  connect(&source, &TileSource::widgetChanged, this, [this, &source](const QUuid& id) {
    take(source, [&id](const DockWidget& widget) { return widget.id == id; });
  });
}

void KeptSources::take(TileSource& source, const Which& which) {
  const QSet<QUuid> widgets = idsOf(which);
  if (widgets.isEmpty() || !isSeen()) return;
  source.fill(values_, widgets_);
  takeMoment();
  Q_EMIT changed(widgets);
}

bool KeptSources::shows(const DockWidget& widget, const QList<Family>& families) const {
  const QString& own = Catalog::find(widget.kind).family;
  return std::ranges::any_of(families, [&](Family each) { return own == each || alsoShown_.contains(each); });
}

QSet<QUuid> KeptSources::idsOf(const Which& which) const {
  QSet<QUuid> ids;
  for (const DockWidget& widget : widgets_)
    if (which(widget)) ids.insert(widget.id);
  return ids;
}

void KeptSources::takeMoment() {
  if (setup_.now) values_.now = setup_.now();
}

/// While nobody looks it is noted that something is missed.
bool KeptSources::isSeen() {
  if (!seen_ || seen_()) return true;
  isLate_ = true;
  return false;
}

}  // namespace tarnwick
