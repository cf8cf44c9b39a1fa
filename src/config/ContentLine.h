#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>
#include <QUuid>
#include <optional>

#include "config/DockConfiguration.h"

namespace tarnwick {

/// One value that the settings document did not have yet when it was entered: an option of a widget, the to-do list or
/// the shelf. As text it is one line of JSON.
struct ContentLine {
  std::optional<QUuid> widget;
  std::optional<QString> key;    ///< Of an option of the widget.
  std::optional<QString> value;  ///< Absent where the option was taken away.
  std::optional<QList<TodoItem>> todos;
  std::optional<QStringList> shelf;

  /// What makes the content of one document that of another, profiles and looks left out. Never a credential.
  static QList<ContentLine> between(const DockConfiguration& before, const DockConfiguration& after);
  /// Puts the values into a document, in their order. One for a widget that is not there, or that the settings would
  /// refuse, is left out.
  static void apply(const QList<ContentLine>& lines, DockConfiguration& to);

  QByteArray text() const;
  /// The lines of a text up to the first that is damaged or not complete.
  static QList<ContentLine> parse(const QByteArray& text);

  static constexpr auto fields() {
    return std::tuple(field::optional("widget", &ContentLine::widget), field::optional("key", &ContentLine::key),
                      field::optional("value", &ContentLine::value), field::optional("todos", &ContentLine::todos),
                      field::optional("shelf", &ContentLine::shelf));
  }
  bool operator==(const ContentLine&) const = default;
};

}  // namespace tarnwick
