#include "phone/api.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <limits>
#include <optional>
#include <utility>

#include "base/real.h"
#include "json/write.h"
#include "phone/schema.h"
#include "scenario/named_object.h"
#include "scenario/names.h"

namespace quorvantis::phone {

namespace {

using server::HttpRequest;
using server::HttpResponse;

constexpr double kUsualWait = 10;  // seconds
constexpr double kLongestWait = 600;
constexpr std::size_t kLargestLineNumber = std::size_t{1} << 53;  // what JSON readers keep exact

HttpResponse answerWith(const json::Value& value) {
  return {.body = json::write(value)};
}

/// {…"lines":[{"id":…,"line":…},…],"next":…}, a few lines at a time; the lines are JSON already.
HttpResponse answerWithLines(Transcript::Excerpt excerpt, std::string begin = "{") {
  begin += R"("lines":[)";
  const auto nextPiece = [excerpt, begin, isFirst = true,
                          isDone = false]() mutable -> std::optional<std::string> {
    if (isDone) return std::nullopt;
    std::string piece = std::exchange(begin, "");
    std::size_t number = excerpt.from();
    const std::vector<SharedText> lines = excerpt.take();
    for (const SharedText& line : lines) {
      if (!std::exchange(isFirst, false)) piece += ',';
      piece.append(R"({"id":)")
          .append(std::to_string(number++))
          .append(R"(,"line":)")
          .append(*line)
          .append("}");
    }
    isDone = excerpt.from() == excerpt.next();
    if (isDone) piece += R"(],"next":)" + std::to_string(excerpt.next()) + '}';
    return piece;
  };
  return {.nextPiece = nextPiece};
}

std::optional<double> numberFrom(std::string_view text, double) {
  return base::realFrom(text);
}

std::optional<std::size_t> numberFrom(std::string_view text, std::size_t) {
  std::size_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return number;
}

/// Throws scenario::StepError.
template <class Number>
Number parameter(const HttpRequest& request, std::string_view name, Number usual, Number most) {
  const auto& all = request.parameters;
  const auto given = std::find_if(all.begin(), all.end(), [&](const auto& one) { return one.first == name; });
  if (given == all.end()) return usual;
  const auto number = numberFrom(given->second, usual);
  if (!number || !(*number >= Number{0} && *number <= most)) {
    throw scenario::StepError('"' + std::string(name) + "\" must be a number from 0 to " +
                              json::shortest(static_cast<double>(most)));
  }
  return *number;
}

std::size_t fromOf(const HttpRequest& request) {
  return std::max<std::size_t>(1, parameter<std::size_t>(request, "from", 1, kLargestLineNumber));
}

/// The body's object, which may have only these keys. An empty body stands for an empty object.
json::Dictionary readBody(const std::string& body, const scenario::Names& keys) {
  json::Value value = body.empty() ? json::Dictionary() : scenario::readValue(body);
  auto* object = value.get<json::Dictionary>();
  if (object == nullptr) throw scenario::StepError("the body must be one JSON object");
  for (const auto& [key, unused] : *object) {
    if (std::find(keys.begin(), keys.end(), key) == keys.end()) {
      throw scenario::StepError("unknown key " + json::write(key) + " in the body");
    }
  }
  return std::move(*object);
}

std::string textIn(const json::Dictionary& object, std::string_view key, const std::string& usual) {
  const auto entry = object.find(key);
  if (entry == object.end()) return usual;
  const auto* text = entry->second.get<std::string>();
  if (text == nullptr) throw scenario::StepError(json::write(key) + " must be a string");
  return *text;
}

/// The members of the line that is waited for.
json::Dictionary wantedOf(const HttpRequest& request) {
  json::Dictionary wanted;
  for (const auto& [name, value] : request.parameters) {
    if (name != "from" && name != "seconds") wanted.emplace(name, value);
  }
  return wanted;
}

/// The member of this name, or, for a name with dots, one inside an object inside this one.
const json::Value* memberNamed(std::string_view name, const json::Dictionary& object) {
  if (const auto entry = object.find(name); entry != object.end()) return &entry->second;
  for (auto dot = name.find('.'); dot != std::string_view::npos; dot = name.find('.', dot + 1)) {
    const auto entry = object.find(name.substr(0, dot));
    const auto* inner = entry == object.end() ? nullptr : entry->second.get<json::Dictionary>();
    const auto* found = inner == nullptr ? nullptr : memberNamed(name.substr(dot + 1), *inner);
    if (found != nullptr) return found;
  }
  return nullptr;
}

bool isWanted(const std::string& line, const json::Dictionary& wanted) {
  const json::Dictionary object = scenario::readObject(line);
  return std::all_of(wanted.begin(), wanted.end(), [&](const auto& member) {
    const json::Value* found = memberNamed(member.first, object);
    return found != nullptr &&
           (*found == member.second ||
            json::Value(json::write(*found)) == member.second);  // a number, true, false or null
  });
}

}  // namespace

HttpResponse refusal(int status, const std::string& reason, json::Dictionary more) {
  more.emplace("error", reason);
  return {.status = status, .body = json::write(more)};
}

Api::Api(Phone& phone, Worker& worker, const Transcript& transcript, report::LintService& linter,
         Rehearsal& rehearsal, ApiOptions options)
    : phone_(phone),
      worker_(worker),
      transcript_(transcript),
      linter_(linter),
      rehearsal_(rehearsal),
      options_(std::move(options)),
      streams_(transcript) {}

std::vector<server::HttpRoute> Api::routes() {
  struct Row {
    std::string_view method;
    std::string_view path;
    Response (Api::*answer)(const Request&);
  };
  static constexpr std::array kTable{
      Row{"POST", "/api/steps", &Api::playLines},         Row{"GET", "/api/lines", &Api::tellLines},
      Row{"GET", "/api/wait", &Api::waitForLine},         Row{"POST", "/api/fresh", &Api::beginAnew},
      Row{"GET", "/api/scenario", &Api::tellScenario},    Row{"POST", "/api/lint", &Api::lint},
      Row{"GET", "/api/schema", &Api::tellSchema},        Row{"GET", "/api/status", &Api::tellStatus},
      Row{"POST", "/api/apns/faults", &Api::orderFaults}, Row{"POST", "/api/stop", &Api::stop}};
  std::vector<server::HttpRoute> routes;
  for (const Row& row : kTable) {
    const auto answer = [this, method = row.answer](const Request& request) -> Response {
      try {
        return (this->*method)(request);
      } catch (const NotNow& reason) {
        return refusal(409, reason.what());
      } catch (const Full& reason) {
        return refusal(507, reason.what());
      } catch (const scenario::StepError& reason) {
        return refusal(400, reason.what());
      } catch (const Stopped& reason) {
        return refusal(503, reason.what());
      }
    };
    routes.push_back({row.method, row.path, answer});
    if (row.method == "POST") routes.back().mediaTypes = {"application/json"};
    // What a phone has saved can be opened; as a JSON string, it is longer by its quotes' escapes.
    if (row.path == "/api/fresh") routes.back().mostBodyBytes = 2 * transcript_.limits().bytes;
  }
  return routes;
}

server::HttpResponse Api::playLines(const Request& request) {
  json::Value posted = scenario::readValue(request.body);
  json::Array objects;
  if (auto* array = posted.get<json::Array>()) {
    objects = std::move(*array);
  } else {
    objects.push_back(std::move(posted));
  }

  std::vector<Line> lines;
  const auto refuseLine = [](int status, const char* reason, std::size_t index) {
    return refusal(status, reason, {{"step", std::uint64_t{index}}});
  };
  for (json::Value& object : objects) {
    try {
      auto* keys = object.get<json::Dictionary>();
      if (keys == nullptr) throw scenario::StepError("a step must be one JSON object");
      lines.push_back(readLine(std::move(*keys), phone_.serverIsElsewhere()));
    } catch (const scenario::StepError& error) {
      return refuseLine(400, error.what(), lines.size());
    }
  }
  return worker_.run([&]() -> Response {
    const std::size_t from = transcript_.read(1).next;
    std::size_t index = 0;
    try {
      for (; index < lines.size(); ++index) phone_.play(lines[index]);
    } catch (const NotNow& error) {
      return refuseLine(409, error.what(), index);
    } catch (const Full& error) {
      return refuseLine(507, error.what(), index);
    } catch (const scenario::StepError& error) {
      return refuseLine(400, error.what(), index);
    }
    return answerWithLines(transcript_.excerpt(from), R"({"from":)" + std::to_string(from) + ',');
  });
}

server::HttpResponse Api::beginAnew(const Request& request) {
  const std::string scenario = textIn(readBody(request.body, {"scenario"}), "scenario", "");
  try {
    const std::vector<Line> lines = readLines(scenario, phone_.serverIsElsewhere());
    if (!lines.empty()) rehearsal_.play(scenario, worker_.run([&] { return phone_.keptValues(); }));
    worker_.run([&] { phone_.begin(lines); });
  } catch (const scenario::ScenarioError& error) {
    return refusal(400, error.what(), {{"line", std::uint64_t{error.line()}}});
  }
  const auto reading = transcript_.read(1);
  return answerWith(json::Dictionary{{"phone", reading.phone}, {"next", std::uint64_t{reading.next}}});
}

server::HttpResponse Api::lint(const Request& request) {
  const json::Dictionary given = readBody(request.body, {"payload", "systemVersion"});
  if (!given.contains("payload"))
    throw scenario::StepError(R"(the body needs "payload", a payload as a string)");
  const std::string version =
      given.contains("systemVersion") ? "" : worker_.run([&] { return phone_.systemVersion(); });
  return {.body = linter_.reportOn(textIn(given, "payload", ""), textIn(given, "systemVersion", version))};
}

server::HttpResponse Api::orderFaults(const Request& request) {
  if (!options_.orderFaults) {
    return refusal(404, "the stand-in for Apple's service is not running; start the phone with --apns");
  }
  const std::string problem = options_.orderFaults(scenario::readValue(request.body));
  if (!problem.empty()) return refusal(400, problem);
  return answerWith(json::Dictionary());
}

server::HttpResponse Api::tellLines(const Request& request) {
  std::size_t from = fromOf(request);
  if (request.header("Accept").find("text/event-stream") == std::string_view::npos) {
    return answerWithLines(transcript_.excerpt(from));
  }
  const auto last = numberFrom(request.header("Last-Event-ID"), from);
  if (last && *last <= kLargestLineNumber) from = *last + 1;
  auto stream = streams_.open(from);
  return stream ? *std::move(stream) : refusal(503, "64 pages are already connected; close one of them");
}

server::HttpResponse Api::waitForLine(const Request& request) {
  using Clock = std::chrono::steady_clock;
  std::size_t from = fromOf(request);
  const std::chrono::duration<double> patience(parameter(request, "seconds", kUsualWait, kLongestWait));
  const json::Dictionary wanted = wantedOf(request);
  if (wanted.empty()) {
    throw scenario::StepError(R"(say what to wait for, such as "?event=callback&selector=onError:")");
  }
  const auto until = Clock::now() + std::chrono::ceil<Clock::duration>(patience);
  const std::string phone = transcript_.read(from).phone;
  for (;;) {
    const auto reading = transcript_.wait(phone, from, until);
    if (reading.phone != phone) throw NotNow("the phone was replaced by a fresh one in the meantime");
    for (const SharedText& line : reading.lines) {
      if (isWanted(*line, wanted)) {
        return {.body = R"({"id":)" + std::to_string(from) + R"(,"line":)" + *line + "}"};
      }
      ++from;
    }
    if (reading.isOver && reading.lines.empty()) throw Stopped();
    if (reading.lines.empty() && Clock::now() >= until) break;
  }
  const bool isPrompting = worker_.run([&] { return phone_.isPrompting(); });
  return refusal(408,
                 "no line with " + json::write(wanted) + " arrived in time" +
                     (isPrompting ? "; the permission prompt is on the screen and waits for an answer" : ""),
                 {{"next", std::uint64_t{from}}});
}

server::HttpResponse Api::tellScenario(const Request&) {
  const auto nextPiece = [text = worker_.run([&] { return phone_.scenario(); })]() mutable {
    std::string piece = text.take();
    return piece.empty() ? std::nullopt : std::optional(std::move(piece));
  };
  return {.mediaType = "text/plain; charset=utf-8", .nextPiece = nextPiece};
}

server::HttpResponse Api::tellSchema(const Request&) {
  return answerWith(stepSchema());
}

server::HttpResponse Api::tellStatus(const Request&) {
  json::Dictionary status = options_.about;
  const auto reading = transcript_.read(std::numeric_limits<std::size_t>::max());
  status.emplace("phone", reading.phone);
  status.emplace("next", std::uint64_t{reading.next});
  const Transcript::Size size = transcript_.size();
  const Limits& limits = transcript_.limits();
  status.emplace("room", json::Dictionary{{"lines", std::uint64_t{size.lines}},
                                          {"mostLines", std::uint64_t{limits.lines}},
                                          {"bytes", std::uint64_t{size.bytes}},
                                          {"mostBytes", std::uint64_t{limits.bytes}}});
  const auto token = worker_.run([&] { return phone_.token(); });
  status.emplace("token", token ? json::Value(*token) : json::Value());
  return answerWith(status);
}

server::HttpResponse Api::stop(const Request&) {
  options_.stop();
  return {.status = 202, .body = json::write(json::Dictionary{{"stops", true}})};
}

}  // namespace quorvantis::phone
