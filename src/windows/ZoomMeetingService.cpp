#include "windows/ZoomMeetingService.h"

#include <QDeadlineTimer>
#include <thread>

#include "widgets/catalog/Kinds.h"

namespace tarnwick {

/// What is asked on the thread that may wait.
class ZoomMeetingService::Inspector {
 public:
  explicit Inspector(const Setup& setup) : setup_(setup) {}

  /// A sentence where no program can be asked, or none that could show a meeting runs.
  QString obstacle() {
    if (!controls_) controls_ = setup_.controls();
    if (!controls_->capability()) return tr("Enable Accessibility to read Zoom’s meeting controls.");
    processes_ = setup_.processes();
    return processes_.isEmpty() ? tr("Open a Zoom meeting, then refresh.") : QString();
  }
  ZoomInspection inspect() {
    const QDeadlineTimer end(kPatience);
    for (const qint64 pid : processes_) {
      ZoomInspection found = ZoomInspection::inspect(pid, *controls_, [&end] { return end.hasExpired(); });
      if (!found.actions.isEmpty()) return found;
    }
    return {};
  }
  State read() {
    State state;
    state.error = obstacle();
    if (!state.error.isEmpty()) return state;
    const ZoomInspection found = inspect();
    if (found.actions.isEmpty()) {
      state.error = tr(
          "No supported meeting toolbar is visible. Show Zoom’s meeting controls, then refresh. English control labels "
          "are supported.");
      return state;
    }
    state.connected = true;
    for (auto each = found.actions.cbegin(); each != found.actions.cend(); ++each)
      state.actions.insert(each.key(), each->label);
    state.participants = found.participants;
    state.duration = found.duration;
    return state;
  }
  /// Empty where the button was pressed.
  QString press(ZoomAction action, const QString& expected) {
    if (QString failure = obstacle(); !failure.isEmpty()) return failure;
    const ZoomInspection found = inspect();
    const auto button = found.actions.constFind(action);
    if (button == found.actions.cend() || button->label != expected)
      return tr("Zoom’s controls changed. Refresh before trying again.");
    if (!controls_->press(button->element)) return tr("Zoom did not accept this action. Use its meeting toolbar.");
    waitForEffect(*button);
    return {};
  }

 private:
  /// A button shows that it was pressed before it says something else.
  void waitForEffect(const ZoomInspection::Button& button) {
    const QDeadlineTimer end(kEffect);
    while (!end.hasExpired()) {
      const auto now = controls_->read(button.element);
      if (!now || now->label != button.label) return;
      std::this_thread::sleep_for(kEffect / 10);
    }
  }

  static constexpr std::chrono::milliseconds kEffect{500};

  const Setup& setup_;
  std::unique_ptr<AccessibleControls> controls_;
  QList<qint64> processes_;
};

ZoomMeetingService::ZoomMeetingService(Setup setup)
    : setup_(std::move(setup)), inspector_(std::make_shared<Inspector>(setup_)) {}

ZoomMeetingService::~ZoomMeetingService() = default;

bool ZoomMeetingService::isNeededBy(const ActiveSets& active) const {
  return active.kinds.contains(QString(kind::zoomMeeting)) ||
         active.kinds.contains(QString(kind::calendarMeetingDetail));
}

template <class Work, class Done>
void ZoomMeetingService::ask(Work work, Done done) {
  generation_ = QUuid::createUuid();
  loading_ = true;
  work_.start([inspector = inspector_, work] { return work(*inspector); },
              [this, done, generation = generation_](const auto& answer) {
                if (generation != generation_) return;
                loading_ = false;
                done(answer);
              });
}

void ZoomMeetingService::refresh() {
  ask([](Inspector& inspector) { return inspector.read(); }, [this](const State& state) { take(state); });
}

void ZoomMeetingService::perform(ZoomAction action, const QString& expected) {
  ask([action, expected](Inspector& inspector) { return inspector.press(action, expected); },
      [this](const QString& failure) {
        if (failure.isEmpty()) return refresh();
        State state = state_;
        // Nothing can be pressed any more where the program or the bus has gone.
        if (failure != tr("Zoom’s controls changed. Refresh before trying again.") &&
            failure != tr("Zoom did not accept this action. Use its meeting toolbar."))
          state = State();
        state.error = failure;
        take(state);
      });
}

void ZoomMeetingService::forget() {
  generation_ = QUuid::createUuid();
  loading_ = false;
  take({});
}

void ZoomMeetingService::take(const State& state) {
  if (std::exchange(state_, state) != state) Q_EMIT changed();
}

}  // namespace tarnwick
