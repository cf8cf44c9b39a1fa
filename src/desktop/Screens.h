#pragma once

#include <QList>
#include <QObject>
#include <QRectF>
#include <QString>

namespace tarnwick {

/// One connected display, in the desktop's coordinates: device-independent pixels, origin at the top left, y downwards.
struct Screen {
  QString id;        ///< Stable over a reconnection: a UUID made from the monitor's maker, product and serial, or the
                     ///< connector's name where the monitor reports nothing.
  QString legacyId;  ///< The decimal number that older settings used for this display; empty where none ever did.
  QString name;      ///< What a person calls it, such as the monitor's model or the connector.
  QRectF frame;      ///< The whole display.
  QRectF usable;     ///< Without the bars that others keep; our own reservation is not subtracted.
  double scale = 1;  ///< Device pixels per device-independent pixel.

  bool operator==(const Screen&) const = default;
};

/// The connected displays. An adapter emits `changed` when one comes, goes, moves, or changes size, bars or scale.
class Screens : public QObject {
  Q_OBJECT
 public:
  /// The main display first. Empty while none is connected.
  virtual QList<Screen> all() const = 0;
  /// The identity of the main display, or an empty text.
  virtual QString mainId() const = 0;
  /// Whether the desktop alone decides where windows of programs are, and reports to nobody where that is.
  virtual bool placesWindows() const { return false; }
  /// Whether programs learn where the pointer is while it is over the windows of others.
  virtual bool reportsPointer() const { return false; }
  /// The display where the user is, as the compositor chooses it for a window of a program; asked for anew each time.
  /// Empty where nobody tells.
  virtual QString activeId() const { return {}; }

 Q_SIGNALS:
  void changed();
};

}  // namespace tarnwick
