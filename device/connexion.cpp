#include "device/connexion.h"

#include <deque>
#include <mutex>
#include <stop_token>
#include <utility>

#include "device/events.h"
#include "device/transport.h"

namespace quorvantis::device {

struct Connexion::State {
  explicit State(const Network& theNetwork) : network(theNetwork), transport(theNetwork) {}

  struct Pending {
    std::string identity;
    Request request;
    std::stop_source stop;
  };

  void takeTurn();

  const Network& network;
  std::mutex mutex;
  std::function<void(const std::string&)> finished;
  std::deque<Pending> pending;  // the first one may be on the wire
  std::map<std::string, std::string> answers;
  Transport transport;  // used by the settling thread alone

  std::optional<std::string> identity, url;
  bool encryption = false;
  std::string hashKey;
};

Connexion::Connexion(Device& device) : device_(device), state_(std::make_shared<State>(device.network)) {}

Connexion::~Connexion() {
  setFinished(nullptr);
  // Every one: the settling thread may be about to take the next one's turn.
  const std::lock_guard lock(state_->mutex);
  for (State::Pending& request : state_->pending) request.stop.request_stop();
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
  State::Pending pending{state_->identity.value_or(""),
                         {state_->url.value_or(""), std::move(parameters).value_or(""), std::nullopt},
                         {}};
  if (state_->encryption) pending.request.hashKey = state_->hashKey;
  {
    const std::lock_guard lock(state_->mutex);
    state_->pending.push_back(std::move(pending));
  }
  device_.queue.post([state = std::weak_ptr(state_)] {
    if (const auto alive = state.lock()) alive->takeTurn();
  });
}

void Connexion::cancel() {
  const std::lock_guard lock(state_->mutex);
  if (!state_->pending.empty()) state_->pending.front().stop.request_stop();
}

std::map<std::string, std::string> Connexion::answers() const {
  const std::lock_guard lock(state_->mutex);
  return state_->answers;
}

void Connexion::State::takeTurn() {
  std::unique_lock lock(mutex);
  const Request& request = pending.front().request;
  const std::stop_token stop = pending.front().stop.get_token();
  lock.unlock();

  std::optional<std::string> answer;
  if (!stop.stop_requested()) {
    network.beforeRequest();
    answer = transport.post(request, stop);
  }

  lock.lock();
  const std::string task = std::move(pending.front().identity);
  pending.pop_front();
  if (answer && !stop.stop_requested()) {  // whatever the wire has brought
    answers[task] = *std::move(answer);
  } else {
    answers.erase(task);
  }
  const auto tell = finished;
  lock.unlock();
  if (tell) tell(task);
}

}  // namespace quorvantis::device
