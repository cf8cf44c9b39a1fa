// Stands for a meeting program: a window with the buttons of one. "crowd" as an argument gives it more elements than
// anybody looks at, before its buttons.
#include <sys/prctl.h>

#include <QApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

int main(int argc, char** argv) {
  ::prctl(PR_SET_NAME, "zoom");
  qputenv("QT_LINUX_ACCESSIBILITY_ALWAYS_ON", "1");
  QApplication application(argc, argv);
  QWidget window;
  window.setWindowTitle(QStringLiteral("Meeting"));
  auto* row = new QHBoxLayout(&window);
  const bool isCrowd = QApplication::arguments().contains(QStringLiteral("crowd"));
  for (int i = 0; isCrowd && i < 700; ++i) row->addWidget(new QLabel(QString::number(i)));
  auto* microphone = new QPushButton(QStringLiteral("Mute"));
  row->addWidget(microphone);
  row->addWidget(new QPushButton(QStringLiteral("Participants (3)")));
  row->addWidget(new QLabel(QStringLiteral("Elapsed time: 12:05")));
  auto* video = new QPushButton(QStringLiteral("Start Video"));
  video->setEnabled(false);
  row->addWidget(video);
  QObject::connect(microphone, &QPushButton::clicked, microphone, [microphone] {
    const bool muted = microphone->text() == QLatin1String("Unmute");
    microphone->setText(muted ? QStringLiteral("Mute") : QStringLiteral("Unmute"));
  });
  window.show();
  return QApplication::exec();
}
