#pragma once

#include <QDBusConnection>
#include <QList>
#include <QString>
#include <QStringList>
#include <functional>
#include <optional>

namespace tarnwick::testing {

/// Another program as assistive technologies see it: a tree of objects on the accessibility bus. Nothing here knows of
/// pixels, and nothing of the program's own types.
class AtSpi {
 public:
  struct Node {
    QString service;
    QString path;

    bool operator==(const Node&) const = default;
  };

  /// Asks the session bus for the accessibility bus, which starts it. Throws std::runtime_error where there is none.
  AtSpi();
  ~AtSpi();

  /// The root of the program with that process, as soon as it is there.
  std::optional<Node> program(qint64 pid) const;

  QString name(const Node& node) const;
  QString description(const Node& node) const;
  QString role(const Node& node) const;
  /// As "focusable" or "showing": the places in the protocol's set of states.
  bool has(const Node& node, int state) const;
  static constexpr int kFocusable = 11;
  static constexpr int kShowing = 25;
  static constexpr int kEditable = 7;
  QList<Node> children(const Node& node) const;
  QStringList actions(const Node& node) const;
  /// Does an action by its name. Whether the object has it.
  bool act(const Node& node, const QString& action) const;
  bool write(const Node& node, const QString& text) const;

  /// The first object below `root`, itself included, for which the predicate holds.
  std::optional<Node> find(const Node& root, const std::function<bool(const Node&)>& predicate) const;
  /// All that are shown.
  QList<Node> shown(const Node& root) const;

 private:
  QVariant property(const Node& node, const QString& interface, const QString& property) const;

  QDBusConnection bus_;
};

}  // namespace tarnwick::testing
