#include "apns/http2_session.h"

#include <nghttp2/nghttp2.h>

#include <algorithm>
#include <array>
#include <new>
#include <optional>
#include <unordered_map>
#include <utility>
#include <vector>

#include "apns/effort.h"
#include "apns/uuid.h"
#include "base/c_handle.h"
#include "json/write.h"

namespace quorvantis::apns {
namespace {

using Session = base::CHandle<nghttp2_session, nghttp2_session_del>;
using Callbacks = base::CHandle<nghttp2_session_callbacks, nghttp2_session_callbacks_del>;
using Options = base::CHandle<nghttp2_option, nghttp2_option_del>;

constexpr std::size_t kMostOutput = std::size_t{32} * 1024;  // taken at once
constexpr std::size_t kUsualWindow = 65'535;                 // of a connection, RFC 9113, section 6.9.2
/// nghttp2 opens it again when half of it was used: the other half holds a payload for each stream.
constexpr std::size_t kWideWindow = std::size_t{2} * Http2Session::kMostStreams * 4096;
constexpr std::size_t kOwnBytes = std::size_t{32} * 1024;  // for headers, besides what the pool has
/// What a stream costs before anything of its request is kept.
constexpr std::size_t kStreamBytes = 1024;
/// A longer list of headers is not read to its end.
constexpr std::size_t kMostUnpackedBytes = 2 * Request::kMostHeaderBytes;
/// How far to read beyond the limit: common clients look for an answer only after they have sent everything.
constexpr std::size_t kMostReadBytes = std::size_t{4} * 1024 * 1024;

/// A value that changes with each answer must not evict others from the compression table.
constexpr std::uint8_t kNeverAgain = NGHTTP2_NV_FLAG_NO_INDEX;

std::string_view text(const std::uint8_t* bytes, std::size_t size) {
  return {reinterpret_cast<const char*>(bytes), size};
}

/// nghttp2 takes names and values without const, but does not change them.
nghttp2_nv field(std::string_view name, std::string_view value, std::uint8_t flags = NGHTTP2_NV_FLAG_NONE) {
  const auto bytes = [](std::string_view of) {
    return reinterpret_cast<std::uint8_t*>(const_cast<char*>(of.data()));
  };
  return {bytes(name), bytes(value), name.size(), value.size(), flags};
}

bool isRequest(const nghttp2_frame* frame) {
  return frame->hd.type == NGHTTP2_HEADERS && frame->headers.cat == NGHTTP2_HCAT_REQUEST;
}

bool ends(const nghttp2_frame* frame) {
  return (frame->hd.flags & NGHTTP2_FLAG_END_STREAM) != 0;
}

}  // namespace

struct Http2Session::State {
  struct Exchange {
    Request request;
    std::size_t kept = kStreamBytes;  ///< from the budget
    std::size_t unread = 0;           ///< of the body, by HTTP/2's flow control
    bool handedOver = false;
    bool received = false;  ///< to its end
    std::string body;       ///< of the answer
    std::size_t sent = 0;
  };

  State(Owner& given, MemoryPool& shared);
  ~State() {
    if (isWide) pool.give(kWideWindow - kUsualWindow);
  }
  State(const State&) = delete;
  State& operator=(const State&) = delete;

  int begin(Stream stream);
  int addHeader(Stream stream, Exchange& exchange, std::string_view name, std::string_view value);
  void addBody(Stream stream, Exchange& exchange, std::string_view bytes);
  int refuse(Stream stream, std::uint32_t code);
  void forget(Exchange& exchange);
  void end(Stream stream);
  void receivedFrame(const nghttp2_frame* frame);
  void handOver(Stream stream, Exchange& exchange);
  void sentFrame(const nghttp2_frame* frame);
  void part(std::string_view reason, Stream last);
  void sayGoodBye();
  Exchange* find(Stream stream) {
    const auto found = exchanges.find(stream);
    return found == exchanges.end() ? nullptr : &found->second;
  }

  Owner& owner;
  MemoryPool& pool;
  Budget budget;
  bool isWide = false;
  FrameMeter meter;
  Allowance allowance;
  Session session;
  std::unordered_map<Stream, Exchange> exchanges;
  struct Parting {
    std::string reason;
    Stream last;
  };
  std::optional<Parting>
      parting;  ///< sent after the last answer: some clients read no answers after a GOAWAY
  bool isParting = false;
  Stream newest = 0;   ///< the last one handed over
  Stream highest = 0;  ///< of those handed over before
};

Http2Session::State::State(Owner& given, MemoryPool& shared)
    : owner(given), pool(shared), budget(shared, kOwnBytes) {
  nghttp2_session_callbacks* made = nullptr;
  if (nghttp2_session_callbacks_new(&made) != 0) throw std::bad_alloc();
  const Callbacks callbacks(made);
  nghttp2_session_callbacks_set_on_begin_headers_callback(
      made, [](nghttp2_session*, const nghttp2_frame* frame, void* self) {
        return isRequest(frame) ? static_cast<State*>(self)->begin(frame->hd.stream_id) : 0;
      });
  nghttp2_session_callbacks_set_on_header_callback(
      made, [](nghttp2_session*, const nghttp2_frame* frame, const std::uint8_t* name, std::size_t nameSize,
               const std::uint8_t* value, std::size_t valueSize, std::uint8_t, void* self) {
        auto* const state = static_cast<State*>(self);
        auto* const exchange = state->find(frame->hd.stream_id);
        if (exchange == nullptr || !isRequest(frame)) return 0;
        return state->addHeader(frame->hd.stream_id, *exchange, text(name, nameSize), text(value, valueSize));
      });
  nghttp2_session_callbacks_set_on_data_chunk_recv_callback(
      made, [](nghttp2_session* of, std::uint8_t, Stream stream, const std::uint8_t* bytes, std::size_t size,
               void* self) {
        auto* const state = static_cast<State*>(self);
        auto* const exchange = state->find(stream);
        if (exchange == nullptr || exchange->handedOver) {
          nghttp2_session_consume(of, stream, size);
        } else {
          state->addBody(stream, *exchange, text(bytes, size));
        }
        return 0;
      });
  nghttp2_session_callbacks_set_on_frame_recv_callback(
      made, [](nghttp2_session*, const nghttp2_frame* frame, void* self) {
        static_cast<State*>(self)->receivedFrame(frame);
        return 0;
      });
  nghttp2_session_callbacks_set_on_frame_send_callback(
      made, [](nghttp2_session*, const nghttp2_frame* frame, void* self) {
        static_cast<State*>(self)->sentFrame(frame);
        return 0;
      });
  nghttp2_session_callbacks_set_on_stream_close_callback(
      made, [](nghttp2_session*, Stream stream, std::uint32_t, void* self) {
        static_cast<State*>(self)->end(stream);
        return 0;
      });

  nghttp2_option* chosen = nullptr;
  if (nghttp2_option_new(&chosen) != 0) throw std::bad_alloc();
  const Options options(chosen);
  nghttp2_option_set_no_auto_window_update(chosen, 1);
  nghttp2_session* opened = nullptr;
  if (nghttp2_session_server_new2(&opened, made, this, chosen) != 0) throw std::bad_alloc();
  session.reset(opened);
  // Without priorities nghttp2 forgets a stream when it is closed.
  const std::array settings = {
      nghttp2_settings_entry{NGHTTP2_SETTINGS_MAX_CONCURRENT_STREAMS, kMostStreams},
      nghttp2_settings_entry{NGHTTP2_SETTINGS_MAX_HEADER_LIST_SIZE, Request::kMostHeaderBytes},
      nghttp2_settings_entry{NGHTTP2_SETTINGS_NO_RFC7540_PRIORITIES, 1}};
  if (nghttp2_submit_settings(opened, NGHTTP2_FLAG_NONE, settings.data(), settings.size()) != 0)
    throw std::bad_alloc();
}

int Http2Session::State::begin(Stream stream) {
  if (!budget.take(kStreamBytes)) return refuse(stream, NGHTTP2_REFUSED_STREAM);
  exchanges.try_emplace(stream);
  owner.began(stream);
  return 0;
}

int Http2Session::State::addHeader(Stream stream, Exchange& exchange, std::string_view name,
                                   std::string_view value) {
  const std::size_t kept = exchange.request.addHeader(name, value);
  if (exchange.request.headerBytes() > kMostUnpackedBytes) return refuse(stream, NGHTTP2_ENHANCE_YOUR_CALM);
  if (!budget.take(kept)) return refuse(stream, NGHTTP2_REFUSED_STREAM);
  exchange.kept += kept;
  return 0;
}

void Http2Session::State::addBody(Stream stream, Exchange& exchange, std::string_view bytes) {
  // What is kept is not read yet, so that a connection never holds more of its bodies than its window.
  const std::size_t before = exchange.request.body().size();
  exchange.request.addBody(bytes);
  const std::size_t kept = exchange.request.body().size() - before;
  exchange.unread += kept;
  nghttp2_session_consume_stream(session.get(), stream, bytes.size());
  nghttp2_session_consume_connection(session.get(), bytes.size() - kept);
  if (exchange.request.bodyBytes() > kMostReadBytes) handOver(stream, exchange);
}

/// nghttp2 drops the rest of its headers.
int Http2Session::State::refuse(Stream stream, std::uint32_t code) {
  if (auto* const exchange = find(stream)) exchange->handedOver = true;
  nghttp2_submit_rst_stream(session.get(), NGHTTP2_FLAG_NONE, stream, code);
  return NGHTTP2_ERR_TEMPORAL_CALLBACK_FAILURE;
}

/// Keeps nothing of the request but its stream.
void Http2Session::State::forget(Exchange& exchange) {
  nghttp2_session_consume_connection(session.get(), std::exchange(exchange.unread, 0));
  budget.give(std::exchange(exchange.kept, kStreamBytes) - kStreamBytes);
  exchange.request = Request();
}

void Http2Session::State::end(Stream stream) {
  auto* const exchange = find(stream);
  if (exchange == nullptr) return;
  forget(*exchange);
  budget.give(kStreamBytes);
  exchanges.erase(stream);
  owner.closed(stream);
}

void Http2Session::State::receivedFrame(const nghttp2_frame* frame) {
  if (frame->hd.type != NGHTTP2_HEADERS && frame->hd.type != NGHTTP2_DATA) return;
  const Stream stream = frame->hd.stream_id;
  auto* const exchange = find(stream);
  if (exchange == nullptr) return;
  if (!ends(frame)) return;
  exchange->received = true;
  if (!exchange->handedOver) handOver(stream, *exchange);
}

void Http2Session::State::handOver(Stream stream, Exchange& exchange) {
  exchange.handedOver = true;
  allowance.earn();
  if (!isParting) {
    highest = std::max(highest, std::exchange(newest, stream));
    owner.requested(stream, exchange.request);
  }
  forget(exchange);
}

/// The answer came before the request's end: the rest of the request is not read.
void Http2Session::State::sentFrame(const nghttp2_frame* frame) {
  if ((frame->hd.type != NGHTTP2_HEADERS && frame->hd.type != NGHTTP2_DATA) || !ends(frame)) return;
  const auto* const exchange = find(frame->hd.stream_id);
  if (exchange != nullptr && !exchange->received)
    nghttp2_submit_rst_stream(session.get(), NGHTTP2_FLAG_NONE, frame->hd.stream_id, NGHTTP2_NO_ERROR);
}

void Http2Session::State::part(std::string_view reason, Stream last) {
  if (!isParting) parting = {std::string(reason), last};
  isParting = true;
}

void Http2Session::State::sayGoodBye() {
  const std::string data = json::write(json::Dictionary{{"reason", parting->reason}});
  nghttp2_submit_goaway(session.get(), NGHTTP2_FLAG_NONE, parting->last, NGHTTP2_NO_ERROR,
                        reinterpret_cast<const std::uint8_t*>(data.data()), data.size());
  parting.reset();
}

Http2Session::Http2Session(Owner& owner, MemoryPool& pool) : state_(std::make_unique<State>(owner, pool)) {}
Http2Session::~Http2Session() = default;

bool Http2Session::receive(std::string_view bytes) {
  if (!state_->allowance.spend(state_->meter.weigh(bytes), Allowance::Clock::now())) {
    nghttp2_session_terminate_session(state_->session.get(), NGHTTP2_ENHANCE_YOUR_CALM);
    return true;
  }
  const auto taken = nghttp2_session_mem_recv(
      state_->session.get(), reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
  return taken == static_cast<ssize_t>(bytes.size());
}

std::string Http2Session::takeOutput() {
  std::string output;
  while (output.size() < kMostOutput) {
    const std::uint8_t* bytes = nullptr;
    const auto size = nghttp2_session_mem_send(state_->session.get(), &bytes);
    if (size < 0 || (size == 0 && !state_->parting)) break;
    if (size == 0) state_->sayGoodBye();
    output.append(text(bytes, static_cast<std::size_t>(size)));
  }
  return output;
}

void Http2Session::trust() {
  if (state_->isWide || !state_->pool.take(kWideWindow - kUsualWindow, state_->pool.size() / 2)) return;
  state_->isWide = true;
  nghttp2_session_set_local_window_size(state_->session.get(), NGHTTP2_FLAG_NONE, 0,
                                        std::int32_t{kWideWindow});
}

void Http2Session::answer(Stream stream, const Answer& answer) {
  auto* const exchange = state_->find(stream);
  if (exchange == nullptr) return;
  const std::string status = std::to_string(answer.status);
  const std::string unique = answer.reason.empty() ? makeUuid() : "";
  std::vector<nghttp2_nv> fields = {field(":status", status), field("apns-id", answer.id, kNeverAgain)};
  if (answer.reason.empty()) {
    fields.push_back(field("apns-unique-id", unique, kNeverAgain));
    nghttp2_submit_response(state_->session.get(), stream, fields.data(), fields.size(), nullptr);
    return;
  }
  fields.push_back(field("content-type", "application/json"));
  exchange->body = bodyOf(answer);
  nghttp2_data_provider provider{};
  provider.source.ptr = exchange;
  provider.read_callback = [](nghttp2_session*, Stream, std::uint8_t* into, std::size_t size,
                              std::uint32_t* flags, nghttp2_data_source* source, void*) -> ssize_t {
    auto& from = *static_cast<State::Exchange*>(source->ptr);
    const std::size_t count = from.body.copy(reinterpret_cast<char*>(into), size, from.sent);
    from.sent += count;
    if (from.sent == from.body.size()) *flags |= NGHTTP2_DATA_FLAG_EOF;
    return static_cast<ssize_t>(count);
  };
  nghttp2_submit_response(state_->session.get(), stream, fields.data(), fields.size(), &provider);
}

const Request* Http2Session::unfinished(Stream stream) const {
  const auto* const exchange = state_->find(stream);
  return exchange == nullptr || exchange->handedOver ? nullptr : &exchange->request;
}

void Http2Session::goAway(std::string_view reason) {
  state_->part(reason, nghttp2_session_get_last_proc_stream_id(state_->session.get()));
}

void Http2Session::goAwayBefore(Stream stream, std::string_view reason) {
  nghttp2_submit_rst_stream(state_->session.get(), NGHTTP2_FLAG_NONE, stream, NGHTTP2_REFUSED_STREAM);
  state_->part(reason, state_->highest);
}

bool Http2Session::isOver() const {
  return nghttp2_session_want_read(state_->session.get()) == 0 &&
         nghttp2_session_want_write(state_->session.get()) == 0;
}

}  // namespace quorvantis::apns
