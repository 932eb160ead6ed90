#include "json/read.h"
#include "platform/NSJSONSerialization.h"
#include "tests/phone.h"

namespace quorvantis::platform {
namespace {

using simulated::objectFrom;
using simulated::valueFrom;
using ValuesTest = PhoneTest;

std::string nested(std::size_t depth) {
  return std::string(depth, '[') + std::string(depth, ']');
}

// The quick reader of answers and the one that tells of every problem must take, and make, the same.
TEST_F(ValuesTest, AnswersAreReadLikeOtherJson) {
  const std::string texts[] = {
      R"({"b":[1,-2,0.5,1e-3,true,false,null,{}],"a":"x\n\u00e9\ud83d\ude00","A":{"z":{},"y":[]}})",
      R"({"a":1,"b":2,"a":3})",
      R"({"b":1,"a":{"c":1,"c":2},"b":[4]})",
      R"({"a\u0000b":"\u0000"})",
      "[-0,-0.0,1e-400,-1e-400,9223372036854775807,-9223372036854775808,4.9e-324]",
      "[9223372036854775808]",
      "[18446744073709551615]",
      "[18446744073709551616]",
      "[-9223372036854775809]",
      "[1e400]",
      " \t\r\n[1] ",
      std::string("[1]\0", 4),
      R"(["\ud800"])",
      R"(["\udc00"])",
      "[\"\xED\xA0\x80\"]",
      "[\"\xFF\"]",
      "[\"\t\"]",
      "[01]",
      "[" + std::string(308, '9') + "e-300]",
      "[1" + std::string(308, '0') + "e-300]",
      "[1" + std::string(400, '0') + "e-400]",
      "[\"" + std::string(400, '1') + "\"]",
      "[1,]",
      R"({"a":1,})",
      "[1]]",
      "[nul]",
      "[",
      "",
      nested(json::kDeepest),
      nested(json::kDeepest + 1),
      nested(2000),
  };
  for (const std::string& text : texts) {
    const auto careful = json::read(text, {.keepUnsignedIntegers = true});
    const auto* expected = std::get_if<json::Value>(&careful);
    const Object quick = NSJSONSerialization::JSONObjectWithData(data(text), 0);
    EXPECT_EQ(bool(quick), expected != nullptr) << text;
    if (quick && expected != nullptr) {
      EXPECT_EQ(valueFrom(quick), *expected) << text;
    }
  }
  const std::string mark = "\xEF\xBB\xBF";
  EXPECT_EQ(valueFrom(NSJSONSerialization::JSONObjectWithData(data(mark + "[1]"), 0)),
            json::Value(json::Array{1}));
  EXPECT_FALSE(NSJSONSerialization::JSONObjectWithData(data(mark + mark + "[1]"), 0));
  EXPECT_FALSE(NSJSONSerialization::JSONObjectWithData(data("1"), 0));
  EXPECT_FALSE(NSJSONSerialization::JSONObjectWithData(data("\"text\""), 0));
}

TEST_F(ValuesTest, ACopyDoesNotChange) {
  const auto original = NSMutableDictionary::dictionary();
  for (const char* key : {"m", "c", "x", "a", "y", "b"}) original.setObject(text(key), text(key));
  const NSDictionary first = original.copy();
  original.setObject(text("new"), text("c"));
  const NSDictionary second = original.copy();
  original.setObject(text("later"), text("k"));

  EXPECT_EQ(valueFrom(first), json::Value(json::Dictionary{
                                  {"a", "a"}, {"b", "b"}, {"c", "c"}, {"m", "m"}, {"x", "x"}, {"y", "y"}}));
  EXPECT_EQ(read(second.objectForKey(text("c"))), "new");
  EXPECT_FALSE(second.objectForKey(text("k")));
  EXPECT_EQ(read(original.objectForKey(text("k"))), "later");

  std::string keys;
  original.enumerateKeys([&](const NSString& key) { keys += *read(key); });
  EXPECT_EQ(keys, "abckmxy");
}

TEST_F(ValuesTest, OnlyAMutableDictionaryIsChanged) {
  const auto original = NSMutableDictionary::dictionary();
  original.setObject(text("v"), text("k"));
  const NSDictionary immutable[] = {
      original.copy(), dictionary({{"k", "v"}}),
      NSJSONSerialization::JSONObjectWithData(data(R"({"k":"v"})"), 0).as<NSDictionary>()};
  for (const NSDictionary& each : immutable) {
    const auto seenAsMutable = each.as<NSMutableDictionary>();
    EXPECT_EQ(raisedBy([&] { seenAsMutable.setObject(text("new"), text("k")); }), "setObject:forKey:");
    EXPECT_TRUE(seenAsMutable.copy().isSame(each));
    EXPECT_EQ(valueFrom(each), json::Value(json::Dictionary{{"k", "v"}}));
  }
}

// A description is what a log line shows of a refusal's reason that is not a string.
TEST_F(ValuesTest, ContainersAreDescribedWithTheirValues) {
  const Object reason = objectFrom(
      json::Dictionary{{"a", json::Array{1, true, nullptr, 2.5}}, {"b", json::Data{"\x01\x02\x03\x04\xFF"}}});
  EXPECT_EQ(simulated::textOf(reason),
            "{\n    a = (\n    1,\n    1,\n    <null>,\n    2.5,\n);\n    b = <01020304 ff>;\n}");
}

TEST_F(ValuesTest, NumbersAreComparedByValueAndDataByBytes) {
  const auto areEqual = [](const json::Value& a, const json::Value& b) {
    return objectFrom(a).isEqual(objectFrom(b));
  };
  EXPECT_TRUE(areEqual(1, 1.0) && areEqual(true, 1) && areEqual(nullptr, nullptr));
  EXPECT_FALSE(areEqual(1, 2) || areEqual(1, "1") || areEqual(0, nullptr));
  EXPECT_FALSE(areEqual(std::int64_t{9007199254740992}, std::int64_t{9007199254740993}));
  EXPECT_TRUE(areEqual(json::Data{"ab"}, json::Data{"ab"}));
  EXPECT_FALSE(areEqual(json::Data{"ab"}, json::Data{"ac"}) || areEqual(json::Data{"ab"}, "ab"));
}

}  // namespace
}  // namespace quorvantis::platform
