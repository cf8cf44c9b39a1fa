#include "platform/dbus/GeoClueLocation.h"

#include <memory>

#include "base/Cancelled.h"
#include "platform/dbus/GeoClueQuestion.h"

namespace tarnwick {

namespace {

/// The answer comes from within the question, which must outlive that.
struct DeleteQuestionLater {
  void operator()(QObject* question) const { question->deleteLater(); }
};

QCoro::Task<Coordinate> locateBy(QDBusConnection system, std::chrono::milliseconds patience, std::stop_token stop) {
  throwIfStopped(stop);
  const std::unique_ptr<GeoClueQuestion, DeleteQuestionLater> question(new GeoClueQuestion(system, patience));
  const std::stop_callback withdraw(stop, [asked = question.get()] { asked->withdraw(); });
  co_await question->ended().happened();
  throwIfStopped(stop);
  if (question->failure()) throw LocationFailure(*question->failure());
  co_return *question->coordinate();
}

}  // namespace

QCoro::Task<Coordinate> GeoClueLocation::locate(std::stop_token stop) {
  return locateBy(system_, patience_, std::move(stop));
}

}  // namespace tarnwick
