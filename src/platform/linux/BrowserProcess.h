#pragma once

#include <QProcessEnvironment>
#include <QString>

#include "base/Scheduler.h"
#include "services/ports/BrowserReader.h"

class QProcess;

namespace tarnwick {

/// The optional program `tarnwick-browser`, started for each reading and for the window in which the user signs in.
class BrowserProcess final : public BrowserReader {
 public:
  struct Setup {
    QString folder;  ///< Where its session is kept.
    QString title;   ///< Of the window.
    QProcessEnvironment environment;
    /// The program; empty where it is not installed. It may come and go.
    QString (*find)() = nullptr;
  };
  /// The scheduler outlives it.
  BrowserProcess(Setup setup, Scheduler& scheduler);
  ~BrowserProcess() override;

  bool isInstalled() const override;
  std::unique_ptr<BrowserReading> read(const QUrl& home, Done done) override;
  void showSignIn(const QUrl& home) override;
  bool forget() override;

 private:
  class Reading;

  Setup setup_;
  Scheduler& scheduler_;
  Reading* reading_ = nullptr;        ///< The one that runs last; not owned.
  std::unique_ptr<QProcess> signIn_;  ///< While the window is there.
};

}  // namespace tarnwick
