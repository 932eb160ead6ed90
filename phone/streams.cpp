#include "phone/streams.h"

#include <chrono>
#include <string>

#include "json/write.h"

namespace quorvantis::phone {

namespace {

constexpr int kMostReaders = 64;
// Then a keep-alive shows whether the reader is still there: those who left must not fill the places.
constexpr auto kQuiet = std::chrono::seconds(1);

/// One reader's place in the transcript, and among the readers.
class Stream {
 public:
  Stream(const Transcript& transcript, std::size_t from, std::shared_ptr<std::atomic<int>> readers)
      : transcript_(transcript),
        next_(from),
        readers_(std::move(readers)),
        isAdmitted_(++*readers_ <= kMostReaders) {}
  ~Stream() { --*readers_; }
  Stream(const Stream&) = delete;
  Stream& operator=(const Stream&) = delete;

  [[nodiscard]] bool isAdmitted() const { return isAdmitted_; }

  /// Waits for new lines and returns them, or a keep-alive. Nothing when the transcript is over.
  std::optional<std::string> read() {
    const auto reading = transcript_.wait(phone_, next_, std::chrono::steady_clock::now() + kQuiet);
    if (reading.phone != phone_) {
      // The lines may be of another phone than the last ones.
      if (!phone_.empty()) next_ = 1;
      phone_ = reading.phone;
      return "event: fresh\ndata: " +
             json::write(json::Dictionary{{"phone", phone_}, {"next", std::uint64_t{reading.next}}}) + "\n\n";
    }
    if (reading.isOver && reading.lines.empty()) return std::nullopt;
    std::string text;
    for (const SharedText& line : reading.lines) {
      text += "id: " + std::to_string(next_++) + "\ndata: " + *line + "\n\n";
    }
    return text.empty() ? ":\n\n" : text;
  }

 private:
  const Transcript& transcript_;
  std::string phone_;
  std::size_t next_;
  const std::shared_ptr<std::atomic<int>> readers_;
  const bool isAdmitted_;
};

}  // namespace

std::optional<server::HttpResponse> Streams::open(std::size_t from) {
  const auto stream = std::make_shared<Stream>(transcript_, from, readers_);
  if (!stream->isAdmitted()) return std::nullopt;
  return server::HttpResponse{.mediaType = "text/event-stream",
                              .nextPiece = [stream] { return stream->read(); }};
}

}  // namespace quorvantis::phone
