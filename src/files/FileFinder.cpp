#include "files/FileFinder.h"

#include <QFile>
#include <QFileInfo>
#include <algorithm>
#include <deque>
#include <filesystem>
#include <vector>

#include "base/Text.h"

namespace tarnwick {

using namespace Qt::StringLiterals;
namespace fs = std::filesystem;

namespace {

/// Filled with what programs made for themselves.
bool isUninteresting(const QString& folder) { return folder == "node_modules"_L1 || folder == "__pycache__"_L1; }

struct Hit {
  QString path;
  QString name;
  bool isFolder = false;
  bool begins = false;
  int depth = 0;
};

struct Place {
  fs::path path;
  int depth = 0;
};

class Walk {
 public:
  Walk(const QString& text, const std::stop_token& stop) : text_(Text::folded(text)), stop_(stop) {}

  std::vector<Hit> run(const fs::path& root) {
    places_.push_back({root, 0});
    // The nearest folders first, so that a search that ends early has seen what matters most.
    while (!places_.empty() && !ends()) {
      const Place place = std::move(places_.front());
      places_.pop_front();
      look(place);
    }
    return std::move(hits_);
  }

 private:
  bool ends() const { return stop_.stop_requested() || seen_ >= FileFinder::kMostNames || hits_.size() >= kMostHits; }

  void look(const Place& place) {
    std::error_code failure;
    fs::directory_iterator at(place.path, failure);
    for (const fs::directory_iterator end; !failure && at != end && !ends(); at.increment(failure)) {
      ++seen_;
      const QString name = QFile::decodeName(QByteArray::fromStdString(at->path().filename().string()));
      if (name.startsWith(u'.')) continue;
      std::error_code ignored;
      const bool isFolder = at->is_directory(ignored);
      take(at->path(), name, isFolder, place.depth);
      // Links may lead round in a circle.
      if (isFolder && !at->is_symlink(ignored) && !isUninteresting(name))
        places_.push_back({at->path(), place.depth + 1});
    }
  }

  void take(const fs::path& path, const QString& name, bool isFolder, int depth) {
    const qsizetype at = Text::folded(name).indexOf(text_);
    if (at < 0) return;
    hits_.push_back({QFile::decodeName(QByteArray::fromStdString(path.string())), name, isFolder, at == 0, depth});
  }

  static constexpr std::size_t kMostHits = 4000;
  QString text_;
  const std::stop_token& stop_;
  std::deque<Place> places_;
  std::vector<Hit> hits_;
  qsizetype seen_ = 0;
};

}  // namespace

FileFinder::FileFinder(const QString& folder, Scheduler& scheduler, QObject* parent)
    : QObject(parent), folder_(folder), scheduler_(scheduler) {}

void FileFinder::find(const QString& text) {
  const QString wanted = Text::trimmed(text).toString();
  work_.cancel();
  waiting_.reset();
  if (wanted.size() >= leastLetters) {
    waiting_ = scheduler_.after(kPatience, [this, wanted] { start(wanted); });
    return;
  }
  found_.clear();
  Q_EMIT changed();
}

void FileFinder::start(const QString& text) {
  waiting_.reset();
  work_.start([folder = folder_, text](const std::stop_token& stop) { return search(folder, text, stop); },
              [this](QList<FolderEntry> found) {
                found_ = std::move(found);
                Q_EMIT changed();
              });
}

QList<FolderEntry> FileFinder::search(const QString& folder, const QString& text, const std::stop_token& stop) {
  std::vector<Hit> hits = Walk(text, stop).run(QFile::encodeName(folder).toStdString());
  QList<FolderEntry> found;
  std::ranges::stable_sort(
      hits, [](const Hit& a, const Hit& b) { return a.begins != b.begins ? a.begins : a.depth < b.depth; });
  constexpr std::size_t candidates = 200;
  hits.resize(std::min(hits.size(), candidates));
  struct Ranked {
    const Hit* hit;
    QDateTime modified;
    qint64 size;
  };
  std::vector<Ranked> ranked;
  for (const Hit& hit : hits) {
    const QFileInfo info(hit.path);
    if (info.exists()) ranked.push_back({&hit, info.lastModified(), hit.isFolder ? 0 : info.size()});
  }
  std::ranges::stable_sort(ranked, [](const Ranked& a, const Ranked& b) {
    if (a.hit->begins != b.hit->begins) return a.hit->begins;
    return a.hit->depth != b.hit->depth ? a.hit->depth < b.hit->depth : a.modified > b.modified;
  });
  for (const Ranked& each : ranked) {
    if (found.size() >= most) break;
    found.append({each.hit->path, each.hit->name, each.hit->isFolder, each.size, each.modified});
  }
  return found;
}

}  // namespace tarnwick
