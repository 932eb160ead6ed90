// What iOS 10's C++ library lacks. Each line must be refused, which shows that the annotations are in effect.
// Newer libc++ no longer knows what came before iOS 13: where that is the one at hand, the older one's lines
// are left out.
#include <atomic>
#include <charconv>
#include <optional>
#include <variant>

#if _LIBCPP_VERSION < 180000  // 14.0 has 14000, 19.1.7 has 190107
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

void print(char (&text)[8]) {
  std::to_chars(text, text + 8, 7);  // expected-error {{introduced in iOS 13.0}}
}
#endif

struct alignas(64) Aligned {
  int number;
};
Aligned* allocate() {
  return new Aligned;  // expected-error 2 {{only available on iOS 11 or newer}}
}

void wait(const std::atomic<int>& number) {
  number.wait(3);  // expected-error {{introduced in iOS 14.0}}
}
