#pragma once

#include <QMap>
#include <QObject>
#include <QUuid>
#include <memory>

#include "base/OrderedWork.h"
#include "facilities/BeatClient.h"
#include "windows/ZoomInspection.h"

namespace tarnwick {

/// A running meeting, as the buttons of its own window show it, and these buttons at work. Nothing is asked of other
/// programs before a tile that shows it is on a dock. Every failure is `error`; nothing throws.
class ZoomMeetingService final : public QObject, public BeatClient {
  Q_OBJECT
 public:
  /// How long an inspection may take in all.
  static constexpr std::chrono::seconds kPatience{5};

  struct Setup {
    /// Makes the adapter, on the thread that uses it.
    std::function<std::unique_ptr<AccessibleControls>()> controls;
    /// The processes that may show a meeting; asked on that thread too.
    std::function<QList<qint64>()> processes;
  };

  explicit ZoomMeetingService(Setup setup);
  ~ZoomMeetingService() override;

  bool connected() const { return state_.connected; }
  bool loading() const { return loading_; }
  /// The buttons that are there, with what they say now.
  const QMap<ZoomAction, QString>& actions() const { return state_.actions; }
  std::optional<int> participants() const { return state_.participants; }
  std::optional<QString> duration() const { return state_.duration; }
  const QString& error() const { return state_.error; }

  /// Reads anew.
  void refresh();
  /// Presses the button of an action, if it still says what its user has seen.
  void perform(ZoomAction action, const QString& expected);
  /// Forgets the readings; what is under way comes to nothing.
  void forget();

  BeatStep step() const override { return BeatStep::Meetings; }
  int everyTicks() const override { return 2; }
  bool isNeededBy(const ActiveSets& active) const override;
  /// A reading that takes longer than a beat is not overtaken.
  void beat(const ActiveSets&) override {
    if (!loading_) refresh();
  }
  void end() override { forget(); }

 Q_SIGNALS:
  void changed();

 private:
  struct State {
    bool connected = false;
    QMap<ZoomAction, QString> actions;
    std::optional<int> participants;
    std::optional<QString> duration;
    QString error;

    bool operator==(const State&) const = default;
  };
  class Inspector;

  template <class Work, class Done>
  void ask(Work work, Done done);
  void take(const State& state);

  const Setup setup_;
  std::shared_ptr<Inspector> inspector_;
  State state_;
  bool loading_ = false;
  QUuid generation_;
  OrderedWork work_;  ///< Goes first: it uses all others.
};

}  // namespace tarnwick
