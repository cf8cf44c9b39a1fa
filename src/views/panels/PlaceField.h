#pragma once

#include <QTimer>
#include <QWidget>
#include <stop_token>

#include "services/GeocodeCache.h"
#include "services/ServiceAnswer.h"

namespace tarnwick {

class Connections;
class RowList;
class SearchField;
class TextLabel;

/// A place that is looked for by name. What is typed is asked after a short rest, the next key drops the question, and
/// the places that were found are rows below the field: the arrows lead into them, Return takes the first.
class PlaceField final : public QWidget {
  Q_OBJECT
 public:
  static constexpr int kRestMilliseconds = 400;
  static constexpr qsizetype kFewestLetters = 2;

  /// `label` is read by screen readers. The connections outlive it.
  PlaceField(const QString& label, Connections& connections, QWidget* parent = nullptr);
  ~PlaceField() override;

  SearchField& field() { return *field_; }
  QString text() const;
  /// Without asking for it.
  void setText(const QString& text);

 Q_SIGNALS:
  void typed();
  void chosen(const tarnwick::GeocodeCache::Place& place);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  using Places = QList<GeocodeCache::Place>;

  void follow();
  void ask();
  void drop();
  void offer(const ServiceAnswer<Places>& answer);
  void take(GeocodeCache::Place place);
  void clear();
  bool moveFrom(QObject* from, int key);

  Connections& connections_;
  SearchField* field_;
  RowList* rows_;
  TextLabel* message_;
  QTimer rest_;
  std::stop_source stop_;
  Places found_;
  QList<QWidget*> choices_;
  bool isQuiet_ = false;
  bool takesFirst_ = false;  ///< Return was pressed before there was an answer.
};

}  // namespace tarnwick
