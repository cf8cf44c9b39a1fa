#include "platform/linux/BrowserProcess.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QTimer>
#include <QUuid>
#include <utility>

#include "base/Background.h"
#include "base/ModuleLoader.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr int kPatienceMilliseconds = 2000;
constexpr QLatin1StringView kRemoved = "-removed-"_L1;

QString installedBrowser() { return ModuleLoader::find(u"tarnwick-browser"_s); }

BrowserFailure failureOf(int exit) {
  switch (static_cast<BrowserExit>(exit)) {
    case BrowserExit::Unloaded:
      return BrowserFailure::Unloaded;
    case BrowserExit::Elsewhere:
      return BrowserFailure::Elsewhere;
    case BrowserExit::Unsafe:
      return BrowserFailure::Unsafe;
    default:
      return BrowserFailure::Unanswered;
  }
}

/// It ends by itself when its line is closed. Nobody waits for that.
void letGo(std::unique_ptr<QProcess> process) {
  if (!process) return;
  process->disconnect();
  if (process->state() == QProcess::NotRunning) {
    process.release()->deleteLater();
    return;
  }
  QProcess* left = process.release();
  QObject::connect(left, &QProcess::finished, left, &QObject::deleteLater);
  left->closeWriteChannel();
  QTimer::singleShot(kPatienceMilliseconds, left, &QProcess::kill);
}

}  // namespace

class BrowserProcess::Reading final : public BrowserReading {
 public:
  Reading(BrowserProcess& owner, const QStringList& arguments, Done done) : owner_(owner), done_(std::move(done)) {
    owner_.reading_ = this;
    // Never inside the call that asks for it.
    start_ = owner_.scheduler_.after(0, [this, arguments] { start(arguments); });
  }
  ~Reading() override {
    if (owner_.reading_ == this) owner_.reading_ = nullptr;
    letGo(std::move(process_));
  }

  void kill() {
    if (process_) process_->kill();
  }

 private:
  void start(const QStringList& arguments) {
    const QString program = owner_.setup_.find();
    if (program.isEmpty()) return end(BrowserFailure::Missing);
    if (owner_.signIn_) return end(BrowserFailure::Elsewhere);
    process_ = std::make_unique<QProcess>();
    process_->setProcessEnvironment(owner_.setup_.environment);
    process_->setStandardErrorFile(QProcess::nullDevice());
    QObject::connect(process_.get(), &QProcess::readyReadStandardOutput, process_.get(), [this] { take(); });
    QObject::connect(process_.get(), &QProcess::finished, process_.get(),
                     [this](int exit, QProcess::ExitStatus status) {
                       take();
                       if (status == QProcess::NormalExit && exit == static_cast<int>(BrowserExit::Answered))
                         end(text_);
                       else
                         end(status == QProcess::NormalExit ? failureOf(exit) : BrowserFailure::Unanswered);
                     });
    QObject::connect(process_.get(), &QProcess::errorOccurred, process_.get(), [this](QProcess::ProcessError error) {
      if (error == QProcess::FailedToStart) end(BrowserFailure::Missing);
    });
    deadline_ = owner_.scheduler_.after(BrowserLimits::seconds, [this] { end(BrowserFailure::Unloaded); });
    process_->start(program, arguments);
  }
  void take() {
    if (!done_) return;
    text_ += process_->read(BrowserLimits::largestText + 1 - text_.size());
    if (text_.size() > BrowserLimits::largestText) end(BrowserFailure::Unanswered);
  }
  void end(BrowserOutcome outcome) {
    deadline_.reset();
    letGo(std::move(process_));
    if (const Done done = std::exchange(done_, nullptr)) done(std::move(outcome));
  }

  BrowserProcess& owner_;
  Done done_;
  std::unique_ptr<QProcess> process_;
  QByteArray text_;
  JobHandle start_;
  JobHandle deadline_;
};

BrowserProcess::BrowserProcess(Setup setup, Scheduler& scheduler) : setup_(std::move(setup)), scheduler_(scheduler) {
  if (!setup_.find) setup_.find = installedBrowser;
}

BrowserProcess::~BrowserProcess() { letGo(std::move(signIn_)); }

bool BrowserProcess::isInstalled() const { return !setup_.find().isEmpty(); }

std::unique_ptr<BrowserReading> BrowserProcess::read(const QUrl& home, Done done) {
  return std::make_unique<Reading>(*this, QStringList{u"read"_s, home.toString(QUrl::FullyEncoded), setup_.folder},
                                   std::move(done));
}

void BrowserProcess::showSignIn(const QUrl& home) {
  const QString program = setup_.find();
  if (signIn_ || program.isEmpty()) return;
  // Two programs must not write into one session.
  if (reading_) reading_->kill();
  signIn_ = std::make_unique<QProcess>();
  signIn_->setProcessEnvironment(setup_.environment);
  signIn_->setStandardErrorFile(QProcess::nullDevice());
  signIn_->setStandardOutputFile(QProcess::nullDevice());
  const auto gone = [this] { letGo(std::move(signIn_)); };
  QObject::connect(signIn_.get(), &QProcess::finished, signIn_.get(), gone);
  QObject::connect(
      signIn_.get(), &QProcess::errorOccurred, signIn_.get(),
      [gone](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart) gone();
      },
      Qt::QueuedConnection);
  signIn_->start(program, {u"sign-in"_s, home.toString(QUrl::FullyEncoded), setup_.folder, setup_.title});
}

bool BrowserProcess::forget() {
  if (reading_) reading_->kill();
  if (signIn_) signIn_->kill();
  const QFileInfo kept(setup_.folder);
  // Out of the way at once; what a browser keeps is many files, and one that was just killed may have left another.
  const bool isGone = !kept.exists() || QDir().rename(setup_.folder, setup_.folder + kRemoved +
                                                                         QUuid::createUuid().toString(QUuid::Id128));
  QDir beside = kept.dir();
  const QStringList doomed = beside.entryList({kept.fileName() + kRemoved + u'*'}, QDir::Dirs | QDir::Hidden);
  if (doomed.isEmpty()) return isGone;
  Background::run(Background::Lane::Patient, [beside, doomed] {
    for (const QString& each : doomed) QDir(beside.filePath(each)).removeRecursively();
  });
  return isGone;
}

}  // namespace tarnwick
