#pragma once

#include <QPointer>
#include <deque>
#include <functional>

#include "clipboard/ports/Pasteboard.h"

namespace tarnwick::test {

/// A clipboard whose programs a test plays. Answers wait until the test lets them come.
class FakePasteboard final : public Pasteboard {
 public:
  /// What a program offers, in its order.
  struct Program {
    QString name;
    QList<PasteboardOffer::Form> forms;
    PasteboardOwner owner;
    QStringList refused;                                           ///< Types that it offers and does not give.
    PasteboardContent::End fault = PasteboardContent::End::Whole;  ///< How every reading of it ends.
  };

  QStringList asked;  ///< "NAME TYPE" of each content that a program was asked for.
  PasteboardOffer offered;
  int handedOver = 0;

  void copy(const Program& program) {
    begin(program);
    tell(PasteboardChange::Taken);
  }
  /// The program is there, and the news of it still on its way.
  void copySilently(const Program& program) {
    begin(program);
    untold_ = true;
  }
  void deliverNews() {
    if (std::exchange(untold_, false)) tell(PasteboardChange::Taken);
  }
  void empty(PasteboardChange why) {
    begin({});
    isEmpty_ = true;
    tell(why);
  }

  /// Lets one answer come; false where none waits.
  bool answerOne() {
    if (answers_.empty()) return false;
    const auto answer = std::move(answers_.front());
    answers_.pop_front();
    answer();
    return true;
  }
  void answerAll() {
    while (answerOne()) {
    }
  }

  quint64 changeCount() const override { return told_; }
  bool isEmpty() const override { return isEmpty_; }
  bool isOwn() const override { return isOwn_; }
  PasteboardOwner owner() override { return program_.owner; }

  void readTypes(quint64 change, QObject* context, Types done) override {
    later(context, [this, change, done] {
      if (change != count_) return done(std::nullopt);
      QStringList types;
      for (const auto& form : program_.forms) types.append(form.type);
      done(types);
    });
  }
  void readContent(quint64 change, const QString& type, const PasteboardLimits& limits, QObject* context,
                   Content done) override {
    if (change == count_) asked.append(program_.name + u' ' + type);
    later(context, [this, change, type, most = limits.bytes, done] { done(contentOf(change, type, most)); });
  }
  void confirm(quint64 change, QObject* context, Answer done) override {
    later(context, [this, change, done, guard = QPointer(context)] {
      deliverNews();
      if (guard) done(change == count_);
    });
  }
  quint64 set(const PasteboardOffer& offer) override {
    offered = offer;
    begin({QStringLiteral("ourselves"), offer.forms, {}, {}, {}});
    told_ = count_;
    isOwn_ = true;
    later(this, [this] { Q_EMIT changed(PasteboardChange::Taken); });
    return count_;
  }
  void clear() override { empty(PasteboardChange::Cleared); }
  void handOver() override { ++handedOver; }

 private:
  void begin(const Program& program) {
    program_ = program;
    isEmpty_ = isOwn_ = false;
    ++count_;
  }
  void tell(PasteboardChange change) {
    told_ = count_;
    Q_EMIT changed(change);
  }
  void later(QObject* context, std::function<void()> answer) {
    answers_.push_back([guard = QPointer(context), answer = std::move(answer)] {
      if (guard) answer();
    });
  }
  PasteboardContent contentOf(quint64 change, const QString& type, qint64 most) const {
    using End = PasteboardContent::End;
    if (change != count_) return {End::Changed, {}};
    if (program_.fault != End::Whole) return {program_.fault, {}};
    for (const auto& form : program_.forms) {
      if (form.type != type || program_.refused.contains(type)) continue;
      return form.bytes.size() > most ? PasteboardContent{End::TooLarge, {}}
                                      : PasteboardContent{End::Whole, form.bytes};
    }
    return {End::Refused, {}};
  }

  Program program_;
  quint64 count_ = 7;  ///< Of what is there.
  quint64 told_ = 7;   ///< Of what is known.
  bool isEmpty_ = true;
  bool isOwn_ = false;
  bool untold_ = false;
  std::deque<std::function<void()>> answers_;
};

}  // namespace tarnwick::test
