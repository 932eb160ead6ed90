#include "server/http_wire.h"

#include <algorithm>
#include <array>
#include <boost/beast/core/buffers_to_string.hpp>
#include <boost/beast/http/buffer_body.hpp>
#include <boost/beast/http/chunk_encode.hpp>
#include <boost/beast/http/empty_body.hpp>
#include <boost/beast/http/error.hpp>
#include <boost/beast/http/parser.hpp>
#include <boost/beast/http/serializer.hpp>
#include <cstdint>
#include <limits>
#include <optional>
#include <string_view>

#include "base/hexadecimal.h"
#include "base/utf8.h"

namespace quorvantis::server {
namespace {

namespace beast = boost::beast;
namespace http = beast::http;
using std::chrono::milliseconds;
using Clock = Connection::Clock;

constexpr std::size_t kReadAtOnce = std::size_t{16} * 1024;   // a TLS record
constexpr std::size_t kWriteAtOnce = std::size_t{64} * 1024;  // what even a slow client reads in time
constexpr std::size_t kMostTargetBytes = std::size_t{8} * 1024;
constexpr std::size_t kMostLineBytes = kMostTargetBytes + 256;  // with the method and the version
constexpr std::size_t kMostHeadBytes = std::size_t{64} * 1024;  // also of a chunk's head, or a trailer
constexpr auto kLinger = milliseconds(1000);
constexpr std::size_t kMostLingerBytes = std::size_t{4} * 1024 * 1024;

constexpr const char* kUnclearLength =
    "the length of the body is not clear: send one Content-Length, or \"Transfer-Encoding: chunked\"";

std::string sizeOf(std::size_t bytes) {
  const std::size_t kibibytes = bytes / 1024;
  return kibibytes % 1024 == 0 ? std::to_string(kibibytes / 1024) + " MiB"
                               : std::to_string(kibibytes) + " KiB";
}

std::string decoded(std::string_view text, bool isQuery) {
  std::string bytes;
  bytes.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto byte = text[i] == '%' && text.size() - i > 2
                          ? base::bytesFromHexadecimal(text.substr(i + 1, 2))
                          : std::nullopt;
    if (byte) {
      bytes += *byte;
      i += 2;
    } else {
      bytes += isQuery && text[i] == '+' ? ' ' : text[i];
    }
  }
  if (!base::isUTF8(bytes)) throw HttpRefusal(400, "the path and the query must be UTF-8");
  return bytes;
}

HttpFields parametersOf(std::string_view query) {
  HttpFields parameters;
  while (!query.empty()) {
    const std::string_view one = query.substr(0, query.find('&'));
    query.remove_prefix(std::min(one.size() + 1, query.size()));
    if (one.empty()) continue;
    const std::string_view name = one.substr(0, one.find('='));
    const std::string_view value = one.substr(std::min(name.size() + 1, one.size()));
    parameters.emplace_back(decoded(name, true), decoded(value, true));
  }
  return parameters;
}

/// A parser takes some requests whose end another one may see elsewhere, and so take what follows for a
/// request.
bool hasClearLength(const http::request<http::buffer_body>& message) {
  const auto codings = message.count(http::field::transfer_encoding);
  if (codings == 0) return true;
  return codings == 1 && beast::iequals(message[http::field::transfer_encoding], "chunked") &&
         message.count(http::field::content_length) == 0 && message.version() >= 11;
}

std::string headOf(http::response<http::empty_body>& message) {
  std::string head;
  http::response_serializer<http::empty_body> serializer(message);
  serializer.split(true);
  while (!serializer.is_header_done()) {
    beast::error_code error;
    serializer.next(error, [&](beast::error_code&, const auto& buffers) {
      head += beast::buffers_to_string(buffers);
      serializer.consume(beast::buffer_bytes(buffers));
    });
  }
  return head;
}

}  // namespace

struct HttpWire::State {
  using Parser = http::request_parser<http::buffer_body>;
  enum class Filled { yes, late, ended, gone };
  enum class BodyEnd { whole, tooLong, gone };

  explicit State(Connection& given) : connection(given) {}

  [[nodiscard]] std::string_view unparsed() const { return std::string_view(input).substr(parsed); }

  /// Passes bytes to the parser; returns how many it took.
  std::size_t parse(std::string_view bytes, beast::error_code& error) {
    const std::size_t taken = parser->put(boost::asio::const_buffer(bytes.data(), bytes.size()), error);
    parsed += taken;
    return taken;
  }

  /// Reads more bytes.
  Filled fill(Clock::time_point deadline) {
    input.erase(0, parsed);
    parsed = 0;
    std::array<char, kReadAtOnce> bytes;
    const auto left = std::chrono::ceil<milliseconds>(deadline - Clock::now());
    const auto count = left.count() > 0 ? connection.read(bytes.data(), bytes.size(), left) : -1;
    if (count > 0) {
      input.append(bytes.data(), static_cast<std::size_t>(count));
      return Filled::yes;
    }
    isOpen = false;
    if (count == 0) return Filled::ended;
    return Clock::now() >= deadline && !connection.stopping() ? Filled::late : Filled::gone;
  }

  [[noreturn]] void refuse(int status, const std::string& reason) {
    isOpen = false;
    throw HttpRefusal(status, reason);
  }

  template <class Take>
  BodyEnd parseBody(std::size_t mostRead, Take take);

  bool send(std::string_view bytes) {
    while (!bytes.empty() && connection.write(bytes.substr(0, kWriteAtOnce), kPatience)) {
      bytes.remove_prefix(std::min(kWriteAtOnce, bytes.size()));
    }
    if (!bytes.empty()) isOpen = false;
    return bytes.empty();
  }

  Connection& connection;
  std::string input;       // what was read,
  std::size_t parsed = 0;  // and how much of it is done with
  std::optional<Parser> parser;
  bool isOpen = true;
  bool isHead = false;  // the current request's method
  bool isOld = false;   // its version is 1.0
  bool expectsContinue = false;
};

HttpWire::HttpWire(Connection& connection) : state_(std::make_unique<State>(connection)) {}
HttpWire::~HttpWire() = default;

bool HttpWire::wait(milliseconds patience) {
  return state_->unparsed().empty() ? state_->connection.readable(patience) : !state_->connection.stopping();
}

bool HttpWire::readHead(HttpRequest& request, milliseconds patience) {
  State& state = *state_;
  const auto deadline = Clock::now() + patience;
  state.isHead = state.isOld = state.expectsContinue = false;
  auto& parser = state.parser.emplace();
  parser.header_limit(std::numeric_limits<std::uint32_t>::max());  // the limits are ours
  parser.body_limit(std::numeric_limits<std::uint64_t>::max());
  std::size_t size = 0;
  while (!parser.is_header_done()) {
    const std::string_view bytes = state.unparsed().substr(0, kMostHeadBytes - size);
    beast::error_code error;
    size += state.parse(bytes, error);
    if (error == http::error::bad_content_length || error == http::error::bad_transfer_encoding)
      state.refuse(400, kUnclearLength);
    if (error && error != http::error::need_more)
      state.refuse(400, "the head is not that of an HTTP/1 request");
    if (!error) continue;
    if (size == 0 && bytes.size() > kMostLineBytes) state.refuse(414, "the path is longer than 8 KiB");
    if (size + state.unparsed().size() >= kMostHeadBytes) state.refuse(431, "the head is longer than 64 KiB");
    const auto filled = state.fill(deadline);
    if (filled == State::Filled::late) state.refuse(408, "the head did not arrive in time");
    if (filled != State::Filled::yes) return false;
  }

  const auto& message = parser.get();
  const std::string_view target(message.target().data(), message.target().size());
  if (target.size() > kMostTargetBytes) state.refuse(414, "the path is longer than 8 KiB");
  if (!hasClearLength(message)) state.refuse(400, kUnclearLength);
  request.method = std::string(message.method_string());
  for (const auto& field : message) request.headers.emplace_back(field.name_string(), field.value());
  state.isHead = message.method() == http::verb::head;
  state.isOld = message.version() < 11;
  state.isOpen = parser.keep_alive();
  state.expectsContinue =
      !state.isOld && !parser.is_done() && beast::iequals(message[http::field::expect], "100-continue");
  try {
    const std::string_view path = target.substr(0, target.find('?'));
    request.path = decoded(path, false);
    request.parameters = parametersOf(target.substr(std::min(path.size() + 1, target.size())));
  } catch (const HttpRefusal&) {
    state.isOpen = false;
    throw;
  }
  return true;
}

/// Gives the body's bytes to `take`, piece by piece.
template <class Take>
HttpWire::State::BodyEnd HttpWire::State::parseBody(std::size_t mostRead, Take take) {
  std::array<char, kReadAtOnce> piece;
  parser->eager(true);
  std::size_t read = 0;
  while (!parser->is_done()) {
    auto& body = parser->get().body();
    body.data = piece.data();
    body.size = piece.size();
    beast::error_code error;
    read += parse(unparsed().substr(0, kMostHeadBytes), error);
    take(std::string_view(piece.data(), piece.size() - body.size));
    if (error == http::error::need_buffer || parser->is_done()) continue;
    if (error && error != http::error::need_more) refuse(400, "the body is not sent in valid chunks");
    if (unparsed().size() >= kMostHeadBytes) refuse(400, "the head of a chunk is longer than 64 KiB");
    if (read > mostRead) {
      isOpen = false;
      return BodyEnd::tooLong;
    }
    const Filled filled = fill(Clock::now() + kPatience);
    if (filled == Filled::gone) return BodyEnd::gone;
    if (filled == Filled::late) refuse(408, "the body did not arrive in time");
    if (filled == Filled::ended) refuse(400, "the body was cut off");
  }
  return BodyEnd::whole;
}

bool HttpWire::readBody(std::string& body, std::size_t mostKept, std::size_t mostRead) {
  if (state_->expectsContinue && state_->unparsed().empty() && !state_->send("HTTP/1.1 100 Continue\r\n\r\n"))
    return false;
  bool isTooLong = false;
  const auto end = state_->parseBody(mostRead, [&](std::string_view piece) {
    isTooLong = isTooLong || piece.size() > mostKept - body.size();
    if (isTooLong) {
      body.clear();
    } else {
      body += piece;
    }
  });
  if (end == State::BodyEnd::gone) return false;
  if (isTooLong || end == State::BodyEnd::tooLong)
    throw HttpRefusal(413, "the body is longer than " + sizeOf(mostKept));
  return true;
}

void HttpWire::skipBody(std::size_t mostRead) {
  if (!isOpen() || !state_->parser || state_->parser->is_done()) return;
  if (state_->expectsContinue && state_->unparsed().empty()) {
    state_->isOpen = false;  // whether it will still be sent is up to the client
    return;
  }
  try {
    state_->parseBody(mostRead, [](std::string_view) {});
  } catch (const HttpRefusal&) {
    // The request is refused already.
  }
}

bool HttpWire::write(const HttpResponse& response) {
  State& state = *state_;
  const bool inPieces = response.nextPiece != nullptr;
  if (inPieces && state.isOld) state.isOpen = false;  // its end shows where the answer ends
  http::response<http::empty_body> message;
  message.version(11);
  message.result(static_cast<unsigned>(response.status));
  if (message.result() == http::status::unknown) message.reason("Unknown");
  message.set(http::field::content_type, response.mediaType);
  for (const auto& [name, value] : response.headers) message.insert(name, value);
  if (!inPieces) {
    message.set(http::field::content_length, std::to_string(response.body.size()));
  } else if (!state.isOld) {
    message.set(http::field::transfer_encoding, "chunked");
  }
  if (!state.isOpen) {
    message.set(http::field::connection, "close");
  } else if (state.isOld) {
    message.set(http::field::connection, "keep-alive");
  }
  const std::string head = headOf(message);
  if (state.isHead) return state.send(head);
  if (!inPieces) return state.send(head + response.body);
  if (!state.send(head)) return false;
  while (const auto piece = response.nextPiece()) {
    if (piece->empty()) continue;
    const boost::asio::const_buffer bytes(piece->data(), piece->size());
    if (!state.send(state.isOld ? *piece : beast::buffers_to_string(http::make_chunk(bytes)))) return false;
  }
  return state.isOld || state.send(beast::buffers_to_string(http::make_chunk_last()));
}

bool HttpWire::isOpen() const {
  return state_->isOpen;
}

void HttpWire::finish() {
  State& state = *state_;
  state.connection.finish();
  const bool isClean = state.unparsed().empty() && (!state.parser || state.parser->is_done());
  if (isClean) return;
  // A socket that is closed with unread bytes is reset, and the answer that is still on its way lost.
  std::size_t read = 0;
  const auto deadline = Clock::now() + kLinger;
  while (read < kMostLingerBytes && state.fill(deadline) == State::Filled::yes) {
    read += state.unparsed().size();
    state.parsed = state.input.size();
  }
}

}  // namespace quorvantis::server
