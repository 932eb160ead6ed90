// The names of what reports on payloads speak of, in both their forms. Any thread.
#pragma once

#include "lint/explanation.h"
#include "lint/rules.h"
#include "lint/sentences.h"
#include "scenario/names.h"

namespace quorvantis::scenario {

template <>
inline constexpr std::array<Named<lint::Severity>, 3> kNamed<lint::Severity> = {
    {{lint::Severity::error, "error"}, {lint::Severity::warning, "warning"}, {lint::Severity::note, "note"}}};

template <>
inline constexpr std::array<Named<lint::Outcome::When>, 2> kNamed<lint::Outcome::When> = {
    {{lint::Outcome::When::onOK, "onOK"}, {lint::Outcome::When::oneSecondLater, "oneSecondLater"}}};

template <>
inline constexpr std::array<Named<lint::Sentence::About>, 4> kNamed<lint::Sentence::About> = {
    {{lint::Sentence::About::other, "other"},
     {lint::Sentence::About::alert, "alert"},
     {lint::Sentence::About::report, "report"},
     {lint::Sentence::About::end, "end"}}};

}  // namespace quorvantis::scenario

namespace quorvantis::lint {

/// Of the two methods that a payload may reach, the one for those that wake the application.
inline constexpr const char* kSecondCall = "application:didReceiveRemoteNotification:fetchCompletionHandler:";

using scenario::nameOf;

}  // namespace quorvantis::lint
