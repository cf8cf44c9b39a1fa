#include "platform/wayland/WaylandActivation.h"

#include "platform/wayland/WaylandQueue.h"

namespace tarnwick {

// Which click it belongs to is not said: compositors that want to know it do not give a dock's click the focus either.
QString WaylandActivation::token(const WaylandSession& session, const QString& application) {
  if (!session.activation()) return {};
  struct Answer {
    QString text;
    bool isThere = false;
  } answer;
  static constexpr xdg_activation_token_v1_listener kListener{
      .done = [](void* data, xdg_activation_token_v1*, const char* text) {
        *static_cast<Answer*>(data) = {QString::fromUtf8(text), true};
      }};
  WaylandQueue queue(session.display());
  WaylandOwned<xdg_activation_token_v1> token;
  {
    const WaylandQueue::Face<xdg_activation_v1> face(queue, session.activation());
    token.reset(xdg_activation_v1_get_activation_token(face.get()));
  }
  xdg_activation_token_v1_add_listener(token.get(), &kListener, &answer);
  if (!application.isEmpty()) xdg_activation_token_v1_set_app_id(token.get(), qUtf8Printable(application));
  xdg_activation_token_v1_commit(token.get());
  queue.waitUntil([&] { return answer.isThere; });
  return answer.text;
}

}  // namespace tarnwick
