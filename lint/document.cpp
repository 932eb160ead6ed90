#include "lint/document.h"

#include <utility>

#include "console/wording.h"
#include "json/write.h"

namespace quorvantis::lint {

namespace {

constexpr std::size_t kMostRepeated = 100;
constexpr std::size_t kLongestPointer = 200;
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

}  // namespace

std::string pointerPart(std::string_view key) {
  std::string part = "/";
  for (const char character : key) {
    if (character == '~') {
      part += "~0";
    } else if (character == '/') {
      part += "~1";
    } else {
      part += character;
    }
  }
  return part;
}

/// Follows the reading and notes the places that findings name. What it keeps grows with the text alone, not
/// with the pointers to each part of it.
class PayloadDocument::Reader : public json::Observer {
 public:
  explicit Reader(PayloadDocument& document) : document_(document) {}

  void key(std::string_view key, std::size_t offset, bool repeated) override {
    const Level& object = levels_.back();
    pointer_.resize(object.pointerSize);
    pointer_ += pointerPart(key);
    keyOffset_ = offset;
    if (!repeated) return;
    ++document_.repeatedCount_;
    if (document_.repeated_.size() < kMostRepeated) {
      document_.repeated_.push_back(
          {console::shortened(pointer_, kLongestPointer), console::shortened(key), offset});
    }
    forget();
  }
  void scalar(std::size_t offset, const json::Value& value) override { note(offset, value.isNull()); }
  void begin(std::size_t offset, bool object) override {
    note(offset, false);
    levels_.push_back({object, 0, pointer_.size()});
  }
  void end() override {
    pointer_.resize(levels_.back().pointerSize);
    levels_.pop_back();
  }

 private:
  struct Level {
    bool object = false;
    std::size_t elements = 0;
    std::size_t pointerSize = 0;
  };

  void note(std::size_t offset, bool isNull) {
    const bool isElement = !levels_.empty() && !levels_.back().object;
    if (isElement) {
      pointer_.resize(levels_.back().pointerSize);
      pointer_ += "/" + std::to_string(levels_.back().elements++);
    }
    if (!isLookedAt() && !(isNull && isFirstInExtra())) return;
    document_.places_.insert_or_assign(pointer_, isElement || levels_.empty() ? offset : keyOffset_);
  }

  /// Whether the library, or a finding, looks at this part.
  [[nodiscard]] bool isLookedAt() const {
    switch (levels_.size()) {
      case 0:
      case 1:
        return true;
      case 2:
        return pointer_.starts_with("/aps/");
      case 3:
        return pointer_.starts_with("/aps/alert/");
      default:
        return false;
    }
  }

  [[nodiscard]] bool isFirstInExtra() const {
    constexpr std::string_view kExtra = "/aps/extra1/";
    const std::string extra = pointer_.substr(0, kExtra.size());
    return extra.starts_with("/aps/extra") && extra.ends_with('/') && document_.firstNullIn(extra) == nullptr;
  }

  /// The earlier value of a repeated key is lost, with all that is in it.
  void forget() {
    auto& places = document_.places_;
    places.erase(pointer_);
    places.erase(places.lower_bound(pointer_ + '/'),
                 places.lower_bound(pointer_ + static_cast<char>('/' + 1)));
  }

  PayloadDocument& document_;
  std::vector<Level> levels_;
  std::string pointer_;
  std::size_t keyOffset_ = 0;
};

PayloadDocument::PayloadDocument(std::string text) : text_(std::move(text)), size_(text_.size()) {
  Reader reader(*this);
  auto result = json::read(text_, {}, &reader);
  if (auto* problem = std::get_if<json::Problem>(&result)) {
    problem_ = std::move(*problem);
    if (text_.starts_with(kByteOrderMark)) problem_ = {0, "a byte order mark stands before the value"};
    return;
  }
  value_ = std::move(*std::get_if<json::Value>(&result));
  auto* payload = value_.get<json::Dictionary>();
  if (payload == nullptr) return;
  isForSimulator_ = payload->erase(std::string(kSimulatorKey)) != 0;
  if (isForSimulator_) size_ = json::write(value_).size();
}

const std::string* PayloadDocument::firstNullIn(const std::string& pointer) const {
  const auto place = places_.lower_bound(pointer);
  if (place == places_.end() || !place->first.starts_with(pointer)) return nullptr;
  return &place->first;
}

json::Place PayloadDocument::placeOf(std::string_view pointer) const {
  for (;;) {
    const auto place = places_.find(pointer);
    if (place != places_.end()) return placeOf(place->second);
    if (pointer.empty()) return {};
    pointer = pointer.substr(0, pointer.rfind('/'));
  }
}

}  // namespace quorvantis::lint
