// The names of enumerators in scenarios and messages. Any thread.
#pragma once

#include <array>
#include <optional>
#include <string_view>

#include "device/device.h"
#include "scenario/host.h"
#include "scenario/push_service.h"

namespace quorvantis::scenario {

template <class Value>
struct Named {
  Value value;
  const char* name;
};

/// All values of an enumeration, with their names.
template <class Value>
inline constexpr auto kNamed = nullptr;

template <>
inline constexpr std::array<Named<device::Build>, 2> kNamed<device::Build> = {
    {{device::Build::device, "device"}, {device::Build::simulator, "simulator"}}};

template <>
inline constexpr std::array<Named<device::ApplicationState>, 3> kNamed<device::ApplicationState> = {
    {{device::ApplicationState::active, "active"},
     {device::ApplicationState::inactive, "inactive"},
     {device::ApplicationState::background, "background"}}};

template <>
inline constexpr std::array<Named<Arrival>, 3> kNamed<Arrival> = {
    {{Arrival::foreground, "foreground"}, {Arrival::background, "background"}, {Arrival::tap, "tap"}}};

template <>
inline constexpr std::array<Named<Fault>, 5> kNamed<Fault> = {{{Fault::refuse, "refuse"},
                                                               {Fault::untrusted, "untrusted"},
                                                               {Fault::reset, "reset"},
                                                               {Fault::truncate, "truncate"},
                                                               {Fault::silence, "silence"}}};

template <class Value>
constexpr const char* nameOf(Value value) {
  for (const auto& named : kNamed<Value>) {
    if (named.value == value) return named.name;
  }
  return "";
}

/// Nothing for an unknown name.
template <class Value>
std::optional<Value> valueOf(std::string_view name) {
  for (const auto& named : kNamed<Value>) {
    if (named.name == name) return named.value;
  }
  return std::nullopt;
}

}  // namespace quorvantis::scenario
