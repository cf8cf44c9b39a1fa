#pragma once

#include <QList>
#include <QString>

namespace tarnwick {

/// How an option of a widget is set.
enum class FieldShape {
  Line,          ///< A line of text.
  Number,        ///< A line that should hold a number.
  Text,          ///< Several lines.
  Switch,        ///< On writes `value`, off leaves the option away.
  Steps,         ///< A whole number between two ends.
  Choice,        ///< One of a few words.
  Zone,          ///< A time zone.
  Zones,         ///< Several of them.
  Application,   ///< The path of a desktop entry.
  Applications,  ///< Several of them.
  Folder,        ///< The path of a folder.
  Toggles,       ///< The switches of a tile of quick toggles.
  Credential     ///< Kept elsewhere than the option.
};

/// One line of the form of a widget, in the user's language.
struct EditorField {
  QString key;  ///< The option.
  FieldShape shape = FieldShape::Line;
  QString label;
  QString placeholder;  ///< Of a folder the one that an absent option means.
  QString help;
  QString value;  ///< What a switch writes; of a choice its values, joined by ",", the first being the default.
  QString words;  ///< Of a choice, joined by ",".
  int usual = 0;  ///< What an absent option means, of steps.
  int least = 0;
  int most = 0;
  bool isLater = false;  ///< Nothing reads it yet, as `help` says: it is shown out of use.
  QString fault;         ///< The sentence of a failed save that belongs to this line.
};

/// What the form of each kind holds beside the title.
struct EditorFields {
  static constexpr const char* kCodexExecutable = "/usr/bin/codex";  ///< Where it usually is.

  /// By kind, else by family. Empty where there is nothing to set.
  static QList<EditorField> of(const QString& kind);
  /// Whether there is a form at all: not for what only parts tiles.
  static bool isEditable(const QString& kind);
};

}  // namespace tarnwick
