#pragma once

#include <QHash>
#include <QUuid>
#include <optional>
#include <utility>

namespace tarnwick {

/// Values that single widgets have for themselves, such as what a service answered each of them.
template <class Value>
class WidgetValues {
 public:
  /// The value of a widget, or else the example; absent where there is neither.
  std::optional<Value> of(const QUuid& widget) const {
    const auto own = values_.constFind(widget);
    return own == values_.constEnd() ? example_ : std::optional<Value>(*own);
  }
  void set(const QUuid& widget, Value value) { values_.insert(widget, std::move(value)); }
  void remove(const QUuid& widget) { values_.remove(widget); }

  /// What every widget has that has no value of its own: in pictures of the program, and of widgets in the library.
  void setExample(std::optional<Value> example) { example_ = std::move(example); }
  const std::optional<Value>& example() const { return example_; }

  bool operator==(const WidgetValues&) const = default;

 private:
  QHash<QUuid, Value> values_;
  std::optional<Value> example_;
};

}  // namespace tarnwick
