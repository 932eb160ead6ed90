#include "phone/streams.h"

#include <chrono>
#include <string>

#include "json/write.h"

namespace quorvantis::phone {

namespace {

constexpr long kMostReaders = 64;
// Then a keep-alive shows whether the reader is still there: those who left must not fill the places.
constexpr auto kQuiet = std::chrono::seconds(1);

/// One reader's place in the transcript.
class Stream {
 public:
  Stream(const Transcript& transcript, std::size_t from, std::shared_ptr<int> share)
      : transcript_(transcript), next_(from), share_(std::move(share)) {}

  /// Sends new lines, or a keep-alive. False when the connection is lost.
  bool sendOn(httplib::DataSink& sink) {
    const auto reading = transcript_.wait(phone_, next_, std::chrono::steady_clock::now() + kQuiet);
    std::string text;
    if (reading.phone != phone_) {
      // The lines may be of another phone than the last ones.
      if (!phone_.empty()) next_ = 1;
      phone_ = reading.phone;
      text = "event: fresh\ndata: " +
             json::write(json::Dictionary{{"phone", phone_}, {"next", std::uint64_t{reading.next}}}) + "\n\n";
    } else {
      for (const std::string& line : reading.lines) {
        text += "id: " + std::to_string(next_++) + "\ndata: " + line + "\n\n";
      }
    }
    if (text.empty()) text = ":\n\n";
    if (!sink.write(text.data(), text.size())) return false;
    if (reading.isOver && reading.lines.empty()) sink.done();
    return true;
  }

 private:
  const Transcript& transcript_;
  std::string phone_;
  std::size_t next_;
  const std::shared_ptr<int> share_;
};

}  // namespace

bool Streams::open(std::size_t from, httplib::Response& response) {
  std::shared_ptr<int> share = readers_;
  if (share.use_count() > kMostReaders + 1) return false;
  const auto stream = std::make_shared<Stream>(transcript_, from, std::move(share));
  response.set_chunked_content_provider(
      "text/event-stream", [stream](std::size_t, httplib::DataSink& sink) { return stream->sendOn(sink); });
  return true;
}

}  // namespace quorvantis::phone
