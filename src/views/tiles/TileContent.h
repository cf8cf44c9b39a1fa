#pragma once

#include <QPointF>
#include <QRectF>
#include <QString>
#include <concepts>
#include <memory>
#include <optional>
#include <utility>

#include "views/tiles/TileText.h"

namespace tarnwick {

class TileCanvas;

/// A click on a tile, in the tile's own units.
struct TileClick {
  double width = 0;  ///< Of the tile.
  QPointF point;
  double scale = 1;  ///< Of the dock.
  /// Of what is seen (see TileStyle).
  Qt::LayoutDirection direction = Qt::LeftToRight;

  /// The click as a tile takes it, which knows itself from left to right only.
  TileClick unmirrored() const {
    return direction == Qt::LeftToRight ? *this : TileClick{width, {width - point.x(), point.y()}, scale};
  }
  /// Where that which a tile has at `place` is seen.
  QRectF seen(const QRectF& place) const {
    if (direction == Qt::LeftToRight) return place;
    return {QPointF(width - place.right(), place.top()), place.size()};
  }
};

/// A part of a tile that has a name of its own.
struct TilePart {
  int part = 0;
  QString text;  ///< Its name, and what there is to say of it.
  QRectF place;

  bool operator==(const TilePart&) const = default;
};

/// The application that a tile stands for.
struct TileApplication {
  quint64 identity = 0;  ///< Of the running one; 0 while it does not run.
  bool isLaunching = false;
  bool isFront = false;
};

/// What the dock asks of a content. FaceOf makes one from a struct.
class TileFace {
 public:
  virtual ~TileFace() = default;

  virtual bool equals(const TileFace& other) const = 0;
  virtual TileText describe(const QString& name) const = 0;
  virtual void paint(TileCanvas& canvas) const = 0;
  virtual std::optional<int> partAt(const TileClick& click) const = 0;
  virtual std::optional<TilePart> namedPartAt(const TileClick& point) const = 0;
  virtual TileApplication application() const = 0;
  virtual bool isSolid() const = 0;
  virtual bool isLoading() const = 0;
};

namespace faces {

// Within a face these names would mean its own functions.
TileText describeContent(const auto& content, const QString& name) { return describe(content, name); }
void paintContent(TileCanvas& canvas, const auto& content) { paint(canvas, content); }

template <class Content>
concept Tile = std::equality_comparable<Content> &&
    requires(const Content& content, TileCanvas& canvas, const QString& name) {
  { describe(content, name) } -> std::same_as<TileText>;
  paint(canvas, content);
};

std::optional<int> partOf(const auto& content, const TileClick& click) {
  if constexpr (requires { partAt(content, click); }) return partAt(content, click);
  return std::nullopt;
}

std::optional<TilePart> namedPartOf(const auto& content, const TileClick& point) {
  if constexpr (requires { namedPart(content, point); }) return namedPart(content, point);
  return std::nullopt;
}

TileApplication applicationOf(const auto& content) {
  if constexpr (requires { standsFor(content); }) return standsFor(content);
  return {};
}

bool hasGround(const auto& content) {
  if constexpr (requires { standsOnGround(content); }) return standsOnGround(content);
  return true;
}

bool loads(const auto& content) {
  if constexpr (requires { isLoading(content); }) return isLoading(content);
  return false;
}

}  // namespace faces

/// The face of a plain struct: the functions beside it, found by overload. `describe(content, name)` and
/// `paint(canvas, content)` must be there; `partAt(content, click)`, `namedPart(content, point)` (a TilePart),
/// `standsFor(content)` (a TileApplication), `standsOnGround(content)` and `isLoading(content)` may be.
template <class Content>
class FaceOf final : public TileFace {
 public:
  explicit FaceOf(Content content) : content_(std::move(content)) {}

  const Content& content() const { return content_; }
  bool equals(const TileFace& other) const override {
    const auto* same = dynamic_cast<const FaceOf*>(&other);
    return same && content_ == same->content_;
  }
  TileText describe(const QString& name) const override { return faces::describeContent(content_, name); }
  void paint(TileCanvas& canvas) const override { faces::paintContent(canvas, content_); }
  std::optional<int> partAt(const TileClick& click) const override { return faces::partOf(content_, click); }
  std::optional<TilePart> namedPartAt(const TileClick& point) const override {
    return faces::namedPartOf(content_, point);
  }
  TileApplication application() const override { return faces::applicationOf(content_); }
  bool isSolid() const override { return faces::hasGround(content_); }
  bool isLoading() const override { return faces::loads(content_); }

 private:
  Content content_;
};

/// What a tile shows, as a value: two contents that compare equal look alike, so a tile is painted anew only when its
/// content differs. Copies share what they hold. One that was made from nothing shows nothing.
class TileContent {
 public:
  TileContent() = default;
  template <faces::Tile Content>
  TileContent(Content content) : face_(std::make_shared<const FaceOf<Content>>(std::move(content))) {}

  /// The tile in words. `name` is the user's or the catalog's name for it.
  TileText describe(const QString& name) const { return face_ ? face_->describe(name) : TileText{name, {}}; }
  void paint(TileCanvas& canvas) const {
    if (face_) face_->paint(canvas);
  }
  /// The part of a tile that a click means by itself: of quick toggles the `Toggle`, of todos the place in the list,
  /// else 0 for the one thing that the tile itself can do.
  std::optional<int> partAt(const TileClick& click) const {
    return face_ ? face_->partAt(click.unmirrored()) : std::nullopt;
  }
  /// The part under the pointer, where it has a name of its own: a switch, one of several applications.
  std::optional<TilePart> namedPartAt(const TileClick& point) const {
    std::optional<TilePart> part = face_ ? face_->namedPartAt(point.unmirrored()) : std::nullopt;
    if (part) part->place = point.seen(part->place);
    return part;
  }
  TileApplication application() const { return face_ ? face_->application() : TileApplication{}; }
  /// Whether the tile has a ground and answers the pointer; separators and spaces do not.
  bool isSolid() const { return !face_ || face_->isSolid(); }
  /// Whether it shows that something is fetched, which moves while it is seen.
  bool isLoading() const { return face_ && face_->isLoading(); }

  /// The struct that it was made from; null if that is of another type. Borrowed.
  template <class Content>
  const Content* as() const {
    const auto* face = dynamic_cast<const FaceOf<Content>*>(face_.get());
    return face ? &face->content() : nullptr;
  }

  bool operator==(const TileContent& other) const {
    return face_ == other.face_ || (face_ && other.face_ && face_->equals(*other.face_));
  }

 private:
  std::shared_ptr<const TileFace> face_;
};

}  // namespace tarnwick
