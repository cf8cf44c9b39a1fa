// usage: pipe_terminal TITLE PROGRAM [ARGUMENT…]
// A window that passes what is typed in it to a program, and clicks on it as terminals report them. Control and V paste
// from the clipboard. For desktops on which no terminal starts.
#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QProcess>
#include <QWidget>

namespace {

class Terminal final : public QWidget {
 public:
  explicit Terminal(const QStringList& command) {
    program_.start(command.value(0), command.sliced(1));
    QObject::connect(&program_, &QProcess::finished, qApp, &QCoreApplication::quit);
  }
  ~Terminal() override {
    program_.closeWriteChannel();
    program_.waitForFinished();
  }

 protected:
  void keyPressEvent(QKeyEvent* event) override {
    const bool pastes = event->modifiers() == Qt::ControlModifier && event->key() == Qt::Key_V;
    program_.write((pastes ? QApplication::clipboard()->text() : event->text()).toUtf8());
  }
  void mousePressEvent(QMouseEvent*) override { program_.write("\x1b[<0;1;1M"); }
  void mouseReleaseEvent(QMouseEvent*) override { program_.write("\x1b[<0;1;1m"); }

 private:
  QProcess program_;
};

}  // namespace

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  const QStringList arguments = QApplication::arguments();
  Terminal terminal(arguments.sliced(2));
  terminal.setWindowTitle(arguments.value(1));
  terminal.resize(500, 300);
  terminal.show();
  return QApplication::exec();
}
