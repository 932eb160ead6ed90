// What a provider sends on its connection, after HTTP/2's preface: frames in any order, headers, bodies.
#include <cstdint>
#include <set>
#include <string>
#include <string_view>

#include "apns/faults.h"
#include "apns/http2_session.h"
#include "apns/judgement.h"
#include "apns/reasons.h"
#include "base/utf8.h"
#include "fuzz/check.h"
#include "json/read.h"

namespace {

using namespace quorvantis;

constexpr std::string_view kPreface = "PRI * HTTP/2.0\r\n\r\nSM\r\n\r\n";
constexpr std::size_t kUuidBytes = 36;
constexpr std::size_t kScarce = std::size_t{64} * 1024;
constexpr std::size_t kPlenty = std::size_t{32} * 1024 * 1024;
constexpr std::int64_t kNow = 1'700'000'000;

class FuzzPhone final : public apns::Phone {
 public:
  [[nodiscard]] std::optional<apns::KnownToken> find(std::string_view token) const override {
    if (token == "\xAB\xCD") return apns::KnownToken{};
    return token == "\xEF" ? std::optional(apns::KnownToken{kNow}) : std::nullopt;
  }
  void arrive(apns::Notification, const apns::Report&) override {}
  void refused(const apns::Report&) override {}
};

/// Judges each request, and checks what must be true of every one.
class Judge final : public apns::Http2Session::Owner {
  using Stream = apns::Http2Session::Stream;

 public:
  void began(Stream stream) override { fuzz::check(open_.insert(stream).second, "a stream begins once"); }

  void requested(Stream stream, const apns::Request& request) override {
    fuzz::check(open_.contains(stream) && seen_.insert(stream).second, "a request comes once");
    fuzz::check(request.body().size() <= apns::Request::kMostPayloadBytes + 1, "no more is kept than counts");
    const apns::Judgement judgement = apns::judge(request, provider_, rules_, phone_, kNow);
    const bool isTaken = judgement.notification.has_value();
    fuzz::check(isTaken == (judgement.answer.status == 200) && isTaken == judgement.answer.reason.empty(),
                "200 says that it is taken, and nothing else does");
    const std::string id = request.header(apns::Header::id).value_or(judgement.answer.id);
    fuzz::check(judgement.answer.id == id || id.size() > kUuidBytes, "the id is returned");
    for (const std::string& shown : {judgement.report.id, judgement.report.pushType})
      fuzz::check(base::isUTF8(shown) && shown.size() <= 3 * kUuidBytes, "what is shown is short text");
    if (isTaken) fuzz::check(base::isUTF8(judgement.notification->collapseId), "the phone gets text");
    const auto* const reason = apns::findReason(judgement.answer.reason);
    fuzz::check(isTaken || (reason != nullptr && reason->holds != nullptr), "the reason is one of the table");
    if (isTaken) session->trust();
    session->answer(stream, judgement.answer);
  }

  void closed(Stream stream) override { fuzz::check(open_.erase(stream) == 1, "a stream ends once"); }

  apns::Http2Session* session = nullptr;

 private:
  std::set<Stream> open_;
  std::set<Stream> seen_;
  apns::Provider provider_;
  const apns::Rules rules_{.topic = "com.example.app"};
  FuzzPhone phone_;
};

void drain(apns::Http2Session& session) {
  while (!session.takeOutput().empty()) {
  }
}

void orderFaults(std::string_view text) {
  const auto value = json::read(text);
  if (value.index() != 0) return;
  const auto faults = apns::readFaults(std::get<0>(value));
  const auto* const read = std::get_if<0>(&faults);
  if (read == nullptr) return fuzz::check(!std::get<1>(faults).empty(), "a problem is reported");
  for (const apns::Fault& fault : *read) {
    fuzz::check(fault.times > 0 && fault.delay.count() >= 0, "a fault can be carried out");
    if (fault.kind == apns::Fault::Kind::answer)
      fuzz::check(fault.status >= 300 && fault.status <= 599, "a fault is no success");
  }
}

void converse(std::string_view bytes, apns::MemoryPool& pool) {
  Judge judge;
  apns::Http2Session session(judge, pool);
  judge.session = &session;
  bool isGood = session.receive(kPreface);
  drain(session);
  // In two pieces, since a frame may end anywhere.
  const std::size_t cut = bytes.empty() ? 0 : static_cast<std::uint8_t>(bytes[0]) % bytes.size();
  for (const std::string_view piece : {bytes.substr(0, cut), bytes.substr(cut)}) {
    isGood = isGood && session.receive(piece);
    drain(session);
  }
  session.goAway("Shutdown");
  drain(session);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  orderFaults(bytes);
  apns::MemoryPool pool(size % 2 == 0 ? kScarce : kPlenty);
  converse(bytes, pool);
  fuzz::check(pool.take(pool.size()), "a connection's end gives everything back");
  return 0;
}
