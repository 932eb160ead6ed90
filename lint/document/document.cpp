#include "lint/document/document.h"

#include <algorithm>
#include <utility>

#include "console/wording.h"
#include "json/write.h"
#include "lint/document/json_text.h"
#include "notifications/payload_keys.h"

namespace quorvantis::lint {

namespace {

constexpr std::size_t kMostRepeated = 100;
constexpr std::size_t kLongestPointer = 200;

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

/// Records the positions that findings need while the text is read. Memory is proportional to the text, not
/// to the sum of all pointers.
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
    const bool isNested = !isElement && isNestedAps();
    if (isNested) document_.nestedAps_ = pointer_;
    if (!isLookedAt() && !isNested && !(isNull && isFirstInExtra())) return;
    const bool hasKey = !isElement && !levels_.empty();
    document_.parts_.insert_or_assign(pointer_, Part{hasKey ? keyOffset_ : offset, hasKey});
  }

  /// Whether the library, or a finding, looks at this part.
  [[nodiscard]] bool isLookedAt() const {
    const std::size_t depth = levels_.size();
    return depth < 2 || (depth == 2 && pointer_.starts_with("/aps/")) ||
           (depth == 3 && (pointer_.starts_with("/aps/alert/") || pointer_.starts_with("/aps/sound/"))) ||
           (depth == 4 &&
            (pointer_.starts_with("/aps/alert/title/") || pointer_.starts_with("/aps/alert/body/")));
  }

  [[nodiscard]] bool isFirstInExtra() const {
    return std::any_of(payload::extras.begin(), payload::extras.end(), [this](const auto& extra) {
      const std::string inside = "/aps" + pointerPart(extra.key.text()) + '/';
      return pointer_.starts_with(inside) && document_.firstNullIn(inside) == nullptr;
    });
  }

  [[nodiscard]] bool isNestedAps() const {
    constexpr std::size_t kDeepestEnvelope = 4;
    return levels_.size() > 1 && levels_.size() <= kDeepestEnvelope && document_.nestedAps_.empty() &&
           pointer_.size() <= kLongestPointer && pointer_.ends_with("/aps");
  }

  /// The earlier value of a repeated key is lost, with all that is in it.
  void forget() {
    auto& parts = document_.parts_;
    parts.erase(pointer_);
    std::string& nested = document_.nestedAps_;
    if ((nested + '/').starts_with(pointer_ + '/')) nested.clear();
    parts.erase(parts.lower_bound(pointer_ + '/'), parts.lower_bound(pointer_ + static_cast<char>('/' + 1)));
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
    return;
  }
  value_ = std::move(*std::get_if<json::Value>(&result));
  auto* payload = value_.get<json::Dictionary>();
  if (payload == nullptr) return;
  isForSimulator_ = payload->erase(std::string(kSimulatorKey)) != 0;
  if (isForSimulator_) size_ = json::write(value_).size();
}

const std::string* PayloadDocument::firstNullIn(const std::string& pointer) const {
  const auto part = parts_.lower_bound(pointer);
  if (part == parts_.end() || !part->first.starts_with(pointer)) return nullptr;
  return &part->first;
}

const PayloadDocument::Part& PayloadDocument::partAt(std::string_view pointer) const {
  static const Part whole;
  const auto part = parts_.find(pointer);
  return part != parts_.end() ? part->second : whole;
}

std::size_t PayloadDocument::valueOf(const Part& part) const {
  if (!part.hasKey) return part.begin;
  return skipBlanks(text_, skipBlanks(text_, endOfValue(text_, part.begin)) + 1);
}

TextRange PayloadDocument::markOf(std::string_view pointer) const {
  const Part& part = partAt(pointer);
  const std::size_t value = valueOf(part);
  const bool isPlain = value < text_.size() && text_[value] != '{' && text_[value] != '[';
  return isPlain ? TextRange{part.begin, endOfValue(text_, value)} : markAt(part.begin);
}

TextRange PayloadDocument::markAt(std::size_t offset) const {
  if (problem_ || offset >= text_.size() || text_[offset] != '"') {
    return {offset, std::min(offset + 1, text_.size())};
  }
  return {offset, endOfValue(text_, offset)};
}

Edit PayloadDocument::replaceKey(std::string_view pointer, std::string_view key) const {
  const Part& part = partAt(pointer);
  return {{part.begin, endOfValue(text_, part.begin)}, json::write(key)};
}

Edit PayloadDocument::replaceValue(std::string_view pointer, const json::Value& value) const {
  const std::size_t begin = valueOf(partAt(pointer));
  return {{begin, endOfValue(text_, begin)}, json::write(value)};
}

Edit PayloadDocument::remove(std::string_view pointer) const {
  const Part& part = partAt(pointer);
  const std::size_t end = endOfValue(text_, valueOf(part));
  const std::size_t next = skipBlanks(text_, end);
  if (text_[next] == ',') return {{part.begin, skipBlanks(text_, next + 1)}, ""};
  const std::size_t before = text_.find_last_not_of(kBlanks, part.begin - 1);
  return {{text_[before] == ',' ? before : part.begin, end}, ""};
}

Edit PayloadDocument::insert(std::string_view object, const std::string& member) const {
  const std::size_t inside = valueOf(partAt(object)) + 1;
  const std::size_t first = skipBlanks(text_, inside);
  if (text_[first] == '}') return {{inside, inside}, member};
  const std::string gap = text_.substr(inside, first - inside);
  return {{first, first}, member + ',' + (gap.empty() ? " " : gap)};
}

Edits PayloadDocument::move(std::string_view pointer, std::string_view object) const {
  const Part& part = partAt(pointer);
  const std::string member = text_.substr(part.begin, endOfValue(text_, valueOf(part)) - part.begin);
  Edits edits{remove(pointer), insert(object, member)};
  if (edits[1].range.begin < edits[0].range.begin) std::swap(edits[0], edits[1]);
  return edits;
}

}  // namespace quorvantis::lint
