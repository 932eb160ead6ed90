#include "platform/simulated/values.h"

#include <algorithm>

#include "base/hexadecimal.h"
#include "json/write.h"

namespace quorvantis::platform::simulated {

namespace {

double asReal(const NumberInstance::Number& number) {
  return std::visit([](auto value) { return static_cast<double>(value); }, number);
}

struct ObjectMaker {
  Object operator()(std::nullptr_t) const { return Object::adopt(new NullInstance); }
  Object operator()(bool boolean) const { return Object::adopt(new NumberInstance(boolean)); }
  Object operator()(std::int64_t number) const { return Object::adopt(new NumberInstance(number)); }
  Object operator()(std::uint64_t number) const { return Object::adopt(new NumberInstance(number)); }
  Object operator()(double number) const { return Object::adopt(new NumberInstance(number)); }
  Object operator()(const std::string& text) const { return Object::adopt(StringInstance::make(text)); }
  Object operator()(const json::Data& data) const { return Object::adopt(new DataInstance(data.bytes)); }
  Object operator()(const json::Array& array) const {
    std::vector<Object> elements;
    elements.reserve(array.size());
    for (const json::Value& element : array) elements.push_back(objectFrom(element));
    return Object::adopt(new ArrayInstance(std::move(elements)));
  }
  Object operator()(const json::Dictionary& dictionary) const {
    std::vector<DictionaryInstance::Entry> entries;
    entries.reserve(dictionary.size());
    for (const auto& [key, value] : dictionary) {
      entries.emplace_back(NSString::stringWithUTF8String(key), objectFrom(value));
    }
    return Object::adopt(new DictionaryInstance(std::move(entries)));
  }
};

std::string_view keyOf(const DictionaryInstance::Entry& entry) {
  return known<StringInstance>(entry.first)->text;
}

std::string joined(const std::vector<std::string>& lines, char open, char close) {
  std::string text(1, open);
  for (const std::string& line : lines) text += "\n    " + line;
  return text + "\n" + close;
}

}  // namespace

StringInstance* StringInstance::make(std::string_view characters) {
  return new (Behind{characters.size()}) StringInstance(characters);
}

StringInstance::StringInstance(std::string_view characters)
    : Instance(classKind), text(reinterpret_cast<const char*>(this + 1), characters.size()) {
  characters.copy(reinterpret_cast<char*>(this + 1), characters.size());
}

bool StringInstance::isEqual(const Instance& other) const {
  return other.kind() == classKind && static_cast<const StringInstance&>(other).text == text;
}

bool NumberInstance::isEqual(const Instance& other) const {
  if (other.kind() != classKind) return false;
  const Number& otherNumber = static_cast<const NumberInstance&>(other).number;
  const bool isWhole =
      std::holds_alternative<std::int64_t>(number) || std::holds_alternative<std::uint64_t>(number);
  if (isWhole && number.index() == otherNumber.index()) return number == otherNumber;
  return asReal(number) == asReal(otherNumber);
}

std::string NumberInstance::description() const {
  if (const auto* boolean = std::get_if<bool>(&number)) return *boolean ? "1" : "0";
  if (const auto* whole = std::get_if<std::int64_t>(&number)) return std::to_string(*whole);
  if (const auto* wide = std::get_if<std::uint64_t>(&number)) return std::to_string(*wide);
  return json::shortest(std::get<double>(number));
}

bool DataInstance::isEqual(const Instance& other) const {
  return other.kind() == classKind && static_cast<const DataInstance&>(other).bytes == bytes;
}

std::string DataInstance::description() const {
  constexpr std::size_t kGroup = 4;
  std::string text = "<";
  for (std::size_t i = 0; i < bytes.size(); i += kGroup) {
    if (i != 0) text += ' ';
    text += base::hexadecimal(bytes.substr(i, kGroup));
  }
  return text + '>';
}

std::string ArrayInstance::description() const {
  std::vector<std::string> lines;
  for (const Object& element : elements) lines.push_back(instanceOf(element)->description() + ",");
  return joined(lines, '(', ')');
}

std::string DictionaryInstance::description() const {
  std::vector<std::string> lines;
  for (const auto& [key, value] : *entries_) {
    lines.push_back(instanceOf(key)->description() + " = " + instanceOf(value)->description() + ";");
  }
  return joined(lines, '{', '}');
}

std::size_t DictionaryInstance::placeOf(std::string_view key) const {
  const Entries& entries = *entries_;
  const std::size_t expected = expected_.load(std::memory_order_relaxed);
  const bool isThere = expected <= entries.size() && (expected == 0 || keyOf(entries[expected - 1]) < key) &&
                       (expected == entries.size() || key <= keyOf(entries[expected]));
  if (isThere) return expected;
  const auto isBefore = [](const Entry& entry, std::string_view other) { return keyOf(entry) < other; };
  const auto place = std::lower_bound(entries.begin(), entries.end(), key, isBefore);
  return static_cast<std::size_t>(place - entries.begin());
}

const Object* DictionaryInstance::find(std::string_view key) const {
  const std::size_t place = placeOf(key);
  if (place == entries_->size() || keyOf((*entries_)[place]) != key) return nullptr;
  expected_.store(place + 1, std::memory_order_relaxed);
  return &(*entries_)[place].second;
}

void DictionaryInstance::set(const NSString& key, Object object) {
  constexpr std::size_t kFirstRoom = 8;
  if (lent_) entries_ = std::make_shared<Entries>(*entries_);
  lent_ = false;
  if (entries_->capacity() == 0) entries_->reserve(kFirstRoom);

  const std::string_view text = known<StringInstance>(key)->text;
  const std::size_t place = placeOf(text);
  if (place < entries_->size() && keyOf((*entries_)[place]) == text) {
    (*entries_)[place].second = std::move(object);
  } else {
    entries_->emplace(entries_->begin() + static_cast<std::ptrdiff_t>(place), key, std::move(object));
  }
  expected_.store(place + 1, std::memory_order_relaxed);
}

Object DictionaryInstance::copy() {
  if (!isMutable_) return Object::retain(this);
  lent_ = true;
  return Object::adopt(new DictionaryInstance(entries_, false));
}

Object objectFrom(const json::Value& value) {
  return std::visit(ObjectMaker{}, value.variant());
}

std::optional<json::Value> valueFrom(const Object& object) {
  if (!object) return json::Value();
  if (const auto* text = instanceAs<StringInstance>(object)) return json::Value(text->text);
  if (const auto* data = instanceAs<DataInstance>(object))
    return json::Value(json::Data{std::string(data->bytes)});
  if (const auto* number = instanceAs<NumberInstance>(object)) {
    return std::visit([](auto value) { return json::Value(value); }, number->number);
  }
  if (instanceAs<NullInstance>(object) != nullptr) return json::Value();
  if (const auto* array = instanceAs<ArrayInstance>(object)) {
    json::Array values;
    for (const Object& element : array->elements) {
      auto value = valueFrom(element);
      if (!value) return std::nullopt;
      values.push_back(*std::move(value));
    }
    return json::Value(std::move(values));
  }
  if (const auto* dictionary = instanceAs<DictionaryInstance>(object)) {
    json::Dictionary values;
    for (const auto& [key, element] : dictionary->entries()) {
      auto value = valueFrom(element);
      if (!value) return std::nullopt;
      values.emplace(std::string(known<StringInstance>(key)->text), *std::move(value));
    }
    return json::Value(std::move(values));
  }
  return std::nullopt;
}

std::optional<std::string> textOf(const Object& object) {
  if (!object) return std::nullopt;
  return instanceOf(object)->description();
}

NSString stringFrom(const std::optional<std::string>& text) {
  return text ? NSString::stringWithUTF8String(*text) : NSString();
}

}  // namespace quorvantis::platform::simulated
