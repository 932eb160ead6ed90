#include "phone/saved_scenario.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "json/write.h"

namespace quorvantis::phone {

namespace {

void addLine(std::string& text, const std::string& line) {
  text += line;
  text += '\n';
}

void addAnswers(std::string& text, const json::Array& answers) {
  if (answers.empty()) return;
  addLine(text, json::write(json::Dictionary{{"do", "server"}, {"answers", answers}}));
}

}  // namespace

SavedScenario::SavedScenario(const std::vector<std::string>& remarks, const json::Dictionary& stored) {
  for (const std::string& remark : remarks) addLine(head_, "# " + remark);
  if (stored.empty()) return;
  // What was stored before the application started.
  addLine(head_, json::write(json::Dictionary{{"do", "store"}, {"set", stored}}));
}

void SavedScenario::add(const scenario::Step& step) {
  if (step.name() == "server") {
    const auto& answers = *step.find("answers")->get<json::Array>();
    queued_.insert(queued_.end(), answers.begin(), answers.end());
  } else if (std::exchange(isWaiting_, false)) {
    const auto waiting = entries_.begin() + static_cast<std::ptrdiff_t>(last_);
    entries_.insert(waiting, {step.text()});
    ++last_;
  } else {
    last_ = entries_.size();
    entries_.push_back({step.text()});
  }
}

void SavedScenario::add(const Act& act) {
  entries_.push_back({commentOf(act)});
}

void SavedScenario::took(std::size_t answers, std::size_t refusals) {
  if (answers + refusals == 0) return;
  json::Array& taken = entries_.at(last_).answers;
  const auto end = queued_.begin() + static_cast<std::ptrdiff_t>(std::min(answers, queued_.size()));
  std::move(queued_.begin(), end, std::back_inserter(taken));
  queued_.erase(queued_.begin(), end);
  taken.insert(taken.end(), refusals, json::Dictionary{{"fault", "refuse"}});
}

std::string SavedScenario::text() const {
  std::string text = head_;
  for (std::size_t i = 0; i < entries_.size(); ++i) {
    if (isWaiting_ && i == last_) {
      addLine(text, "# The phone asked for permission here, and nobody had answered yet.");
      continue;
    }
    addAnswers(text, entries_[i].answers);
    addLine(text, entries_[i].line);
  }
  addAnswers(text, queued_);
  return text;
}

}  // namespace quorvantis::phone
