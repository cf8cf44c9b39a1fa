#pragma once

#include <list>
#include <memory>
#include <vector>

#include "base/Scheduler.h"
#include "clipboard/ports/Pasteboard.h"
#include "desktop/ClientWindows.h"
#include "platform/wayland/DataControl.h"
#include "platform/wayland/PipeTransfers.h"

namespace tarnwick {

/// The clipboard through data control, which tells of every change, with or without a window of ours. Types and content
/// come from the same offer, so that no other program is ever asked. Which program copied is not told: it is taken for
/// that of the window that is active when the news comes. Why the clipboard is empty is not told either.
class WaylandPasteboard final : public Pasteboard, private DataControl::Watcher {
  Q_OBJECT
 public:
  /// What it is made with must outlive it.
  WaylandPasteboard(const WaylandSession& session, const ClientWindows& windows, Scheduler& scheduler);
  ~WaylandPasteboard() override;

  Capability capability() const override;
  Capability endOfOwners() const override;
  Capability owners() const override;
  quint64 changeCount() const override { return count_; }
  bool isEmpty() const override { return !offer_ && !isClaiming_; }
  bool isOwn() const override;
  void readTypes(quint64 change, QObject* context, Types done) override;
  void readContent(quint64 change, const QString& type, const PasteboardLimits& limits, QObject* context,
                   Content done) override;
  void confirm(quint64 change, QObject* context, Answer done) override;
  PasteboardOwner owner() override { return owner_; }
  quint64 set(const PasteboardOffer& offer) override;
  void clear() override;

 private:
  struct Given;
  struct Question;

  void selected(std::unique_ptr<DataControl::Offer> offer, bool isNews) override;
  void ended() override;
  void send(const DataControl::Source& source, const QString& type, FileDescriptor into) override;
  void cancelled(const DataControl::Source& source) override;
  bool isThere() const { return control_ && control_->isThere(); }
  void endReadings();
  void sweep();

  const WaylandSession& session_;
  const ClientWindows& windows_;
  Scheduler& scheduler_;
  std::unique_ptr<DataControl> control_;  ///< Null where the compositor has no such thing.
  std::unique_ptr<DataControl::Offer> offer_;
  std::vector<Given> given_;  ///< The latest is ours to give.
  std::vector<std::unique_ptr<PipeReading>> readings_;
  std::vector<std::unique_ptr<PipeWriting>> writings_;
  std::list<Question> questions_;
  PasteboardOwner owner_;
  quint64 count_ = 0;
  quint64 claims_ = 0;
  bool isClaiming_ = false;            ///< We put something there and have not heard back.
  WaylandOwned<wl_callback> claimed_;  ///< Comes when we should have heard of our latest claim.
};

}  // namespace tarnwick
