#pragma once

#include "views/library/FieldControl.h"

class QVBoxLayout;

namespace tarnwick {

class Button;

/// One application or several, chosen from those that are installed.
class AppField final : public FieldControl {
  Q_OBJECT
 public:
  AppField(const FieldServices& services, bool several);

  QString value() const override { return paths_.join(u'\n'); }
  void setValue(const QString& value) override;

 private:
  void showApps();
  void choose();
  void take(const QString& path);

  FieldServices services_;
  bool several_;
  QStringList paths_;
  QVBoxLayout* rows_;
  Button* choose_;
};

/// A folder, chosen with the desktop's own window for that.
class FolderField final : public FieldControl {
  Q_OBJECT
 public:
  /// `usual` is what stands for an option that is left away; empty for nothing.
  explicit FolderField(const QString& usual);

  QString value() const override { return path_; }
  void setValue(const QString& value) override;

 private:
  void showFolder();
  void choose();

  QString usual_;
  QString path_;
  QVBoxLayout* rows_;
  Button* choose_;
};

}  // namespace tarnwick
