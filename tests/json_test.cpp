#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "json/read.h"
#include "json/write.h"

namespace quorvantis::json {
namespace {

using namespace std::string_literals;

Value valueOf(std::string_view text) {
  auto result = read(text);
  if (const auto* problem = std::get_if<Problem>(&result)) {
    ADD_FAILURE() << text << ": " << problem->reason << " at " << problem->offset;
    return {};
  }
  return std::get<Value>(std::move(result));
}

/// "offset reason", or "" when there is a value.
std::string problemOf(std::string_view text, ReadOptions options = {}) {
  const auto result = read(text, options);
  const auto* problem = std::get_if<Problem>(&result);
  return problem == nullptr ? "" : std::to_string(problem->offset) + " " + problem->reason;
}

TEST(JsonReading, KeepsTheKindOfEveryValue) {
  EXPECT_EQ(valueOf(R"( [null, true, false, 0, -0, 1, 1.0, 1e5, 1E+2, "", {}, []] )"),
            Value(Array{nullptr, true, false, 0, 0, 1, 1.0, 100000.0, 100.0, "", Dictionary(), Array()}));
  EXPECT_EQ(valueOf("[9223372036854775807,-9223372036854775808]"),
            Value(Array{std::numeric_limits<std::int64_t>::max(), std::numeric_limits<std::int64_t>::min()}));
  EXPECT_EQ(valueOf("[9223372036854775808,-123456789012345678901234567890]"),
            Value(Array{9223372036854775808.0, -123456789012345678901234567890.0}));
  const auto unsignedOnes =
      read("[18446744073709551615,18446744073709551616,7]", {.keepUnsignedIntegers = true});
  EXPECT_EQ(std::get<Value>(unsignedOnes),
            Value(Array{std::uint64_t{18446744073709551615U}, 18446744073709551616.0, 7}));
  EXPECT_EQ(Value(std::uint64_t{7}), Value(7));
}

TEST(JsonReading, RoundsRealsCorrectlyAtTheEdgesOfTheirRange) {
  EXPECT_EQ(valueOf("1.7976931348623157e308"), Value(std::numeric_limits<double>::max()));
  EXPECT_EQ(valueOf("4.9e-324"), Value(std::numeric_limits<double>::denorm_min()));
  EXPECT_EQ(valueOf("9007199254740993.0"), Value(9007199254740992.0));
  EXPECT_EQ(valueOf("0." + std::string(400, '0') + "1e401"), Value(1.0));
  for (const char* tiny : {"-1e-400", "-0.00000000000000000000001e-2147483639", "-1e-99999999999999"}) {
    const Value zero = valueOf(tiny);
    ASSERT_NE(zero.get<double>(), nullptr);
    EXPECT_TRUE(*zero.get<double>() == 0 && std::signbit(*zero.get<double>())) << tiny;
  }
  for (const std::string& huge : {"1e309"s, "-1.8e308"s, "0.18e310"s, std::string(310, '9') + ".5"}) {
    EXPECT_EQ(problemOf(huge), "0 the number is beyond a real's range");
  }
}

TEST(JsonReading, KeepsStringsByteForByte) {
  EXPECT_EQ(valueOf(R"("a\u0000b\"\\\/\b\f\n\r\té\u20AC\ud83d\ude00\ud7ff\ue000")"),
            Value("a\0b\"\\/\b\f\n\r\té€😀\xED\x9F\xBF\xEE\x80\x80"s));
  EXPECT_EQ(valueOf(R"({"\u0000":1,"":2,"\u00e9":3})"), Value(Dictionary{{"\0"s, 1}, {"", 2}, {"é", 3}}));
}

TEST(JsonReading, ReportsWhatIsWrongAndWhere) {
  const std::pair<std::string, std::string> cases[] = {
      {"", "0 there is no value"},
      {" \n", "2 there is no value"},
      {"[1,2", "4 the text ends too early"},
      {"{\"a\":", "5 the text ends too early"},
      {"\"abc", "4 the text ends too early"},
      {"tru", "3 the text ends too early"},
      {"1 2", "2 there is more text after the value"},
      {"1\0"s, "1 there is more text after the value"},
      {"\0"s, "0 this is not a value"},
      {"\xEF\xBB\xBF{}", "0 this is not a value"},
      {"[1,]", "3 this is not a value"},
      {"{\"a\":1,}", "7 a key in quotation marks is missing"},
      {"{a:1}", "1 a key in quotation marks is missing"},
      {"{\"a\" 1}", "5 the colon after a key is missing"},
      {"{\"a\":1 \"b\"}", "7 a comma or a closing brace is missing"},
      {"[1 2]", "3 a comma or a closing bracket is missing"},
      {"[01]", "2 a comma or a closing bracket is missing"},
      {"[+1]", "1 this is not a value"},
      {"[1.]", "3 the digits after the decimal point are missing"},
      {"[1e+]", "4 the digits of the exponent are missing"},
      {"[NaN]", "1 this is not a value"},
      {"[\"a\nb\"]", "3 a control character in a string is not escaped"},
      {"[\"a\0b\"]"s, "3 a control character in a string is not escaped"},
      {R"(["\x"])", "2 there is no such escape"},
      {R"(["\u12g4"])", "2 the escape lacks its four hexadecimal digits"},
      {R"(["a\ud800"])", "3 half of a surrogate pair"},
      {R"(["\ud800\u0041"])", "2 half of a surrogate pair"},
      {R"( [ "\\\ud83d\ude00\udc00"])", "18 half of a surrogate pair"},
      {R"({"a":1,"\uDFFF":2})", "8 half of a surrogate pair"},
      {"[\"a\xC0\xAF\"]", "3 the text is not UTF-8"},
      {"[\"\xED\xA0\x80\"]", "2 the text is not UTF-8"},
      {"[\"\xF4\x90\x80\x80\"]", "2 the text is not UTF-8"},
      {"[\"\xE2\x82\"]", "2 the text is not UTF-8"},
  };
  for (const auto& [text, problem] : cases) EXPECT_EQ(problemOf(text), problem) << text;
}

TEST(JsonReading, BoundsTheDepth) {
  const auto nested = [](std::size_t depth) { return std::string(depth, '[') + std::string(depth, ']'); };
  EXPECT_EQ(problemOf(nested(kDeepest)), "");
  EXPECT_EQ(problemOf(nested(kDeepest + 1)), "512 the value is nested deeper than 512 levels");
  EXPECT_NE(problemOf(std::string(8'000'000, '[')), "");
}

TEST(JsonReading, RefusesWhatItsOptionsRefuse) {
  EXPECT_EQ(valueOf(R"({"a":1,"b":2,"a":{"a":3}})"),
            Value(Dictionary{{"a", Dictionary{{"a", 3}}}, {"b", 2}}));
  const ReadOptions strict{.refuseDuplicateKeys = true, .refuseWideIntegers = true};
  EXPECT_EQ(problemOf(R"({"a":{"a":3}, "\u0061":1})", strict), "14 the object already has this key");
  EXPECT_EQ(problemOf("[1, 9223372036854775808]", strict), "4 the whole number is beyond 64 bits");
  EXPECT_EQ(problemOf("[-" + std::string(400, '9') + "]", strict), "1 the whole number is beyond 64 bits");
  EXPECT_EQ(problemOf("[-9223372036854775808, 1e300]", strict), "");
}

TEST(JsonReading, ReportsPositionsToAnObserver) {
  struct Recorder : Observer {
    std::vector<std::string> events;
    void key(std::string_view key, std::size_t offset, bool repeated) override {
      events.push_back(std::to_string(offset) + " key " + std::string(key) + (repeated ? " again" : ""));
    }
    void scalar(std::size_t offset, const Value& value) override {
      events.push_back(std::to_string(offset) + " " + write(value));
    }
    void begin(std::size_t offset, bool object) override {
      events.push_back(std::to_string(offset) + (object ? " object" : " array"));
    }
    void end() override { events.emplace_back("end"); }
  } recorder;
  read(R"( {"a,:" : [ 1,"\"é,", -2.5 ,{} ] ,"a,:":null} )", {}, &recorder);
  const std::vector<std::string> expected = {"1 object",      "2 key a,:",        "10 array",  "12 1",
                                             "14 \"\\\"é,\"", "23 -2.5",          "29 object", "end",
                                             "end",           "35 key a,: again", "41 null",   "end"};
  EXPECT_EQ(recorder.events, expected);

  const std::string_view text = "{\n \"é\": 1}";
  EXPECT_EQ(placeOf(text, 0).line, 1U);
  EXPECT_EQ(placeOf(text, text.find('1')).line, 2U);
  EXPECT_EQ(placeOf(text, text.find('1')).column, 7U);
}

TEST(JsonWriting, IsCompactAndSortedWithTheFewestEscapes) {
  const Value value = Dictionary{{"\uFF5E", 1},
                                 {"😀", Array{nullptr, true, -5, Data{"\x00\xffz"s}}},
                                 {"a", Dictionary{{"/", "\"\\\b\f\n\r\t\x01\x1f\x7f/é"s + '\0'}}}};
  EXPECT_EQ(write(value),
            "{\"a\":{\"/\":\"\\\"\\\\\\b\\f\\n\\r\\t\\u0001\\u001f\x7f/é\\u0000\"},\"\uFF5E\":1,"
            "\"😀\":[null,true,-5,\"00ff7a\"]}");
}

TEST(JsonWriting, WritesRealsInTheirShortestFormAndAsReals) {
  const std::pair<double, std::pair<const char*, const char*>> cases[] = {
      {0.0, {"0", "0.0"}},
      {-0.0, {"-0", "-0.0"}},
      {1.0, {"1", "1.0"}},
      {-12.5, {"-12.5", "-12.5"}},
      {0.1, {"0.1", "0.1"}},
      {100000.0, {"100000", "100000.0"}},
      {1e-4, {"0.0001", "0.0001"}},
      {-1.25e-5, {"-1.25e-05", "-1.25e-05"}},
      {1e15, {"1000000000000000", "1000000000000000.0"}},
      {1234567890123456.5, {"1234567890123456.5", "1234567890123456.5"}},
      {1e16, {"1e+16", "1e+16"}},
      {1.5e300, {"1.5e+300", "1.5e+300"}},
      {std::numeric_limits<double>::denorm_min(), {"5e-324", "5e-324"}},
  };
  for (const auto& [number, texts] : cases) {
    EXPECT_EQ(shortest(number), texts.first);
    EXPECT_EQ(write(number), texts.second);
    EXPECT_EQ(valueOf(write(number)), Value(number));
  }
}

}  // namespace
}  // namespace quorvantis::json
