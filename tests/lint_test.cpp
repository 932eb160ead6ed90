// The linter as a library: what a program gets that holds a simulated phone of its own.
#include "report/lint_service.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include "device/device.h"
#include "json/read.h"
#include "lint/document/document.h"
#include "lint/findings.h"

namespace quorvantis {
namespace {

TEST(LintService, AnswersInAProcessWithAPhone) {
  report::LintService service;
  // The helper is a copy from before there was a phone.
  const device::Device phone;
  for (const char* systemVersion : {"17.0", "16.4"}) {
    const auto read = json::read(service.reportOn(
        R"({"aps":{"alert":{"body":"x"},"type":"pushlib-abrirurl","urlnoti":"https://a.example/a b"}})",
        systemVersion));
    const auto* report = std::get_if<json::Value>(&read);
    ASSERT_NE(report, nullptr);
    const json::Value& finding = report->find("findings")->get<json::Array>()->front();
    EXPECT_EQ(*finding.find("code"), json::Value("link-needs-encoding"));
    const json::Value& tap = report->find("outcomes")->get<json::Array>()->back();
    const json::Value& opened = tap.find("opened")->get<json::Array>()->front();
    const bool isEncoded = *opened.find("url") == json::Value("https://a.example/a%20b");
    EXPECT_EQ(isEncoded, systemVersion == std::string("17.0"));
  }
}

TEST(LintService, AnswersAnyBytes) {
  report::LintService service;
  for (const std::string& text :
       {std::string(), std::string("\n"), std::string("\xFF\0{", 3), std::string(1 << 20, '[')}) {
    const auto read = json::read(service.reportOn(text, "17.0"));
    ASSERT_TRUE(std::holds_alternative<json::Value>(read));
    EXPECT_EQ(std::get_if<json::Value>(&read)->find("findings")->get<json::Array>()->size(), 1U);
  }
}

TEST(LintService, ReportsAFailureAndContinues) {
  base::HelperProcess helper([](const std::string& request) {
    if (request.empty()) throw std::runtime_error("no request");
    return request + request;
  });
  helper.send("");
  try {
    helper.receive();
    ADD_FAILURE() << "the failure was lost";
  } catch (const std::runtime_error& error) {
    EXPECT_STREQ(error.what(), "no request");
  }
  helper.send("ab");
  EXPECT_EQ(helper.receive(), "abab");
}

TEST(LintService, ReportsThatItsHelperHasEnded) {
  base::HelperProcess helper([](const std::string&) -> std::string { _exit(1); });
  helper.send("x");
  EXPECT_THROW(helper.receive(), std::runtime_error);
}

// An editor's marks: on one line, and on whole characters.
TEST(Findings, MarkTheRightRange) {
  const std::string text =
      "{\"aps\": {\n  \"alert\": {\"body\": \"é😀\"},\n  \"Badge\": 1, \"extra9\": [1,\n2]}}";
  const lint::Findings findings = lint::findIn(lint::PayloadDocument(text));
  std::vector<std::string> marked;
  for (const lint::Finding& finding : findings.shown) {
    EXPECT_EQ(finding.place.line, finding.end.line);
    marked.push_back(text.substr(finding.range.begin, finding.range.end - finding.range.begin));
  }
  EXPECT_EQ(marked, (std::vector<std::string>{"\"Badge\": 1", "\"extra9\""}));
}

// Of a repeated key the last value counts, and what was inside an earlier one is nowhere.
TEST(Findings, AreNotInsideALostValue) {
  const lint::Findings findings = lint::findIn(lint::PayloadDocument(R"({"data": {"aps": {}}, "data": 1})"));
  std::vector<std::string_view> codes;
  for (const lint::Finding& finding : findings.shown) codes.push_back(finding.rule->code);
  EXPECT_EQ(codes, (std::vector<std::string_view>{"no-aps", "duplicate-key"}));
}

}  // namespace
}  // namespace quorvantis
