// What other programs copy, and what they get when they paste, on every window system alike.
#include <QApplication>
#include <QBuffer>
#include <QKeyEvent>
#include <QProcess>
#include <QTimer>
#include <algorithm>

#include "base/DomainError.h"
#include "clipboard/ClipboardStore.h"
#include "desktop/ShellTest.h"
#include "views/controls/ItemView.h"
#include "views/panels/TilePanel.h"
#include "widgets/catalog/Kinds.h"

namespace tarnwick::testing {
namespace {

using namespace Qt::StringLiterals;
using Kind = ClipboardEntry::Kind;

const QString kPlain = u"text/plain;charset=utf-8"_s;

/// One that can hardly be compressed, so that it goes from program to program piece by piece.
QByteArray drawing(int side) {
  QImage image(side, side, QImage::Format_RGB32);
  quint32 state = 1;
  for (int y = 0; y < side; ++y)
    for (int x = 0; x < side; ++x) image.setPixel(x, y, state = state * 1'664'525 + 1'013'904'223);
  QByteArray png;
  QBuffer buffer(&png);
  buffer.open(QIODevice::WriteOnly);
  image.save(&buffer, "PNG");
  return png;
}

class ClipboardScenario : public ShellTest {
 protected:
  static bool isOnWayland() { return QGuiApplication::platformName().startsWith("wayland"_L1); }

  void begin() {
    DockConfiguration config;
    config.clipboardEnabled = true;
    config.profiles[0].widgets = {DockWidget{QUuid::createUuid(), QString(kind::clipboard), {}, {}}};
    startShown(config);
    ASSERT_TRUE(comesTrue([&] { return store().active().kinds.contains(kind::clipboard); }));
  }
  Pasteboard& pasteboard() { return adapters->services().pasteboard; }
  /// As it is on the disk, newest first.
  QList<ClipboardEntry> kept() const {
    ClipboardStore store(QFileInfo(file()).path());
    try {
      store.load();
    } catch (const DomainError&) {
      return {};  // It came while it was looked for.
    }
    return store.items();
  }
  bool keeps(Kind kind, const QString& value) {
    return comesTrue([&] {
      const auto all = kept();
      return !all.isEmpty() && all.first().kind == kind && all.first().value == value;
    });
  }

  /// Those before it live on, since an end would be news as well.
  QProcess& another() { return *others.emplace_back(std::make_unique<QProcess>()); }
  /// Another program copies, once the desktop knows of it. With `once` it ends when its content has been asked for.
  QProcess& copy(const QString& type, const QByteArray& bytes, bool once = false) {
    QProcess& program = another();
    const quint64 before = pasteboard().changeCount();
    if (isOnWayland()) {
      program.start(u"wl-copy"_s, QStringList{u"--foreground"_s, u"--type"_s, type} +
                                      (once ? QStringList{u"--paste-once"_s} : QStringList()));
    } else {
      program.start(u"xclip"_s,
                    {u"-quiet"_s, u"-selection"_s, u"clipboard"_s, u"-t"_s, type, u"-loops"_s, once ? u"1"_s : u"0"_s});
    }
    program.write(bytes);
    program.closeWriteChannel();
    EXPECT_TRUE(comesTrue([&] { return pasteboard().changeCount() != before; }));
    return program;
  }
  /// The same in several types at a time.
  QProcess& copyForms(const QStringList& typesAndTexts) {
    QProcess& program = another();
    const quint64 before = pasteboard().changeCount();
    program.start(QCoreApplication::applicationDirPath() + u"/copier"_s, typesAndTexts);
    EXPECT_TRUE(comesTrue([&] { return pasteboard().changeCount() != before; }));
    return program;
  }
  /// What another program gets.
  QByteArray paste(const QString& type) {
    QProcess program;
    if (isOnWayland())
      program.start(u"wl-paste"_s, {u"--no-newline"_s, u"--type"_s, type});
    else
      program.start(u"xclip"_s, {u"-selection"_s, u"clipboard"_s, u"-t"_s, type, u"-o"_s});
    EXPECT_TRUE(comesTrue([&] { return program.state() == QProcess::NotRunning; }));
    return program.readAllStandardOutput();
  }
  bool hasEnded(const QProcess& program) {
    return comesTrue([&] { return program.state() == QProcess::NotRunning; });
  }

  /// Opens the panel; its entries, once there are more than that, else null.
  ItemView* openRows(int row) {
    time.advance(1);  // A click soon after another one belongs to that.
    desk.click(tile(0).center());
    ItemView* rows = nullptr;
    const bool hasOpened = comesTrue([&] { return isOpen(); }) && comesTrue([&] {
                             for (QWidget* each : QApplication::allWidgets())
                               if (auto* found = qobject_cast<ItemView*>(each); found && found->isVisible())
                                 rows = found;
                             return rows && rows->items().size() > row;
                           });
    return hasOpened ? rows : nullptr;
  }
  /// Opens the panel and puts the entry of a row back.
  void putBack(int row) {
    const quint64 before = pasteboard().changeCount();
    ItemView* rows = openRows(row);
    ASSERT_TRUE(rows);
    rows->choose(row);
    QKeyEvent press(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
    QApplication::sendEvent(rows, &press);
    ASSERT_TRUE(comesTrue([&] { return pasteboard().changeCount() != before && !isOpen(); }));
  }

  std::vector<std::unique_ptr<QProcess>> others;
};

TEST_F(ClipboardScenario, WhatOtherProgramsCopyIsKept) {
  begin();
  const QByteArray png = drawing(300);
  const struct {
    const char* what;
    QString type;
    QByteArray bytes;
    Kind kind;
    QString value;
  } cases[] = {
      {"a text", kPlain, " grün\nand blue ", Kind::Text, u" grün\nand blue "_s},
      {"a link", kPlain, "https://example.org/a?b=c", Kind::Link, u"https://example.org/a?b=c"_s},
      {"a colour", kPlain, "#2E8C94", Kind::Color, u"#2E8C94"_s},
      {"a picture", u"image/png"_s, png, Kind::Image, {}},
      {"files", u"text/uri-list"_s, "file:///srv/two%20words.txt\r\nfile:///srv/b\r\n", Kind::File,
       u"/srv/two words.txt"_s},
      {"the longest text", kPlain, QByteArray(100'000, 'x'), Kind::Text, QString(100'000, u'x')},
  };
  qsizetype count = 0;
  for (const auto& each : cases) {
    copy(each.type, each.bytes);
    EXPECT_TRUE(keeps(each.kind, each.value)) << each.what;
    EXPECT_EQ(kept().size(), ++count) << each.what;
  }
  const auto all = kept();
  const auto picture = std::ranges::find(all, Kind::Image, &ClipboardEntry::kind);
  ASSERT_NE(picture, all.end());
  EXPECT_EQ(ClipboardStore(QFileInfo(file()).path()).picture(*picture), png);
}

TEST_F(ClipboardScenario, WhatIsNotForKeepingIsNot) {
  begin();
  for (const QString& marker : {u"x-kde-passwordManagerHint"_s, u"org.nspasteboard.ConcealedType"_s,
                                u"org.nspasteboard.TransientType"_s, u"org.nspasteboard.AutoGeneratedType"_s}) {
    copyForms({kPlain, u"secret"_s, marker, u"1"_s});
    EXPECT_EQ(paste(kPlain), "secret") << "it is there for those who paste";
  }
  EXPECT_TRUE(hasEnded(copy(kPlain, QByteArray(100'001, 'x'), true))) << "it was read";
  copyForms({kPlain, u"then"_s, u"application/x-other"_s, u"1"_s});
  EXPECT_TRUE(keeps(Kind::Text, u"then"_s));
  EXPECT_EQ(kept().size(), 1);
  copyForms({kPlain, u"secret"_s});
  EXPECT_TRUE(keeps(Kind::Text, u"secret"_s)) << "without the mark";
}

TEST_F(ClipboardScenario, AnEntryThatIsPutBackArrivesAsItWasCopied) {
  begin();
  const QByteArray text = " grün\r\n\tand blue\n";
  const QByteArray png = drawing(400);
  const QByteArray longest(100'000, 'x');
  for (const auto& [type, bytes] : {std::pair(kPlain, text), {u"image/png"_s, png}, {kPlain, longest}}) {
    const qsizetype before = kept().size();
    copy(type, bytes);
    ASSERT_TRUE(comesTrue([&] { return kept().size() == before + 1; }));
  }
  copy(u"text/uri-list"_s, "file:///srv/two%20words.txt\r\n");
  ASSERT_TRUE(keeps(Kind::File, u"/srv/two words.txt"_s));

  putBack(0);
  EXPECT_EQ(paste(u"text/uri-list"_s), "file:///srv/two%20words.txt\r\n");
  EXPECT_EQ(paste(kPlain), "/srv/two words.txt");
  // What is put back is the newest again.
  putBack(1);
  EXPECT_EQ(paste(kPlain), longest);
  ASSERT_TRUE(keeps(Kind::Text, QString::fromLatin1(longest)));
  putBack(2);
  ASSERT_TRUE(keeps(Kind::Image, {}));
  EXPECT_EQ(paste(u"image/png"_s), png);
  putBack(3);
  EXPECT_EQ(paste(kPlain), text);
  EXPECT_EQ(kept().size(), 4);
}

TEST_F(ClipboardScenario, AnEntryIsDraggedIntoAnotherProgram) {
  begin();
  copy(kPlain, "carried");
  ASSERT_TRUE(keeps(Kind::Text, u"carried"_s));
  const QString dropped = folder.filePath(u"dropped"_s);
  const auto program = desk.source(dropped);
  ASSERT_TRUE(comesTrue([&] { return isPainted(desk.away()); }));
  ItemView* rows = openRows(0);
  ASSERT_TRUE(rows);
  const QPoint row = rows->viewport()->mapToGlobal(rows->visualRect(rows->model()->index(0, 0)).center());
  ASSERT_TRUE(comesTrue([&] { return isPainted(row); }));
  desk.moveTo(row);
  desk.button(true);
  // While something is dragged its events go on in a loop of their own, so that the pointer is moved from within that.
  QTimer hand;
  constexpr int most = 500;
  QObject::connect(&hand, &QTimer::timeout, [&, step = 0]() mutable {
    if (const bool isTold = QFile::exists(dropped); isTold || ++step == most) {
      EXPECT_TRUE(isTold) << "the other program is told of it";
      hand.stop();
      desk.button(false);
      return;
    }
    desk.moveTo((step < 4 ? row - QPoint(10 * step, 0) : desk.away()) + QPoint(step % 4, step % 4));
  });
  hand.start(20);
  EXPECT_TRUE(comesTrue([&] { return !hand.isActive() && QFileInfo(dropped).size() > 0; }));
  QFile file(dropped);
  EXPECT_TRUE(file.open(QIODevice::ReadOnly) && file.readAll() == "carried");
  // A click outside closes the panel as before.
  EXPECT_TRUE(isOpen());
  EXPECT_TRUE(comesTrue([&] {
    desk.click(desk.away());
    return !isOpen();
  }));
}

TEST_F(ClipboardScenario, WhatIsHeldOutlivesItsProgramAndTheRunThatHoldsIt) {
  begin();
  QProcess& program = copy(kPlain, "kept");
  ASSERT_TRUE(keeps(Kind::Text, u"kept"_s));
  program.kill();
  if (pasteboard().endOfOwners()) {
    ASSERT_TRUE(comesTrue([&] { return pasteboard().isOwn(); })) << "it went with its program otherwise";
  } else {
    EXPECT_TRUE(comesTrue([&] { return pasteboard().isEmpty(); }));
    const QDateTime copied = kept().first().added;
    putBack(0);
    ASSERT_TRUE(comesTrue([&] { return kept().first().added != copied; })) << "it is a copy like any other";
  }
  EXPECT_EQ(paste(kPlain), "kept");
  // Another run in its place holds it on.
  end();
  replaces = true;
  begin();
  ASSERT_TRUE(comesTrue([&] { return pasteboard().isOwn(); }));
  EXPECT_EQ(paste(kPlain), "kept");
  // One that is merely started does not.
  end();
  replaces = false;
  begin();
  desk.settle();
  EXPECT_TRUE(comesTrue([&] { return pasteboard().isEmpty(); }));
}

}  // namespace
}  // namespace tarnwick::testing
