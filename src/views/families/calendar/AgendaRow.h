#pragma once

#include <QColor>
#include <QWidget>
#include <functional>

namespace tarnwick {

class Button;

/// An event of an agenda: when it is, a bar in its calendar's colour, what and where it is, and perhaps a button that
/// joins it.
class AgendaRow final : public QWidget {
  Q_OBJECT
 public:
  struct Words {
    QString begin;
    QString end;
    QString title;
    QString place;
    QString colour;     ///< "#rrggbb", or empty for the accent.
    bool past = false;  ///< Over already, and quieter for it.
    bool operator==(const Words&) const = default;
  };
  /// `join` may be empty. `column` is the width of the times, one for all rows of a list.
  AgendaRow(const Words& words, double column, std::function<void()> join, bool primary);

  void setParted(bool parted);
  /// The width that the times of a row take.
  static double columnOf(const Words& words);
  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  Words words_;
  double column_;
  Button* join_ = nullptr;
  bool parted_ = false;
};

}  // namespace tarnwick
