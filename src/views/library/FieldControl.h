#pragma once

#include <QUrl>
#include <QWidget>
#include <functional>
#include <memory>

#include "apps/InstalledApps.h"
#include "config/DockWidget.h"
#include "views/library/EditorFields.h"
#include "views/tiles/TileStyle.h"

namespace tarnwick {

class Connections;

/// What the controls of a form ask of the program. Borrowed.
struct FieldServices {
  InstalledApps& apps;
  TileIcons icons;
  Connections& connections;
  std::function<void(const QUrl& page)> openPage;
};

/// The control of one option in a form. It holds the option as the text that a widget keeps.
class FieldControl : public QWidget {
  Q_OBJECT
 public:
  static FieldControl* make(const EditorField& field, const FieldServices& services);

  /// Empty for an option that is left away.
  virtual QString value() const = 0;
  /// Without a signal.
  virtual void setValue(const QString& value) = 0;
  /// Takes what a widget has of it, for one that holds more than one option. Without a signal.
  virtual void read(const DockWidget& widget, const QString& key) { setValue(widget.options.value(key)); }
  /// Writes it into a widget that it was changed for.
  virtual void write(DockWidget& widget, const QString& key) const;
  /// What stands in the form now, for one that shows something of that.
  virtual void follow(const DockWidget& edited) { Q_UNUSED(edited) }
  /// What is wrong with it by itself, as a finished sentence; empty for nothing.
  virtual QString fault() const { return {}; }
  /// Shows that something is wrong with it.
  virtual void setFaulty(bool faulty) { Q_UNUSED(faulty) }
  /// Whether it is on a line of its own below its label.
  virtual bool isWide() const { return true; }

 Q_SIGNALS:
  /// The user changed it.
  void changed();

 protected:
  explicit FieldControl(QWidget* parent = nullptr) : QWidget(parent) {}
  /// Makes `control` all that this is.
  void hold(QWidget* control);
};

}  // namespace tarnwick
