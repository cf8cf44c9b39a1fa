#include "platform/wayland/DataControl.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace tarnwick {
namespace {

/// The one for every compositor.
struct CommonDataControl {
  using Manager = ext_data_control_manager_v1;
  using Device = ext_data_control_device_v1;
  using Source = ext_data_control_source_v1;
  using Offer = ext_data_control_offer_v1;
  using DeviceListener = ext_data_control_device_v1_listener;
  using SourceListener = ext_data_control_source_v1_listener;
  using OfferListener = ext_data_control_offer_v1_listener;
  static constexpr auto device = ext_data_control_manager_v1_get_data_device;
  static constexpr auto source = ext_data_control_manager_v1_create_data_source;
  static constexpr auto select = ext_data_control_device_v1_set_selection;
  static constexpr auto give = ext_data_control_source_v1_offer;
  static constexpr auto receive = ext_data_control_offer_v1_receive;
  static constexpr auto listenToDevice = ext_data_control_device_v1_add_listener;
  static constexpr auto listenToSource = ext_data_control_source_v1_add_listener;
  static constexpr auto listenToOffer = ext_data_control_offer_v1_add_listener;
};

/// The one of wlroots.
struct WlrootsDataControl {
  using Manager = zwlr_data_control_manager_v1;
  using Device = zwlr_data_control_device_v1;
  using Source = zwlr_data_control_source_v1;
  using Offer = zwlr_data_control_offer_v1;
  using DeviceListener = zwlr_data_control_device_v1_listener;
  using SourceListener = zwlr_data_control_source_v1_listener;
  using OfferListener = zwlr_data_control_offer_v1_listener;
  static constexpr auto device = zwlr_data_control_manager_v1_get_data_device;
  static constexpr auto source = zwlr_data_control_manager_v1_create_data_source;
  static constexpr auto select = zwlr_data_control_device_v1_set_selection;
  static constexpr auto give = zwlr_data_control_source_v1_offer;
  static constexpr auto receive = zwlr_data_control_offer_v1_receive;
  static constexpr auto listenToDevice = zwlr_data_control_device_v1_add_listener;
  static constexpr auto listenToSource = zwlr_data_control_source_v1_add_listener;
  static constexpr auto listenToOffer = zwlr_data_control_offer_v1_add_listener;
};

template <class Protocol>
class DataControlOver final : public DataControl {
 public:
  DataControlOver(const WaylandSession& session, Scheduler& scheduler, Watcher& watcher,
                  WaylandOwned<typename Protocol::Manager> manager)
      : DataControl(session, scheduler, watcher), manager_(std::move(manager)) {}

  bool isThere() const override { return device_ != nullptr; }

  std::unique_ptr<Source> set(const QStringList& types) override {
    auto made = std::make_unique<Ours>(Protocol::source(manager_.get()), watcher(), types);
    Protocol::select(device_.get(), made->object());
    return made;
  }

  void clear() override { Protocol::select(device_.get(), nullptr); }

 protected:
  void begin(wl_seat* seat) override {
    static constexpr typename Protocol::DeviceListener kListener{
        .data_offer = [](void* data, Device*,
                         Object* offer) { of(data).coming_.push_back(std::make_unique<Theirs>(offer)); },
        .selection = [](void* data, Device*, Object* offer) { of(data).tell(of(data).take(offer)); },
        .finished = [](void* data, Device*) { of(data).end(); },
        .primary_selection = [](void* data, Device*, Object* offer) { of(data).take(offer); }};
    device_.reset(Protocol::device(manager_.get(), seat));
    Protocol::listenToDevice(device_.get(), &kListener, this);
  }

  void drop() override {
    coming_.clear();
    device_.reset();
  }

 private:
  using Device = typename Protocol::Device;
  using Object = typename Protocol::Offer;

  class Theirs final : public Offer {
   public:
    explicit Theirs(Object* offer) : offer_(offer) {
      static constexpr typename Protocol::OfferListener kListener{.offer = [](void* data, Object*, const char* type) {
        auto& types = static_cast<Theirs*>(data)->types_;
        if (types.size() <= kMostTypes) types.append(QString::fromUtf8(type));
      }};
      Protocol::listenToOffer(offer, &kListener, this);
    }

    Object* object() const { return offer_.get(); }
    void receive(const QString& type, const FileDescriptor& into) override {
      Protocol::receive(offer_.get(), type.toUtf8().constData(), into.number());
    }

   private:
    WaylandOwned<Object> offer_;
  };

  class Ours final : public Source {
   public:
    Ours(typename Protocol::Source* source, Watcher& watcher, const QStringList& types)
        : watcher_(watcher), source_(source) {
      static constexpr typename Protocol::SourceListener kListener{
          .send =
              [](void* data, typename Protocol::Source*, const char* type, int32_t into) {
                const auto* self = static_cast<Ours*>(data);
                self->watcher_.send(*self, QString::fromUtf8(type), FileDescriptor(into));
              },
          .cancelled =
              [](void* data, typename Protocol::Source*) {
                const auto* self = static_cast<Ours*>(data);
                self->watcher_.cancelled(*self);
              }};
      Protocol::listenToSource(source, &kListener, this);
      for (const QString& type : types) Protocol::give(source, type.toUtf8().constData());
    }

    typename Protocol::Source* object() const { return source_.get(); }

   private:
    Watcher& watcher_;
    WaylandOwned<typename Protocol::Source> source_;
  };

  static DataControlOver& of(void* data) { return *static_cast<DataControlOver*>(data); }

  /// What was announced by that name. Whatever else was is of no use to anybody.
  std::unique_ptr<Offer> take(Object* offer) {
    const auto found = std::ranges::find(coming_, offer, [](const auto& each) { return each->object(); });
    std::unique_ptr<Offer> taken;
    if (found != coming_.end()) taken = std::move(*found);
    coming_.clear();
    return taken;
  }

  WaylandOwned<typename Protocol::Manager> manager_;
  WaylandOwned<Device> device_;
  std::vector<std::unique_ptr<Theirs>> coming_;  ///< Announced, and not known yet of which selection.
};

}  // namespace

std::unique_ptr<DataControl> DataControl::bind(const WaylandSession& session, Scheduler& scheduler, Watcher& watcher) {
  std::unique_ptr<DataControl> made;
  if (auto common = session.bindDataControl())
    made = std::make_unique<DataControlOver<CommonDataControl>>(session, scheduler, watcher, std::move(common));
  else if (auto older = session.bindOlderDataControl())
    made = std::make_unique<DataControlOver<WlrootsDataControl>>(session, scheduler, watcher, std::move(older));
  if (made) made->beginWhereASeatIs();
  return made;
}

DataControl::DataControl(const WaylandSession& session, Scheduler& scheduler, Watcher& watcher)
    : session_(session), scheduler_(scheduler), watcher_(watcher) {
  connect(&session, &WaylandSession::seatChanged, this, &DataControl::end);
}

DataControl::~DataControl() = default;

void DataControl::beginWhereASeatIs() {
  if (!session_.seat()) return;
  knowsFirst_ = false;
  begun_ = scheduler_.reference();
  begin(session_.seat());
  // Some compositors say nothing at first where nothing is there, and the first copy would be taken for old.
  static constexpr wl_callback_listener kFirst{.done = [](void* data, wl_callback*, uint32_t) {
    auto* self = static_cast<DataControl*>(data);
    self->knowsFirst_ = true;
    self->first_.reset();
  }};
  first_.reset(wl_display_sync(session_.display()));
  wl_callback_add_listener(first_.get(), &kFirst, this);
  wl_display_flush(session_.display());
}

void DataControl::tell(std::unique_ptr<Offer> offer) {
  watcher_.selected(std::move(offer), std::exchange(knowsFirst_, true));
}

void DataControl::end() {
  first_.reset();
  const bool wasThere = isThere();
  drop();
  const double wait = std::max(0.0, begun_ + kBetween - scheduler_.reference());
  again_ = scheduler_.after(wait, [this] { beginWhereASeatIs(); });
  if (wasThere) watcher_.ended();
}

}  // namespace tarnwick
