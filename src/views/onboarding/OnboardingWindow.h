#pragma once

#include <QAbstractSlider>
#include <optional>
#include <tuple>

#include "views/window/AppWindow.h"
#include "views/window/WindowServices.h"

class QStackedWidget;

namespace tarnwick {

class Button;
class PageDots;

/// The first run: what the program is, where the dock should live, what it asks of the desktop, and how to go on. What
/// is chosen holds at once. Closing it early leaves the setup to be continued; only its last button says that it is
/// complete.
class OnboardingWindow final : public AppWindow {
  Q_OBJECT
 public:
  static constexpr int kPages = 4;

  /// Begins with `page`, counted from 0.
  OnboardingWindow(AppStore& store, WindowServices services, int page = 0);
  ~OnboardingWindow() override;

  int page() const;
  /// Looks again at what the desktop says of keys, which it may only have said since the page was turned to.
  void followKeys();

 Q_SIGNALS:
  void pageChanged(int page);

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  /// Whether the desktop has answered, whether there are any, and which opens the command bar.
  using Keys = std::tuple<bool, bool, std::optional<QString>>;

  Keys keysNow() const;
  void addPage();
  QWidget* makePage(int page);
  void turnTo(int page);
  void goOn();
  void scroll(QAbstractSlider::SliderAction action);

  AppStore& store_;
  const WindowServices services_;
  Keys keys_;  ///< What the page that is seen says of them.
  QStackedWidget* pages_;
  PageDots* dots_;
  Button* later_;
  Button* back_;
  Button* on_;
};

}  // namespace tarnwick
