#include "platform/NSJSONSerialization.h"

#include <simdjson.h>

#include <algorithm>
#include <limits>

#include "base/utf8.h"
#include "json/read.h"
#include "platform/simulated/values.h"

namespace quorvantis::platform::NSJSONSerialization {

namespace {

using namespace simulated;
namespace dom = simdjson::dom;

NSString textFrom(std::string_view text) {
  return NSString::stringWithUTF8String(text);
}

Object objectFrom(const dom::element& element);

Object arrayFrom(const dom::array& array) {
  std::vector<Object> elements;
  for (const dom::element element : array) elements.push_back(objectFrom(element));
  return makeInstance<Object, ArrayInstance>(std::move(elements));
}

Object dictionaryFrom(const dom::object& object) {
  struct Member {
    std::string_view key;
    dom::element value;
  };
  std::vector<Member> members;
  members.reserve(object.size());
  for (const auto& [key, value] : object) members.push_back({key, value});
  // The parser stores strings in the order in which it reads them.
  std::sort(members.begin(), members.end(), [](const Member& a, const Member& b) {
    const int order = a.key.compare(b.key);
    return order != 0 ? order < 0 : a.key.data() < b.key.data();
  });

  DictionaryInstance::Entries entries;
  entries.reserve(members.size());
  for (std::size_t i = 0; i < members.size(); ++i) {
    const bool isOverridden = i + 1 < members.size() && members[i].key == members[i + 1].key;
    if (!isOverridden) entries.emplace_back(textFrom(members[i].key), objectFrom(members[i].value));
  }
  return makeInstance<Object, DictionaryInstance>(std::move(entries));
}

Object objectFrom(const dom::element& element) {
  switch (element.type()) {
    case dom::element_type::ARRAY:
      return arrayFrom(dom::array(element));
    case dom::element_type::OBJECT:
      return dictionaryFrom(dom::object(element));
    case dom::element_type::STRING:
      return textFrom(std::string_view(element));
    case dom::element_type::INT64:
      return makeInstance<Object, NumberInstance>(std::int64_t(element));
    case dom::element_type::UINT64:
      return makeInstance<Object, NumberInstance>(std::uint64_t(element));
    case dom::element_type::DOUBLE:
      return makeInstance<Object, NumberInstance>(double(element));
    case dom::element_type::BOOL:
      return makeInstance<Object, NumberInstance>(bool(element));
    case dom::element_type::NULL_VALUE:
      break;
  }
  return makeInstance<Object, NullInstance>();
}

bool isContainer(const json::Value& value) {
  return value.get<json::Dictionary>() != nullptr || value.get<json::Array>() != nullptr;
}

/// The project's own reader, which decides about what the fast one refuses.
Object readCarefully(std::string_view text) {
  const auto read = json::read(text, {.keepUnsignedIntegers = true});
  const auto* value = std::get_if<json::Value>(&read);
  return value != nullptr && isContainer(*value) ? simulated::objectFrom(*value) : Object();
}

/// What simdjson takes or refuses by its version: one more byte order mark, and more digits than a real has
/// before its point, whatever the exponent.
bool dependsOnVersion(std::string_view text) {
  constexpr std::string_view kDigits = "0123456789";
  constexpr std::size_t kMostDigits = std::numeric_limits<double>::max_exponent10;
  if (base::startsWithByteOrderMark(text)) return true;
  for (std::size_t at = kMostDigits; at < text.size(); at += kMostDigits) {  // no longer row fits in between
    if (kDigits.find(text[at]) == std::string_view::npos) continue;
    const std::size_t first = text.find_last_not_of(kDigits, at) + 1;
    if (std::min(text.find_first_not_of(kDigits, at), text.size()) - first > kMostDigits) return true;
  }
  return false;
}

dom::parser makeParser() {
  dom::parser parser;
  if (parser.allocate(4096, json::kDeepest) != simdjson::SUCCESS) throw std::bad_alloc();
  return parser;
}

}  // namespace

Object JSONObjectWithData(const NSData& data, unsigned long /*options*/) {
  if (!data) return nullptr;
  const std::string_view text = base::withoutByteOrderMark(known<DataInstance>(data)->bytes);
  if (dependsOnVersion(text)) return readCarefully(text);
  thread_local dom::parser parser = makeParser();
  dom::element root;
  if (parser.parse(text).get(root) != simdjson::SUCCESS) return readCarefully(text);
  return root.is_object() || root.is_array() ? objectFrom(root) : Object();
}

}  // namespace quorvantis::platform::NSJSONSerialization
