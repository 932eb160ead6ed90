#include "device/connexion.h"

#include <mutex>
#include <utility>
#include <vector>

#include "device/events.h"
#include "device/stop.h"
#include "device/transport.h"

namespace quorvantis::device {

/// One request, owned by its task in the queue, and destroyed with it, whether it ran or not.
struct Connexion::Pending {
  Pending(std::string itsIdentity, Request itsRequest)
      : identity(std::move(itsIdentity)), request(std::move(itsRequest)) {}

  const std::string identity;
  const Request request;
  Stop stop;
};

struct Connexion::State {
  explicit State(const Network& theNetwork) : network(theNetwork), transport(theNetwork) {}

  void takeTurn(const Pending& turn);
  /// Drops those whose task is gone. To be called with the mutex held.
  void forgetEnded() {
    std::erase_if(pending, [](const auto& request) { return request.expired(); });
  }

  const Network& network;
  std::mutex mutex;
  std::function<void(const std::string&)> finished;
  std::vector<std::weak_ptr<Pending>> pending;  // the first one may be in progress
  std::map<std::string, std::string> answers;
  Transport transport;  // used only by the settling thread

  std::optional<std::string> identity, url;
  bool encryption = false;
  std::string hashKey;
};

Connexion::Connexion(Device& device) : device_(device), state_(std::make_shared<State>(device.network)) {}

Connexion::~Connexion() {
  setFinished(nullptr);
  // All of them: the settling thread may be about to start the next one.
  const std::lock_guard lock(state_->mutex);
  for (const auto& request : state_->pending) {
    if (const auto turn = request.lock()) turn->stop.request();
  }
}

void Connexion::setFinished(std::function<void(const std::string& identity)> finished) {
  const std::lock_guard lock(state_->mutex);
  state_->finished.swap(finished);
}

void Connexion::setEncryption(bool encryption) {
  state_->encryption = encryption;
}

void Connexion::setHashKey(std::string key) {
  state_->hashKey = std::move(key);
}

void Connexion::setConnexionValue(std::optional<std::string> value) {
  state_->identity = std::move(value);
}

void Connexion::setConnexionUrl(std::optional<std::string> url) {
  state_->url = std::move(url);
}

void Connexion::send(std::optional<std::string> parameters) {
  device_.record.add(events::request(state_->identity, state_->url, parameters));
  Request request{state_->url.value_or(""), std::move(parameters).value_or(""), std::nullopt};
  if (state_->encryption) request.hashKey = state_->hashKey;
  const auto turn = std::make_shared<Pending>(state_->identity.value_or(""), std::move(request));
  {
    const std::lock_guard lock(state_->mutex);
    state_->forgetEnded();
    state_->pending.push_back(turn);
  }
  device_.queue.post([turn, state = std::weak_ptr(state_)] {
    if (const auto alive = state.lock()) alive->takeTurn(*turn);
  });
}

void Connexion::cancel() {
  const std::lock_guard lock(state_->mutex);
  state_->forgetEnded();
  if (state_->pending.empty()) return;
  if (const auto first = state_->pending.front().lock()) first->stop.request();
}

std::map<std::string, std::string> Connexion::answers() const {
  const std::lock_guard lock(state_->mutex);
  return state_->answers;
}

void Connexion::State::takeTurn(const Pending& turn) {
  std::optional<std::string> answer;
  if (!turn.stop.isRequested()) {
    network.beforeRequest();
    answer = transport.post(turn.request, turn.stop);
  }

  std::unique_lock lock(mutex);
  std::erase_if(pending, [&](const auto& request) { return request.lock().get() == &turn; });
  if (answer && !turn.stop.isRequested()) {  // cancelled requests fail even if an answer has arrived
    answers[turn.identity] = *std::move(answer);
  } else {
    answers.erase(turn.identity);
  }
  const auto tell = finished;
  lock.unlock();
  if (tell) tell(turn.identity);
}

}  // namespace quorvantis::device
