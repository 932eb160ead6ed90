#include "fuzz/json_mutator.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <random>
#include <vector>

#include "json/read.h"
#include "json/write.h"

namespace quorvantis::fuzz {

namespace {

using json::Array;
using json::Dictionary;
using json::Value;

constexpr const char* kKeys[] = {"aps",
                                 "alert",
                                 "title",
                                 "body",
                                 "badge",
                                 "content-available",
                                 "type",
                                 "urlnoti",
                                 "extra1",
                                 "extra2",
                                 "extra3",
                                 "extra4",
                                 "extra5",
                                 "customType",
                                 "error",
                                 "errorDescripcion",
                                 "token",
                                 "pushExtra1",
                                 "sound",
                                 "Simulator Target Bundle",
                                 "mutable-content"};

constexpr const char* kTexts[] = {"",
                                  "pushlib-normal",
                                  "pushlib-abrirapp",
                                  "pushlib-abrirurl",
                                  "pushlib-extras",
                                  "Pushlib-normal",
                                  "silent",
                                  "si",
                                  "no",
                                  "error",
                                  "https://example.com/a?b=c#d",
                                  "https://[::1]:8/%zz",
                                  "7",
                                  " -9223372036854775809x",
                                  "\xF0\x9F\x98\x80",
                                  "%@%n"};

template <class Choices>
auto& oneOf(Choices& choices, std::minstd_rand& random) {
  return *std::next(std::begin(choices),
                    static_cast<std::ptrdiff_t>(random() % static_cast<unsigned>(std::size(choices))));
}

void gather(Value& value, std::vector<Value*>& all) {
  all.push_back(&value);
  if (auto* array = value.get<Array>()) {
    for (Value& element : *array) gather(element, all);
  } else if (auto* dictionary = value.get<Dictionary>()) {
    for (auto& entry : *dictionary) gather(entry.second, all);
  }
}

Value newValue(std::minstd_rand& random) {
  switch (random() % 12) {
    case 0:
      return {};
    case 1:
      return random() % 2 == 0;
    case 2:
      return static_cast<std::int64_t>(random() % 3);
    case 3:
      return random() % 2 == 0 ? std::numeric_limits<std::int64_t>::max()
                               : std::numeric_limits<std::int64_t>::min();
    case 4:
      return random() % 2 == 0 ? 1.5 : -1e300;
    case 5:
      return Array{Value(1), Value("x")};
    case 6:
      return Dictionary{};
    case 7:
      return Dictionary{{"title", "t"}, {"body", "b"}};
    default:
      return oneOf(kTexts, random);
  }
}

void mutate(Value& root, std::minstd_rand& random) {
  std::vector<Value*> all;
  gather(root, all);
  Value& chosen = *oneOf(all, random);
  const Value added = random() % 4 == 0 ? *oneOf(all, random) : newValue(random);
  if (auto* dictionary = chosen.get<Dictionary>(); dictionary != nullptr && random() % 8 != 0) {
    if (random() % 4 == 0 && !dictionary->empty()) {
      dictionary->erase(oneOf(*dictionary, random).first);
    } else {
      dictionary->insert_or_assign(oneOf(kKeys, random), added);
    }
  } else if (auto* array = chosen.get<Array>(); array != nullptr && random() % 4 != 0) {
    array->insert(array->begin() + static_cast<std::ptrdiff_t>(random() % (array->size() + 1)), added);
  } else {
    chosen = added;
  }
}

}  // namespace

std::string mutateJSON(const std::string& text, unsigned seed) {
  auto read = json::read(text);
  auto* value = std::get_if<Value>(&read);
  if (value == nullptr) return text;
  std::minstd_rand random(seed);
  for (unsigned times = 1 + static_cast<unsigned>(random() % 4); times > 0; --times) mutate(*value, random);
  return json::write(*value);
}

}  // namespace quorvantis::fuzz
