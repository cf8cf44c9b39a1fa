#include <gtest/gtest.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QSemaphore>
#include <QSocketNotifier>
#include <QTemporaryDir>
#include <atomic>
#include <cstring>
#include <thread>

#include "clipboard/ClipboardRecorder.h"
#include "platform/x11/X11Pasteboard.h"
#include "support/TestScheduler.h"
#include "support/VirtualDisplay.h"
#include "widgets/catalog/Kinds.h"

namespace tarnwick::testing {
namespace {

using namespace Qt::StringLiterals;
using End = PasteboardContent::End;

constexpr qint64 kMost = 64 << 20;
constexpr quint32 kMostWords = 1 << 22;
constexpr quint32 kHuge = 500'000'000;

/// Another program that copies and pastes, on a connection of its own, from the event loop of the test.
class Program {
 public:
  enum class Manner { Plain, Piecewise, Huge, Silent, SilentMidway, Endless };

  Program() : connection_(xcb_connect(nullptr, nullptr)) {
    const xcb_screen_t* screen = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data;
    window_ = xcb_generate_id(connection_);
    const quint32 mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(connection_, XCB_COPY_FROM_PARENT, window_, screen->root, 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &mask);
    settle();
    notifier_ = std::make_unique<QSocketNotifier>(xcb_get_file_descriptor(connection_), QSocketNotifier::Read);
    QObject::connect(notifier_.get(), &QSocketNotifier::activated, [this] { handleAll(); });
  }
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;
  ~Program() {
    notifier_.reset();
    xcb_disconnect(connection_);
  }

  QList<PasteboardOffer::Form> forms;
  Manner manner = Manner::Plain;
  QByteArrayList asked;  ///< Types whose content somebody wanted.
  std::function<void()> beforeTargets, afterTargets, afterContent;

  xcb_window_t window() const { return window_; }
  xcb_connection_t* connection() const { return connection_; }
  xcb_atom_t atom(const QByteArray& name) {
    const auto cookie = xcb_intern_atom(connection_, 0, static_cast<quint16>(name.size()), name.constData());
    const XcbReply reply(xcb_intern_atom_reply(connection_, cookie, nullptr));
    return reply->atom;
  }
  void copy(const QByteArray& type, const QByteArray& bytes) {
    forms = {{QString::fromLatin1(type), bytes}};
    take();
  }
  void take() { own(window_); }
  void empty() { own(XCB_WINDOW_NONE); }
  /// Lets the server listen to this program alone.
  void grabServer() {
    xcb_grab_server(connection_);
    settle();
  }
  void ungrabServer() {
    xcb_ungrab_server(connection_);
    xcb_flush(connection_);
  }

  /// How many pieces somebody took of what is given piece by piece.
  int given() const { return pieceNumber_; }

  /// What the clipboard holds in several types, which are asked for at a time.
  QList<std::optional<QByteArray>> pasteMany(const QByteArrayList& types) {
    QList<quint32> pairs;
    for (const QByteArray& type : types) pairs << atom(type) << atom("MANY_" + QByteArray::number(pairs.size()));
    xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window_, atom("PASTED"), atom("ATOM_PAIR"), 32,
                        static_cast<quint32>(pairs.size()), pairs.constData());
    const QByteArray answer = paste("MULTIPLE").value_or(QByteArray());
    if (answer.size() != pairs.size() * qsizetype{sizeof(quint32)}) return {};
    std::memcpy(pairs.data(), answer.constData(), static_cast<std::size_t>(answer.size()));
    QList<std::optional<QByteArray>> found;
    for (qsizetype i = 1; i < pairs.size(); i += 2) {
      found << (pairs[i] == XCB_ATOM_NONE ? std::nullopt : fetched(pairs[i]));
    }
    return found;
  }

  /// Asks for what the clipboard holds in a type and takes nothing of it.
  void askFor(const QByteArray& type) {
    isDeaf_ = true;
    xcb_convert_selection(connection_, window_, atom("CLIPBOARD"), atom(type), atom("PASTED"), XCB_CURRENT_TIME);
    settle();
  }
  /// Whether that was answered; what was given is still there to be taken.
  bool isAnswered() const { return isPasted_; }
  /// Whether anybody wants news of this program's window being closed.
  bool isWatched() const {
    const XcbReply reply(
        xcb_get_window_attributes_reply(connection_, xcb_get_window_attributes(connection_, window_), nullptr));
    return (reply->all_event_masks & XCB_EVENT_MASK_STRUCTURE_NOTIFY) != 0;
  }

  /// What the clipboard holds in a type; absent where it is refused.
  std::optional<QByteArray> paste(const QByteArray& type) {
    begin(atom("PASTED"));
    xcb_convert_selection(connection_, window_, atom("CLIPBOARD"), atom(type), atom("PASTED"), XCB_CURRENT_TIME);
    settle();
    handleAll();
    EXPECT_TRUE(VirtualDisplay::waitUntil([this] { return isPasted_; })) << type.toStdString();
    return pasted_;
  }

 private:
  void own(xcb_window_t window) {
    xcb_set_selection_owner(connection_, window, atom("CLIPBOARD"), XCB_CURRENT_TIME);
    settle();
  }
  void settle() {
    const XcbReply reply(xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr));
    // What came along is handled from the event loop.
    if (notifier_)
      QMetaObject::invokeMethod(
          notifier_.get(), [this] { handleAll(); }, Qt::QueuedConnection);
  }
  void handleAll() {
    while (const XcbReply<xcb_generic_event_t> event{xcb_poll_for_event(connection_)}) handle(*event);
    xcb_flush(connection_);
  }
  void handle(const xcb_generic_event_t& event) {
    const int kind = event.response_type & 0x7f;
    if (kind == XCB_SELECTION_REQUEST) requested(reinterpret_cast<const xcb_selection_request_event_t&>(event));
    if (kind == XCB_SELECTION_NOTIFY) notified(reinterpret_cast<const xcb_selection_notify_event_t&>(event));
    if (kind == XCB_PROPERTY_NOTIFY) changed(reinterpret_cast<const xcb_property_notify_event_t&>(event));
  }

  void requested(const xcb_selection_request_event_t& event) {
    const bool isTargets = event.target == atom("TARGETS");
    if (isTargets && beforeTargets) beforeTargets();
    if (isTargets) {
      QList<quint32> atoms;
      for (const auto& form : forms) atoms.append(atom(form.type.toLatin1()));
      xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, event.requestor, event.property, XCB_ATOM_ATOM, 32,
                          static_cast<quint32>(atoms.size()), atoms.constData());
      answer(event, event.property);
      if (afterTargets) afterTargets();
      return;
    }
    for (const auto& form : forms) {
      if (atom(form.type.toLatin1()) != event.target) continue;
      asked.append(form.type.toLatin1());
      if (manner == Manner::Silent) return;
      give(event, form.bytes);
      answer(event, event.property);
      if (afterContent) afterContent();
      return;
    }
    answer(event, XCB_ATOM_NONE);
  }
  void give(const xcb_selection_request_event_t& event, const QByteArray& bytes) {
    if (manner == Manner::Plain) return put(event.requestor, event.property, event.target, bytes);
    const quint32 mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(connection_, event.requestor, XCB_CW_EVENT_MASK, &mask);
    const quint32 least = manner == Manner::Huge ? kHuge : 1;
    xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, event.requestor, event.property, atom("INCR"), 32, 1,
                        &least);
    taker_ = event;
    left_ = bytes;
    pieceNumber_ = 0;
  }
  void put(xcb_window_t window, xcb_atom_t property, xcb_atom_t type, const QByteArray& bytes) {
    xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window, property, type, 8,
                        static_cast<quint32>(bytes.size()), bytes.constData());
  }
  void answer(const xcb_selection_request_event_t& event, xcb_atom_t property) {
    xcb_selection_notify_event_t notice{};
    notice.response_type = XCB_SELECTION_NOTIFY;
    notice.requestor = event.requestor;
    notice.selection = event.selection;
    notice.target = event.target;
    notice.property = property;
    xcb_send_event(connection_, 0, event.requestor, 0, reinterpret_cast<const char*>(&notice));
    xcb_flush(connection_);
  }

  void changed(const xcb_property_notify_event_t& event) {
    if (event.window == window_) {
      if (isPiecewise_ && event.state == XCB_PROPERTY_NEW_VALUE && event.atom == into_) fetch();
      return;
    }
    const bool isTaken = event.state == XCB_PROPERTY_DELETE && event.window == taker_.requestor;
    if (!isTaken || (pieceNumber_++ > 0 && manner == Manner::SilentMidway)) return;
    constexpr qsizetype kPart = 60'000;
    const QByteArray part = left_.first(std::min(kPart, left_.size()));
    if (manner != Manner::Endless) left_ = left_.sliced(part.size());
    put(taker_.requestor, taker_.property, taker_.target, part);
  }
  void notified(const xcb_selection_notify_event_t& event) {
    if (event.property == XCB_ATOM_NONE || isDeaf_) {
      isPasted_ = true;
      return;
    }
    isPiecewise_ = false;
    fetch();
  }
  void begin(xcb_atom_t into) {
    into_ = into;
    isPasted_ = isPiecewise_ = isDeaf_ = false;
    pasted_.reset();
    pieces_.clear();
  }
  /// What was given in a property.
  std::optional<QByteArray> fetched(xcb_atom_t property) {
    begin(property);
    fetch();
    EXPECT_TRUE(VirtualDisplay::waitUntil([this] { return isPasted_; }));
    return pasted_;
  }
  void fetch() {
    const auto cookie = xcb_get_property(connection_, 1, window_, into_, XCB_GET_PROPERTY_TYPE_ANY, 0, kMostWords);
    const XcbReply reply(xcb_get_property_reply(connection_, cookie, nullptr));
    if (reply->type == atom("INCR")) {
      isPiecewise_ = true;
      return;
    }
    const QByteArray piece(static_cast<const char*>(xcb_get_property_value(reply.get())),
                           xcb_get_property_value_length(reply.get()));
    pieces_ += piece;
    if (isPiecewise_ && !piece.isEmpty()) return;
    isPiecewise_ = false;
    isPasted_ = true;
    pasted_ = pieces_;
  }

  xcb_connection_t* connection_;
  xcb_window_t window_ = XCB_WINDOW_NONE;
  std::unique_ptr<QSocketNotifier> notifier_;
  xcb_selection_request_event_t taker_{};
  QByteArray left_;
  int pieceNumber_ = 0;
  xcb_atom_t into_ = XCB_ATOM_NONE;  ///< The property in which something is given.
  bool isPasted_ = false;
  bool isPiecewise_ = false;
  bool isDeaf_ = false;
  std::optional<QByteArray> pasted_;
  QByteArray pieces_;
};

class X11Clipboard : public ::testing::Test {
 protected:
  void SetUp() override {
    QObject::connect(&pasteboard, &Pasteboard::changed, [this](PasteboardChange change) { changes.append(change); });
  }
  bool sees(const QList<PasteboardChange>& wanted) {
    const bool seen = VirtualDisplay::waitUntil([&] { return changes.size() >= wanted.size(); });
    return seen && std::exchange(changes, {}) == wanted;
  }
  /// What a reading of the latest change gives.
  PasteboardContent read(const QString& type, qint64 most = kMost) {
    std::optional<PasteboardContent> content;
    pasteboard.readContent(pasteboard.changeCount(), type, {most}, &context,
                           [&](const PasteboardContent& answer) { content = answer; });
    EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return content.has_value(); }));
    return content.value_or(PasteboardContent());
  }
  std::optional<QStringList> types() {
    std::optional<std::optional<QStringList>> found;
    pasteboard.readTypes(pasteboard.changeCount(), &context, [&](const auto& answer) { found = answer; });
    EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return found.has_value(); }));
    return found.value_or(std::nullopt);
  }

  QObject context;
  test::TestScheduler clock;
  X11Pasteboard pasteboard{clock};
  QList<PasteboardChange> changes;
};

QByteArray manyBytes(qsizetype size) {
  QByteArray bytes(size, Qt::Uninitialized);
  for (qsizetype i = 0; i < size; ++i) bytes[i] = static_cast<char>(i * 7 + i / 251);
  return bytes;
}

TEST_F(X11Clipboard, ReadsWhatAnotherProgramGives) {
  ASSERT_TRUE(pasteboard.capability());
  const struct {
    const char* what;
    Program::Manner manner;
    qsizetype size;
    qint64 most;
    End end;
  } cases[] = {
      {"some bytes", Program::Manner::Plain, 10, kMost, End::Whole},
      {"nothing", Program::Manner::Plain, 0, kMost, End::Whole},
      {"several pieces of one property", Program::Manner::Plain, 700'001, kMost, End::Whole},
      {"one property after the other", Program::Manner::Piecewise, 700'001, kMost, End::Whole},
      {"exactly the limit", Program::Manner::Plain, 100'001, 100'001, End::Whole},
      {"one more", Program::Manner::Plain, 100'002, 100'001, End::TooLarge},
      {"exactly the limit in pieces", Program::Manner::Piecewise, 100'001, 100'001, End::Whole},
      {"one more in pieces", Program::Manner::Piecewise, 100'002, 100'001, End::TooLarge},
      {"without an end", Program::Manner::Endless, 60'000, 5'000'000, End::TooLarge},
      {"half a gigabyte", Program::Manner::Huge, 60'000, kMost, End::TooLarge},
  };
  for (const auto& each : cases) {
    SCOPED_TRACE(each.what);
    Program program;
    program.manner = each.manner;
    const QByteArray bytes = manyBytes(each.size);
    program.copy("image/x-test", bytes);
    ASSERT_TRUE(sees({PasteboardChange::Taken}));
    EXPECT_EQ(types(), QStringList{u"image/x-test"_s});
    const PasteboardContent content = read(u"image/x-test"_s, each.most);
    EXPECT_EQ(content.end, each.end);
    EXPECT_EQ(content.bytes, each.end == End::Whole ? bytes : QByteArray());
    if (each.manner == Program::Manner::Huge) {
      EXPECT_LE(program.given(), 1) << "it is not fetched";
    }
    EXPECT_EQ(read(u"image/x-other"_s).end, End::Refused);
    program.empty();
    ASSERT_TRUE(sees({PasteboardChange::Cleared}));
  }
}

TEST_F(X11Clipboard, WaitsForNoPieceThatTheServerDoesNotGive) {
  Program program;
  bool isBusy = false;
  program.afterContent = [&] {
    program.grabServer();
    isBusy = true;
  };
  const QByteArray bytes = manyBytes(700'001);
  program.copy("image/x-test", bytes);
  ASSERT_TRUE(sees({PasteboardChange::Taken}));
  std::optional<PasteboardContent> content;
  pasteboard.readContent(pasteboard.changeCount(), u"image/x-test"_s, {kMost}, &context,
                         [&](const PasteboardContent& answer) { content = answer; });
  // Whoever waits for the server while it listens to another program would wait for ever, and so would this test.
  QSemaphore hasTurned;
  std::atomic<bool> isRescued = false;
  std::thread rescue([&] {
    if (hasTurned.tryAcquire(1, 5000)) return;
    isRescued = true;
    program.ungrabServer();
  });
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return isBusy; }));
  for (int turn = 0; turn < 10; ++turn) QCoreApplication::processEvents();
  hasTurned.release();
  rescue.join();
  EXPECT_FALSE(isRescued);
  EXPECT_FALSE(content.has_value());
  program.ungrabServer();
  ASSERT_TRUE(VirtualDisplay::waitUntil([&] { return content.has_value(); }));
  EXPECT_EQ(content->bytes, bytes);
}

TEST_F(X11Clipboard, GivesUpOnAnOwnerThatStalls) {
  for (const auto manner : {Program::Manner::Silent, Program::Manner::SilentMidway}) {
    Program program;
    program.manner = manner;
    program.copy("text/plain", manyBytes(200'000));
    ASSERT_TRUE(sees({PasteboardChange::Taken}));
    std::optional<PasteboardContent> content;
    pasteboard.readContent(pasteboard.changeCount(), u"text/plain"_s, {kMost}, &context,
                           [&](const PasteboardContent& answer) { content = answer; });
    ASSERT_TRUE(VirtualDisplay::waitUntil([&] { return !program.asked.isEmpty(); }));
    clock.advance(4);
    EXPECT_FALSE(content.has_value());
    ASSERT_TRUE(VirtualDisplay::waitUntil([&] {
      clock.advance(1);
      return content.has_value();
    }));
    EXPECT_EQ(content->end, End::TooSlow);
    program.empty();
    ASSERT_TRUE(sees({PasteboardChange::Cleared}));
  }
}

TEST_F(X11Clipboard, GivesUpOnAnOwnerThatDripsForEver) {
  Program program;
  program.manner = Program::Manner::Endless;
  program.copy("text/plain", "x");
  ASSERT_TRUE(sees({PasteboardChange::Taken}));
  std::optional<PasteboardContent> content;
  pasteboard.readContent(pasteboard.changeCount(), u"text/plain"_s, {kMost}, &context,
                         [&](const PasteboardContent& answer) { content = answer; });
  // A piece comes every second, so that it is never silent.
  for (int second = 0; second < 20; ++second) {
    ASSERT_FALSE(content.has_value()) << second;
    const int before = program.given();
    ASSERT_TRUE(VirtualDisplay::waitUntil([&] { return program.given() > before + 1; }));
    clock.advance(1);
  }
  ASSERT_TRUE(VirtualDisplay::waitUntil([&] { return content.has_value(); }));
  EXPECT_EQ(content->end, End::TooSlow);
}

TEST_F(X11Clipboard, TellsHowAnOwnerEnds) {
  auto program = std::make_unique<Program>();
  const quint64 before = pasteboard.changeCount();
  program->copy("text/plain", "a");
  ASSERT_TRUE(sees({PasteboardChange::Taken}));
  program->copy("text/plain", "b");
  ASSERT_TRUE(sees({PasteboardChange::Taken})) << "the same owner again";
  EXPECT_EQ(pasteboard.changeCount(), before + 2);
  EXPECT_FALSE(pasteboard.isEmpty());
  program->manner = Program::Manner::Silent;
  std::optional<PasteboardContent> content;
  pasteboard.readContent(pasteboard.changeCount(), u"text/plain"_s, {kMost}, &context,
                         [&](const PasteboardContent& answer) { content = answer; });
  ASSERT_TRUE(VirtualDisplay::waitUntil([&] { return !program->asked.isEmpty(); }));
  program.reset();
  ASSERT_TRUE(sees({PasteboardChange::OwnerGone}));
  ASSERT_TRUE(VirtualDisplay::waitUntil([&] { return content.has_value(); }));
  EXPECT_EQ(content->end, End::Changed);
  EXPECT_TRUE(pasteboard.isEmpty());
  EXPECT_EQ(types(), std::nullopt);
}

TEST_F(X11Clipboard, KnowsTheProgramThatCopied) {
  Program program;
  program.copy("text/plain", "a");
  ASSERT_TRUE(sees({PasteboardChange::Taken}));
  EXPECT_EQ(pasteboard.owner(), (PasteboardOwner{{}, {}, {}, ::getpid()}));
  constexpr char kClass[] = "vault\0Vault";
  xcb_change_property(program.connection(), XCB_PROP_MODE_REPLACE, program.window(), XCB_ATOM_WM_CLASS, XCB_ATOM_STRING,
                      8, sizeof kClass, kClass);
  program.take();
  ASSERT_TRUE(sees({PasteboardChange::Taken}));
  EXPECT_EQ(pasteboard.owner(), (PasteboardOwner{u"Vault"_s, u"vault"_s, {}, ::getpid()}));
  program.empty();
  ASSERT_TRUE(sees({PasteboardChange::Cleared}));
  EXPECT_EQ(pasteboard.owner(), PasteboardOwner());
}

TEST_F(X11Clipboard, AHandOverToAMarkedOwnerGivesNothingAway) {
  Program writer, vault;
  writer.forms = {{u"UTF8_STRING"_s, "plain"}};
  vault.forms = {{u"UTF8_STRING"_s, "secret"}, {u"x-kde-passwordManagerHint"_s, "secret"}};
  ClipboardReader reader(pasteboard);
  const auto nobody = [](const PasteboardOwner&) { return false; };
  int read = 0;
  bool isBefore = false;
  bool isDue = false;
  const auto handOver = [&](bool before) {
    if (before == isBefore && std::exchange(isDue, false)) vault.take();
  };
  writer.beforeTargets = [&] { handOver(true); };
  writer.afterTargets = [&] { handOver(false); };
  for (int round = 0; round < 500; ++round) {
    isBefore = round % 2 == 0;
    isDue = true;
    changes.clear();
    writer.take();
    ASSERT_TRUE(VirtualDisplay::waitUntil([&] { return !changes.isEmpty(); }));
    bool isDone = false;
    reader.read(pasteboard.changeCount(), nobody, [&](const auto& capture) {
      isDone = true;
      read += capture.has_value();
    });
    ASSERT_TRUE(VirtualDisplay::waitUntil([&] { return isDone && changes.size() == 2; })) << round;
  }
  EXPECT_EQ(read, 0);
  EXPECT_EQ(vault.asked, QByteArrayList());

  bool isDone = false;
  writer.take();
  ASSERT_TRUE(VirtualDisplay::waitUntil([&] { return changes.size() == 3; }));
  reader.read(pasteboard.changeCount(), nobody, [&](const auto& capture) {
    isDone = true;
    EXPECT_EQ(capture, ClipboardCapture::ofText(u"plain"_s)) << "where nobody comes between";
  });
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return isDone; }));
}

TEST_F(X11Clipboard, GivesOtherProgramsAndItselfWhatItPutThere) {
  Program program;
  const quint64 number = pasteboard.set(PasteboardOffer::text(u"grün"_s));
  ASSERT_TRUE(sees({PasteboardChange::Taken}));
  EXPECT_EQ(pasteboard.changeCount(), number);
  EXPECT_EQ(program.paste("UTF8_STRING"), "grün");
  EXPECT_EQ(program.paste("text/plain;charset=utf-8"), "grün");
  EXPECT_EQ(program.paste("STRING"), "gr\xfcn");
  EXPECT_EQ(program.paste("image/png"), std::nullopt);
  EXPECT_EQ(program.paste("TIMESTAMP")->size(), 4);
  EXPECT_EQ(read(u"UTF8_STRING"_s).bytes, "grün");
  EXPECT_EQ(program.pasteMany({"UTF8_STRING", "image/png", "MULTIPLE", "STRING"}),
            (QList<std::optional<QByteArray>>{"grün", std::nullopt, std::nullopt, "gr\xfcn"}));
  EXPECT_EQ(program.pasteMany({}), QList<std::optional<QByteArray>>()) << "nothing is asked for";
  EXPECT_TRUE(types()->contains(u"SAVE_TARGETS"_s)) << "a clipboard manager need not ask before the end";
  EXPECT_EQ(program.paste("SAVE_TARGETS"), "");

  const QByteArray large = manyBytes(3'000'001);
  pasteboard.set(PasteboardOffer::picture(large));
  ASSERT_TRUE(sees({PasteboardChange::Taken}));
  EXPECT_EQ(program.paste("image/png"), large);
  EXPECT_EQ(program.paste("UTF8_STRING"), std::nullopt) << "what was there before is gone";
  EXPECT_EQ(read(u"image/png"_s).bytes, large);

  program.copy("UTF8_STRING", "theirs");
  ASSERT_TRUE(sees({PasteboardChange::Taken}));
  EXPECT_EQ(read(u"UTF8_STRING"_s).bytes, "theirs");
  pasteboard.clear();
  ASSERT_TRUE(sees({PasteboardChange::Cleared}));
  EXPECT_TRUE(pasteboard.isEmpty());
}

TEST_F(X11Clipboard, GivesLargeThingsToSeveralAndGivesUpOnWhoStopsTaking) {
  const QByteArray large = manyBytes(1'000'001);
  pasteboard.set(PasteboardOffer::picture(large));
  ASSERT_TRUE(sees({PasteboardChange::Taken}));
  Program patient;
  Program idle;
  auto gone = std::make_unique<Program>();
  idle.askFor("image/png");
  gone->askFor("image/png");
  ASSERT_TRUE(VirtualDisplay::waitUntil([&] { return idle.isAnswered() && gone->isAnswered(); }));
  EXPECT_TRUE(idle.isWatched());
  gone.reset();
  EXPECT_EQ(patient.paste("image/png"), large);
  EXPECT_EQ(patient.pasteMany({"image/png", "UTF8_STRING", "image/png"}),
            (QList<std::optional<QByteArray>>{large, std::nullopt, large}))
      << "one of many is given piece by piece, too";
  EXPECT_FALSE(patient.isWatched()) << "what it does next wakes nobody";
  clock.advance(21);
  EXPECT_EQ(patient.paste("image/png"), large);
  EXPECT_FALSE(idle.isWatched());
  EXPECT_EQ(idle.paste("image/png"), large) << "it may ask again";

  // Each gets what it asked for, whatever is there by then.
  idle.askFor("image/png");
  pasteboard.set(PasteboardOffer::text(u"small"_s));
  EXPECT_EQ(patient.paste("UTF8_STRING"), "small");
}

/// A history over the clipboard, as the program has it.
class X11ClipboardHistory : public X11Clipboard {
 protected:
  void SetUp() override {
    X11Clipboard::SetUp();
    DockConfiguration config;
    config.clipboardEnabled = true;
    ActiveSets active;
    active.kinds.insert(QString(kind::clipboard));
    recorder.start(config, active);
  }
  QStringList kept() {
    bool isDone = false;
    history.load([&] { isDone = true; });
    EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return isDone && !recorder.isReading(); }));
    QStringList values;
    for (const auto& entry : history.items()) values << entry.value;
    return values;
  }

  QTemporaryDir folder;
  ClipboardHistory history{folder.path(), clock};
  ClipboardRecorder recorder{pasteboard, history};
};

TEST_F(X11ClipboardHistory, AProgramThatEndsRightAfterItCopied) {
  const QByteArray text(90'000, 'x');
  const struct {
    const char* what;
    Program::Manner manner;
    std::function<bool(const Program&)> isTime;  ///< To end.
    bool isKept;
  } cases[] = {
      {"before it was asked", Program::Manner::Plain, [](const Program&) { return true; }, false},
      {"before it gave anything", Program::Manner::Silent, [](const Program& each) { return !each.asked.isEmpty(); },
       false},
      {"while it gave", Program::Manner::SilentMidway, [](const Program& each) { return each.given() > 1; }, false},
      {"when all was read", Program::Manner::Piecewise, [this](const Program&) { return !kept().isEmpty(); }, true},
  };
  for (const auto& each : cases) {
    SCOPED_TRACE(each.what);
    history.clear();
    changes.clear();
    auto program = std::make_unique<Program>();
    program->manner = each.manner;
    program->copy("UTF8_STRING", text);
    ASSERT_TRUE(VirtualDisplay::waitUntil([&] { return each.isTime(*program); }));
    program.reset();
    ASSERT_TRUE(VirtualDisplay::waitUntil([&] { return changes.contains(PasteboardChange::OwnerGone); }));
    // What is half read is no entry, and what is none comes back to nobody.
    EXPECT_EQ(kept(), each.isKept ? QStringList{QString::fromLatin1(text)} : QStringList());
    EXPECT_EQ(pasteboard.isOwn(), each.isKept);
    Program other;
    EXPECT_EQ(other.paste("UTF8_STRING"), each.isKept ? std::optional(text) : std::nullopt);
  }
}

/// A clipboard manager, on a thread of its own: who hands over waits for it.
QByteArray savedByManager(Program& program, X11Pasteboard& pasteboard) {
  xcb_connection_t* connection = program.connection();
  const xcb_atom_t manager = program.atom("CLIPBOARD_MANAGER");
  const xcb_atom_t clipboard = program.atom("CLIPBOARD");
  const xcb_atom_t text = program.atom("UTF8_STRING");
  const xcb_atom_t property = program.atom("SAVED");
  const xcb_atom_t piecewise = program.atom("INCR");
  xcb_set_selection_owner(connection, program.window(), manager, XCB_CURRENT_TIME);
  const XcbReply settled(xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
  QByteArray saved;
  std::atomic<bool> isSaved = false;
  std::thread keeper([&] {
    xcb_selection_request_event_t asked{};
    bool isPiecewise = false;
    while (const XcbReply<xcb_generic_event_t> event{xcb_wait_for_event(connection)}) {
      const int kind = event->response_type & 0x7f;
      if (kind == XCB_SELECTION_REQUEST) {
        std::memcpy(&asked, event.get(), sizeof asked);
        xcb_convert_selection(connection, program.window(), clipboard, text, property, XCB_CURRENT_TIME);
        xcb_flush(connection);
      }
      const bool isAnswer = kind == XCB_SELECTION_NOTIFY;
      const bool isPiece = kind == XCB_PROPERTY_NOTIFY && isPiecewise &&
                           reinterpret_cast<const xcb_property_notify_event_t&>(*event).atom == property &&
                           reinterpret_cast<const xcb_property_notify_event_t&>(*event).state == XCB_PROPERTY_NEW_VALUE;
      if (!isAnswer && !isPiece) continue;
      const auto cookie =
          xcb_get_property(connection, 1, program.window(), property, XCB_GET_PROPERTY_TYPE_ANY, 0, kMostWords);
      const XcbReply reply(xcb_get_property_reply(connection, cookie, nullptr));
      const QByteArray piece(static_cast<const char*>(xcb_get_property_value(reply.get())),
                             xcb_get_property_value_length(reply.get()));
      if (isAnswer && reply->type == piecewise) {
        isPiecewise = true;
        continue;
      }
      saved += piece;
      if (isPiecewise && !piece.isEmpty()) continue;
      xcb_selection_notify_event_t notice{};
      notice.response_type = XCB_SELECTION_NOTIFY;
      notice.requestor = asked.requestor;
      notice.selection = asked.selection;
      notice.target = asked.target;
      notice.property = asked.property;
      xcb_send_event(connection, 0, asked.requestor, 0, reinterpret_cast<const char*>(&notice));
      xcb_flush(connection);
      break;
    }
    isSaved = true;
  });
  pasteboard.handOver();
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return isSaved.load(); }));
  keeper.join();
  return saved;
}

TEST_F(X11Clipboard, HandsWhatItOwnsToTheClipboardManager) {
  pasteboard.set(PasteboardOffer::text(u"kept"_s));
  ASSERT_TRUE(sees({PasteboardChange::Taken}));
  pasteboard.handOver();  // Nobody is there to take it.
  {
    Program manager;
    EXPECT_EQ(savedByManager(manager, pasteboard), "kept");
  }
  const QString much = QString(400'000, u'y');
  pasteboard.set(PasteboardOffer::text(much));
  Program manager;
  EXPECT_EQ(savedByManager(manager, pasteboard), much.toUtf8()) << "piece by piece";
}

TEST_F(X11Clipboard, AClipboardManagerThatHangsHoldsUpNothing) {
  pasteboard.set(PasteboardOffer::text(u"kept"_s));
  ASSERT_TRUE(sees({PasteboardChange::Taken}));
  Program manager;  // Its events are not looked at meanwhile.
  xcb_set_selection_owner(manager.connection(), manager.window(), manager.atom("CLIPBOARD_MANAGER"), XCB_CURRENT_TIME);
  EXPECT_EQ(manager.paste("UTF8_STRING"), "kept");
  pasteboard.handOver();
  EXPECT_TRUE(pasteboard.isOwn());
}

}  // namespace
}  // namespace tarnwick::testing
