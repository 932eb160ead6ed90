#include "phone/saved_scenario.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "json/write.h"

namespace quorvantis::phone {

SavedScenario::SavedScenario(const std::vector<std::string>& remarks, const json::Dictionary& stored) {
  for (const std::string& remark : remarks) head_.push_back(share("# " + remark));
  if (stored.empty()) return;
  // What was stored before the application started.
  head_.push_back(share(json::write(json::Dictionary{{"do", "store"}, {"set", stored}})));
}

void SavedScenario::add(const scenario::Step& step, SharedText line) {
  if (step.name() == "server") {
    const auto& answers = *step.find("answers")->get<json::Array>();
    queued_.insert(queued_.end(), answers.begin(), answers.end());
  } else if (std::exchange(isWaiting_, false)) {
    const auto waiting = entries_.begin() + static_cast<std::ptrdiff_t>(last_);
    entries_.insert(waiting, {std::move(line)});
    ++last_;
  } else {
    last_ = entries_.size();
    entries_.push_back({std::move(line)});
  }
}

void SavedScenario::add(const Act&, SharedText line) {
  entries_.push_back({std::move(line), true});
}

void SavedScenario::took(std::size_t answers, std::size_t refusals) {
  if (answers + refusals == 0) return;
  json::Array& taken = entries_.at(last_).answers;
  const auto end = queued_.begin() + static_cast<std::ptrdiff_t>(std::min(answers, queued_.size()));
  std::move(queued_.begin(), end, std::back_inserter(taken));
  queued_.erase(queued_.begin(), end);
  taken.insert(taken.end(), refusals, json::Dictionary{{"fault", "refuse"}});
}

SavedScenario::Text SavedScenario::text() const {
  Text text;
  const auto addAnswers = [&](const json::Array& answers) {
    if (answers.empty()) return;
    text.lines_.emplace_back("",
                             share(json::write(json::Dictionary{{"do", "server"}, {"answers", answers}})));
  };
  text.lines_.reserve(head_.size() + entries_.size());
  for (const SharedText& line : head_) text.lines_.emplace_back("", line);
  for (std::size_t i = 0; i < entries_.size(); ++i) {
    if (isWaiting_ && i == last_) {
      text.lines_.emplace_back("",
                               share("# The phone asked for permission here, and nobody had answered yet."));
      continue;
    }
    addAnswers(entries_[i].answers);
    text.lines_.emplace_back(entries_[i].isAct ? kActComment : "", entries_[i].line);
  }
  addAnswers(queued_);
  return text;
}

std::string SavedScenario::Text::take() {
  std::string some;
  for (; next_ < lines_.size() && some.size() < kMostBytesAtOnce; ++next_) {
    some.append(lines_[next_].first).append(*lines_[next_].second).append("\n");
  }
  return some;
}

std::string SavedScenario::Text::takeAll() {
  std::string all;
  for (std::string some = take(); !some.empty(); some = take()) all += some;
  return all;
}

}  // namespace quorvantis::phone
