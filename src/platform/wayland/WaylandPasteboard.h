#pragma once

#include <list>
#include <memory>
#include <vector>

#include "base/Scheduler.h"
#include "clipboard/ports/Pasteboard.h"
#include "desktop/ClientWindows.h"
#include "platform/wayland/PipeTransfers.h"
#include "platform/wayland/WaylandSession.h"

namespace tarnwick {

/// The clipboard through data control, which tells of every change, with or without a window of ours. Types and content
/// come from the same offer, so that no other program is ever asked. Which program copied is not told: it is taken for
/// that of the window that is active when the news comes. Why the clipboard is empty is not told either.
class WaylandPasteboard final : public Pasteboard {
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
  class Offer;
  class Source;
  struct Question;

  void offered(zwlr_data_control_offer_v1* offer);
  void selected(zwlr_data_control_offer_v1* offer);
  void finished();
  void send(const PasteboardOffer& offer, const QString& type, FileDescriptor into);
  void ended(const Source* source);
  void endReadings();
  void sweep();

  const WaylandSession& session_;
  const ClientWindows& windows_;
  Scheduler& scheduler_;
  WaylandOwned<zwlr_data_control_manager_v1> manager_;
  WaylandOwned<zwlr_data_control_device_v1> device_;
  std::vector<std::unique_ptr<Offer>> coming_;  ///< Announced, and not what is on the clipboard yet.
  std::unique_ptr<Offer> offer_;
  std::vector<std::unique_ptr<Source>> sources_;  ///< The latest is ours to give.
  std::vector<std::unique_ptr<PipeReading>> readings_;
  std::vector<std::unique_ptr<PipeWriting>> writings_;
  std::list<Question> questions_;
  PasteboardOwner owner_;
  quint64 count_ = 0;
  quint64 claims_ = 0;
  bool isClaiming_ = false;  ///< We put something there and have not heard back.
  bool knowsFirst_ = false;  ///< Whether what was there at the start has been told.
  WaylandOwned<wl_callback> first_;
  WaylandOwned<wl_callback> claimed_;  ///< Comes when we should have heard of our latest claim.
};

}  // namespace tarnwick
