// usage: drag_source FILE [X Y WIDTH HEIGHT | full]
// A window, or one that fills the display, from which a file can be dragged. The other button moves it. What is dropped
// on it is written into the file as text; while something is held over it the file is there, and empty.
#include <QApplication>
#include <QDrag>
#include <QDropEvent>
#include <QFile>
#include <QFileInfo>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>
#include <QUrl>
#include <QWidget>
#include <QWindow>

namespace {

class Source final : public QWidget {
 public:
  explicit Source(const QString& file) : file_(file) { setAcceptDrops(true); }

 protected:
  // Its corner is another colour than the rest, so that it is seen to be there also where it covers everything.
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.fillRect(rect(), Qt::black);
    painter.fillRect(rect().adjusted(20, 20, -20, -20), Qt::yellow);
    if (paintsToGo_ == 0) return;
    if (--paintsToGo_ == 0) {
      write({});
    } else {
      update();
    }
  }
  void mousePressEvent(QMouseEvent* event) override {
    if (event->button() == Qt::RightButton) {
      windowHandle()->startSystemMove();
      return;
    }
    auto* carried = new QMimeData;
    carried->setUrls({QUrl::fromLocalFile(file_)});
    auto* drag = new QDrag(this);
    drag->setMimeData(carried);
    drag->exec(Qt::CopyAction);
  }

  void dragEnterEvent(QDragEnterEvent* event) override {
    // That it is taken is known to the display when a picture that was painted afterwards has been shown.
    paintsToGo_ = 2;
    update();
    event->acceptProposedAction();
  }
  void dropEvent(QDropEvent* event) override {
    write(event->mimeData()->text().toUtf8());
    event->acceptProposedAction();
  }

 private:
  void write(const QByteArray& text) const {
    if (QFileInfo(file_).size() > 0) return;  // What is carried out of here keeps its content.
    if (QFile file(file_); file.open(QIODevice::WriteOnly)) file.write(text);
  }

  QString file_;
  int paintsToGo_ = 0;
};

}  // namespace

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  const QStringList arguments = QApplication::arguments();
  Source source(arguments.value(1));
  source.setWindowTitle(arguments.value(1));
  const auto number = [&](int at) { return arguments.value(at).toInt(); };
  if (arguments.size() > 5) {
    source.setWindowFlag(Qt::FramelessWindowHint);
    source.setGeometry(number(2), number(3), number(4), number(5));
  }
  if (arguments.last() == QLatin1String("full")) {
    source.showFullScreen();
  } else {
    source.show();
  }
  return QApplication::exec();
}
