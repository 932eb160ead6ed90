// What iOS 10's C++ library lacks. Each line must be refused, which shows that the annotations are in effect.
#include <atomic>
#include <charconv>
#include <optional>
#include <variant>

int value(const std::optional<int>& number) {
  return number.value();  // expected-error {{introduced in iOS 11.0}}
}

int get(const std::variant<int, char>& number) {
  return std::get<int>(number);  // expected-error {{introduced in iOS 11.0}}
}

int visit(const std::variant<int, char>& number) {
  const auto toInt = [](auto held) { return int{held}; };
  return std::visit(toInt, number);  // expected-error {{introduced in iOS 11.0}}
}

struct alignas(64) Aligned {
  int number;
};
Aligned* allocate() {
  return new Aligned;  // expected-error 2 {{only available on iOS 11 or newer}}
}

void print(char (&text)[8]) {
  std::to_chars(text, text + 8, 7);  // expected-error {{introduced in iOS 13.0}}
}

void wait(const std::atomic<int>& number) {
  number.wait(3);  // expected-error {{introduced in iOS 14.0}}
}
