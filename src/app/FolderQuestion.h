#pragma once

#include <QFileDialog>
#include <QPointer>
#include <QStandardPaths>
#include <functional>
#include <memory>

namespace tarnwick {

/// Asks the user for a folder or for a picture, in the desktop's own window for that. One question at a time: asking
/// again brings the open one forward. Destroying it closes the window.
class FolderQuestion {
 public:
  ~FolderQuestion();

  /// `chosen` runs once with an absolute path, or never when the user thinks better of it.
  void ask(const QString& title, std::function<void(const QString& path)> chosen);
  void askPicture(const QString& title, std::function<void(const QString& path)> chosen);
  bool isOpen() const { return !dialog_.isNull(); }

 private:
  void open(const QString& title, QStandardPaths::StandardLocation start,
            const std::function<void(QFileDialog&)>& dress, std::function<void(const QString& path)> chosen);

  QPointer<QFileDialog> dialog_;  // Deletes itself when it is closed.
};

}  // namespace tarnwick
