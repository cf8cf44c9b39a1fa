#pragma once

#include <QTimer>
#include <QWebEngineLoadingInfo>
#include <functional>

#include "browser/ServicePage.h"
#include "services/ports/BrowserReader.h"

namespace tarnwick {

/// Loads the home page of a service in the user's session and lets a script ask the service there, in a world of its
/// own that the page cannot reach into.
class PageReading final {
 public:
  /// The text is the JSON of `status` and `body`; empty with any other exit than Answered.
  using Done = std::function<void(BrowserExit exit, const QString& text)>;

  PageReading(const QUrl& home, QWebEngineProfile& profile, Done done);
  Q_DISABLE_COPY_MOVE(PageReading)
  ~PageReading() = default;

  ServicePage& page() { return page_; }
  void start();

 private:
  void follow(QWebEngineLoadingInfo::LoadStatus status);
  void ask();
  void look();
  void end(BrowserExit exit, const QString& text = {});

  QUrl home_;
  ServicePage page_;
  Done done_;
  QTimer pause_;     ///< Between two looks at whether the script has ended.
  QTimer deadline_;  ///< A little before whoever waits for the helper gives it up.
};

}  // namespace tarnwick
