#include "app/SnapshotConnections.h"

#include <QCoroTask>
#include <QJsonDocument>

#include "views/snapshot/SnapshotFixture.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

enum class Standing { Good, Failed, Paused, Asking, Waiting, New };

struct Sample {
  const char* kind;
  const char* title;
  const char* address;
  Standing standing;
};

constexpr Sample kSamples[] = {
    {"analyticsPlausible", "Visitors", "https://api.example.org/v1/stats", Standing::Good},
    {"revenueStripe", "Revenue", "https://billing.example.com/summary.json", Standing::Failed},
    {"analyticsGitHub", "Stars of the project", "https://api.example.net/repository", Standing::Paused},
    {"productivityLinear", "Open issues", "https://issues.example.org/open", Standing::Asking},
    {"analyticsSupabase", "Rows", "https://database.example.org/count", Standing::Waiting},
    {"socialYouTube", "Subscribers", "https://video.example.org/channel", Standing::New},
};

QUuid identity(std::size_t index) { return QUuid(0x7a11, 1, 1, 1, 1, 1, 1, 1, 1, 1, static_cast<uchar>(index)); }

const Sample* sampleOf(const QUuid& widget) {
  for (std::size_t i = 0; i < std::size(kSamples); ++i)
    if (identity(i) == widget) return &kSamples[i];
  return nullptr;
}

}  // namespace

QList<DockWidget> SnapshotConnections::widgets() {
  QList<DockWidget> widgets;
  for (std::size_t i = 0; i < std::size(kSamples); ++i)
    widgets.append({identity(i),
                    QString::fromLatin1(kSamples[i].kind),
                    QString::fromLatin1(kSamples[i].title),
                    {{option::endpoint, QString::fromLatin1(kSamples[i].address)},
                     {option::field, u"stats.visitors.today"_s},
                     {option::metricLabel, u"Visitors today"_s}}});
  return widgets;
}

std::optional<RemoteReading> SnapshotConnections::reading(QUuid widget) const {
  const Sample* sample = sampleOf(widget);
  if (!sample || sample->standing == Standing::New) return std::nullopt;
  const QDateTime now = SnapshotFixture::moment();
  RemoteReading reading;
  reading.value.value = u"3184"_s;
  reading.goodAt = now.addSecs(-6 * 60);
  reading.isAsking = reading.isLoading = sample->standing == Standing::Asking;
  if (sample->standing == Standing::Waiting) reading.waitsFor = RemoteWait::Network;
  if (sample->standing == Standing::Failed || sample->standing == Standing::Paused) {
    reading.value.failed = true;
    reading.value.subtitle =
        sample->standing == Standing::Paused
            ? u"The service rate limit was reached. Try again later."_s
            : u"The service credential expired or was rejected. Reconnect in Connection Settings."_s;
  }
  if (sample->standing == Standing::Paused) reading.pausedUntil = now.addSecs(16 * 60);
  return reading;
}

std::optional<QDateTime> SnapshotConnections::nextRefresh(QUuid widget) const {
  const Sample* sample = sampleOf(widget);
  if (!sample || sample->standing == Standing::Waiting) return std::nullopt;
  return SnapshotFixture::moment().addSecs((sample->standing == Standing::Paused ? 16 : 4) * 60);
}

QCoro::Task<Capability> SnapshotConnections::keepsCredentials() const { co_return Capability::yes(); }

QCoro::Task<bool> SnapshotConnections::hasCredential(DockWidget widget, std::stop_token) const {
  co_return sampleOf(widget.id) != nullptr;
}

QCoro::Task<QJsonValue> SnapshotConnections::answer(DockWidget, std::optional<QString>, std::stop_token) {
  const QJsonDocument answer = QJsonDocument::fromJson(R"({
    "stats": {"visitors": {"today": 3184, "yesterday": 2907, "week": 19420, "unit": "people"},
              "pages": [{"path": "/", "views": 812}, {"path": "/docs", "views": 640}], "live": true},
    "updated": "10:24:02Z"})");
  co_return answer.object();
}

}  // namespace tarnwick
