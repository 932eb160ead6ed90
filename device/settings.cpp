#include "device/settings.h"

#include <openssl/crypto.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <mutex>
#include <stdexcept>
#include <utility>

#include "base/hexadecimal.h"
#include "device/settings_database.h"
#include "json/read.h"
#include "json/write.h"

namespace quorvantis::device {
namespace {

// A row is readable JSON. Its strings begin with '=', data is '#' and hexadecimal digits, and the reals that
// JSON can't represent are "nan", "inf" and "-inf".

struct Encoder {
  json::Value operator()(const std::string& text) const { return "=" + text; }
  json::Value operator()(const json::Data& data) const { return "#" + base::hexadecimal(data.bytes); }
  json::Value operator()(double real) const {
    return std::isfinite(real) ? json::Value(real) : json::Value(json::shortest(real));
  }
  json::Value operator()(const json::Array& array) const {
    json::Array encoded;
    for (const json::Value& element : array) encoded.push_back(std::visit(*this, element.variant()));
    return encoded;
  }
  json::Value operator()(const json::Dictionary& dictionary) const {
    json::Dictionary encoded;
    for (const auto& [key, value] : dictionary) encoded.emplace(key, std::visit(*this, value.variant()));
    return encoded;
  }
  template <class Plain>
  json::Value operator()(const Plain& plain) const {
    return plain;
  }
};

std::string encode(const json::Value& value) {
  return json::write(std::visit(Encoder{}, value.variant()));
}

bool decodeData(std::string_view digits, json::Value& value) {
  auto bytes = base::bytesFromHexadecimal(digits);
  if (bytes) value = json::Data{std::move(*bytes)};
  return bytes.has_value();
}

bool decodeText(const std::string& text, json::Value& value) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  if (text.starts_with('#')) return decodeData(std::string_view(text).substr(1), value);
  if (text.starts_with('=')) {
    value = json::Value(text.substr(1));
  } else if (text == "inf" || text == "-inf") {
    value = text == "inf" ? kInfinity : -kInfinity;
  } else if (text == "nan" || text == "-nan") {
    value = std::numeric_limits<double>::quiet_NaN();
  } else {
    return false;
  }
  return true;
}

/// Turns a row's JSON into the value that was stored.
bool decodeInPlace(json::Value& value) {
  if (value.isNull()) return false;
  if (auto* array = value.get<json::Array>()) {
    for (json::Value& element : *array) {
      if (!decodeInPlace(element)) return false;
    }
  } else if (auto* dictionary = value.get<json::Dictionary>()) {
    for (auto& entry : *dictionary) {
      if (!decodeInPlace(entry.second)) return false;
    }
  } else if (const auto* text = value.get<std::string>()) {
    return decodeText(std::string(*text), value);
  }
  return true;
}

std::optional<json::Value> decode(std::string_view row) {
  auto result = json::read(row, {.refuseDuplicateKeys = true, .refuseWideIntegers = true});
  auto* value = std::get_if<json::Value>(&result);
  if (value == nullptr || !decodeInPlace(*value)) return std::nullopt;
  return std::move(*value);
}

}  // namespace

struct Settings::State {
  explicit State(std::filesystem::path path) : file(std::move(path)) {}

  void open();
  [[nodiscard]] std::shared_ptr<SettingsDatabase> openDatabase();
  void note(std::string key, std::optional<std::string> row);
  void synchronize();
  void close();

  const std::filesystem::path file;
  std::mutex mutex;
  std::shared_ptr<SettingsDatabase> database;  // null: not open
  std::shared_ptr<SettingsDatabase> inMemory;  // replaces the file, open or not
  json::Dictionary values;
  /// Changes that are not on disk yet.
  SettingsDatabase::Changes changes;
};

void Settings::State::open() {
  if (database != nullptr) return;
  auto opened = openDatabase();
  json::Dictionary read;
  for (const auto& [key, row] : opened->rows()) {
    auto value = decode(row);
    if (!value)
      throw SettingsError(SettingsDatabase::damaged(file, "the value of " + key + " is unreadable"));
    read.emplace(key, std::move(*value));
  }
  values = std::move(read);
  database = std::move(opened);
}

std::shared_ptr<SettingsDatabase> Settings::State::openDatabase() {
  if (file.empty()) {
    if (inMemory == nullptr) inMemory = std::make_shared<SettingsDatabase>();
    inMemory->reload();
    return inMemory;
  }
  std::error_code problem;
  const std::filesystem::path path = std::filesystem::absolute(file, problem);
  if (problem) {
    throw SettingsError("the settings file \"" + file.string() + "\" can't be found (" + problem.message() +
                        "); name another");
  }
  return std::make_shared<SettingsDatabase>(path);
}

void Settings::State::note(std::string key, std::optional<std::string> row) {
  const auto stored = database->rows().find(key);
  const bool isStored = stored != database->rows().end();
  const bool asOnDisk = row ? isStored && stored->second == *row : !isStored;
  if (asOnDisk) {
    changes.erase(key);
  } else {
    changes.insert_or_assign(std::move(key), std::move(row));
  }
}

void Settings::State::synchronize() {
  if (database == nullptr || changes.empty()) return;
  database->write(changes);
  changes.clear();
}

void Settings::State::close() {
  if (database == nullptr) return;
  synchronize();
  database.reset();
  values.clear();
}

Settings::Settings(std::filesystem::path file) : state_(std::make_unique<State>(std::move(file))) {
  // What lives until the process ends is written then, with OpenSSL, which frees itself at exit: after this.
  OPENSSL_init_crypto(OPENSSL_INIT_ADD_ALL_DIGESTS, nullptr);
}

Settings::~Settings() {
  try {
    state_->close();
  } catch (const std::exception&) {
    // Only close() can report a failure.
  }
}

void Settings::open() {
  const std::lock_guard lock(state_->mutex);
  state_->open();
}

bool Settings::isOpen() const {
  const std::lock_guard lock(state_->mutex);
  return state_->database != nullptr;
}

std::optional<json::Value> Settings::get(std::string_view key) {
  const std::lock_guard lock(state_->mutex);
  state_->open();
  const auto entry = state_->values.find(key);
  if (entry == state_->values.end()) return std::nullopt;
  return entry->second;
}

void Settings::set(std::string key, json::Value value) {
  const std::lock_guard lock(state_->mutex);
  state_->open();
  std::string row = encode(value);
  // A value that can't be read back must not make the whole file unreadable.
  if (!decode(row)) throw std::invalid_argument("the user defaults can't hold the value of " + key);
  state_->note(key, std::move(row));
  state_->values.insert_or_assign(std::move(key), std::move(value));
}

void Settings::remove(std::string_view key) {
  const std::lock_guard lock(state_->mutex);
  state_->open();
  const auto entry = state_->values.find(key);
  if (entry == state_->values.end()) return;
  state_->values.erase(entry);
  state_->note(std::string(key), std::nullopt);
}

json::Dictionary Settings::values() {
  const std::lock_guard lock(state_->mutex);
  state_->open();
  return state_->values;
}

void Settings::synchronize() {
  const std::lock_guard lock(state_->mutex);
  state_->synchronize();
}

void Settings::close() {
  const std::lock_guard lock(state_->mutex);
  state_->close();
}

bool isPropertyList(const json::Value& value) {
  if (const auto* array = value.get<json::Array>()) {
    return std::all_of(array->begin(), array->end(), isPropertyList);
  }
  if (const auto* dictionary = value.get<json::Dictionary>()) {
    return std::all_of(dictionary->begin(), dictionary->end(),
                       [](const auto& entry) { return isPropertyList(entry.second); });
  }
  return !value.isNull();
}

}  // namespace quorvantis::device
