#include "device/settings.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sqlite3.h>
#include <stdlib.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <fstream>
#include <functional>
#include <iterator>
#include <limits>
#include <string>
#include <thread>
#include <vector>

namespace quorvantis::device {
namespace {

namespace fs = std::filesystem;
using json::Array;
using json::Data;
using json::Dictionary;
using json::Value;

std::string contentOf(const fs::path& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

void writeFile(const fs::path& file, const std::string& content) {
  std::ofstream(file, std::ios::binary) << content;
}

/// Runs the steps in a process of their own, whose exit status tells whether they returned true.
pid_t inChild(const std::function<bool()>& steps) {
  const pid_t child = fork();
  if (child != 0) return child;
  bool passed = false;
  try {
    passed = steps();
  } catch (const std::exception& error) {
    fprintf(stderr, "%s\n", error.what());
  }
  _exit(passed ? 0 : 1);
}

int statusOf(pid_t child) {
  int status = -1;
  waitpid(child, &status, 0);
  return status;
}

class SettingsTest : public testing::Test {
 protected:
  SettingsTest() {
    std::string name = (fs::temp_directory_path() / "settings-XXXXXX").string();
    folder_ = mkdtemp(name.data());
    file_ = folder_ / "defaults.sqlite";
  }
  ~SettingsTest() override { fs::remove_all(folder_); }

  [[nodiscard]] fs::path journal() const { return file_.string() + "-wal"; }

  [[nodiscard]] Dictionary stored() const { return Settings(file_).values(); }

  void store(const Dictionary& values) const {
    Settings settings(file_);
    for (const auto& [key, value] : values) settings.set(key, value);
    settings.close();
  }

  /// What opening the file is refused with, or "" when it is not.
  [[nodiscard]] std::string refusal() const {
    try {
      Settings(file_).open();
      return "";
    } catch (const SettingsError& error) {
      EXPECT_NE(std::string(error.what()).find(file_.string()), std::string::npos) << error.what();
      return error.what();
    }
  }

  void expectRefusal(const std::string& part) const {
    const std::string before = contentOf(file_);
    const bool hadJournal = fs::exists(journal());
    EXPECT_NE(refusal().find(part), std::string::npos) << refusal();
    EXPECT_EQ(contentOf(file_), before);
    EXPECT_EQ(fs::exists(journal()), hadJournal);
  }

  void sql(const char* statements) const {
    sqlite3* connection = nullptr;
    ASSERT_EQ(sqlite3_open(file_.c_str(), &connection), SQLITE_OK);
    EXPECT_EQ(sqlite3_exec(connection, statements, nullptr, nullptr, nullptr), SQLITE_OK);
    sqlite3_close(connection);
  }

  fs::path folder_;
  fs::path file_;
};

TEST_F(SettingsTest, KeepEveryKindOfValue) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  const Dictionary values = {
      {"bool", true},
      {"one", 1},
      {"real", 1.0},
      {"least", std::numeric_limits<std::int64_t>::min()},
      {"infinite", kInfinity},
      {"text", "=#\"nan\xC3\xA9"},
      {"empty", ""},
      {"data", Data{std::string("\0\xff", 2)}},
      {std::string("\0'", 2), std::string("\0", 1)},
      {"tree", Dictionary{{"#", Array{Data{}, false, "inf", Dictionary{}, Array{}, -0.5}}}},
  };
  {
    Settings settings(file_);
    EXPECT_FALSE(fs::exists(file_));
    for (const auto& [key, value] : values) settings.set(key, value);
    EXPECT_EQ(settings.values(), values);
    EXPECT_EQ(settings.get("tree"), values.at("tree"));
    settings.close();
    EXPECT_FALSE(fs::exists(journal()));
    EXPECT_EQ(settings.values(), values) << "read again on use after closing";
    settings.remove("one");
    settings.remove("none");
    settings.set("bool", "now a text");
  }
  Dictionary expected = values;
  expected.erase("one");
  expected.insert_or_assign("bool", "now a text");
  EXPECT_EQ(stored(), expected);
  EXPECT_EQ(std::distance(fs::directory_iterator(folder_), {}), 1);
}

TEST_F(SettingsTest, RefuseWhatCantBeReadBack) {
  Settings settings(file_);
  Value deep = 1;
  for (std::size_t i = 0; i < 513; ++i) deep = Array{deep};
  const Value list = Array{Dictionary{{"a", nullptr}}};
  EXPECT_FALSE(isPropertyList(list));
  EXPECT_TRUE(isPropertyList(Array{Dictionary{{"a", Data{}}}}));
  for (const Value& value : {list, deep, Value("\xff")}) {
    EXPECT_THROW(settings.set("key", value), std::invalid_argument);
  }
  EXPECT_EQ(settings.values(), Dictionary{});
}

TEST_F(SettingsTest, AreOnlyForTheirOwner) {
  const mode_t before = umask(0);
  Settings settings(file_);
  settings.set("key", "value");
  settings.synchronize();
  umask(before);
  for (const fs::path& file : {file_, journal()}) {
    EXPECT_EQ(fs::status(file).permissions(), fs::perms::owner_read | fs::perms::owner_write) << file;
  }
}

TEST_F(SettingsTest, WriteOnlyWhatChanged) {
  Settings settings(file_);
  settings.set("key", "value");
  settings.synchronize();
  const std::string before = contentOf(journal());
  settings.set("key", "other");
  settings.set("key", "value");
  settings.set("passing", 1);
  settings.remove("passing");
  settings.synchronize();
  EXPECT_EQ(contentOf(journal()), before);
}

TEST_F(SettingsTest, OutliveAKilledProcessAsSynchronised) {
  store({{"kept", 1}});
  for (int round = 0; round < 3; ++round) {
    const pid_t child = inChild([&] {
      Settings settings(file_);
      settings.set("synchronised", round);
      settings.remove("kept");
      settings.synchronize();
      settings.set("synchronised", "lost");
      settings.set("lost", true);
      return kill(getpid(), SIGKILL) == 0;
    });
    EXPECT_TRUE(WIFSIGNALED(statusOf(child)));
    EXPECT_EQ(stored(), (Dictionary{{"synchronised", round}}));
    store({{"kept", 1}});
  }
}

TEST_F(SettingsTest, CanBeKilledDuringTheirCreation) {
  for (int round = 0; round < 25; ++round) {
    const pid_t child = inChild([&]() -> bool {
      for (;;) {
        Settings(file_).open();
        fs::remove(file_);
      }
    });
    usleep(1000 + 700 * static_cast<useconds_t>(round));
    kill(child, SIGKILL);
    EXPECT_TRUE(WIFSIGNALED(statusOf(child)));
    EXPECT_EQ(refusal(), "");
  }
}

TEST_F(SettingsTest, BelongToOneProcess) {
  store({{"key", 1}});
  Settings holder(file_);
  holder.set("key", 2);
  holder.synchronize();
  EXPECT_EQ(
      statusOf(inChild([&] { return refusal().find("in use by another process") != std::string::npos; })), 0);
  EXPECT_NE(refusal().find("in use"), std::string::npos) << "nor does a second one in this process get it";
  EXPECT_EQ(statusOf(inChild([&] { return refusal().find("in use") != std::string::npos; })), 0);
  holder.set("key", 3);
  holder.close();
  EXPECT_EQ(stored(), (Dictionary{{"key", 3}}));
}

TEST_F(SettingsTest, RefuseWhatIsNotTheirs) {
  writeFile(file_, "");
  expectRefusal("it is empty");
  writeFile(file_, "key = value\n");
  expectRefusal("not a settings file");
  fs::remove(file_);
  sql("PRAGMA journal_mode = WAL; CREATE TABLE settings (key, value)");
  expectRefusal("another program");
  fs::remove(file_);
  store({{"key", 1}});
  sql("PRAGMA user_version = 2");
  expectRefusal("newer format");
  fs::remove(file_);
  fs::create_directory(file_);
  EXPECT_NE(refusal().find("not a regular file"), std::string::npos);
  fs::remove(file_);
  writeFile(journal(), "left");
  expectRefusal("is missing while its -wal is there");
}

TEST_F(SettingsTest, RefuseAFolderOrFileThatCantBeWritten) {
  const fs::path missing = folder_ / "missing" / "defaults.sqlite";
  EXPECT_THROW(Settings(missing).open(), SettingsError);
  EXPECT_THROW(Settings("/proc/defaults.sqlite").open(), SettingsError);

  store({{"key", 1}});
  chmod(file_.c_str(), 0444);
  chmod(folder_.c_str(), 0755);
  // No permission stops root.
  const auto asSomebody = [] { return geteuid() != 0 || seteuid(65534) == 0; };
  EXPECT_EQ(
      statusOf(inChild([&] { return asSomebody() && refusal().find("for writing") != std::string::npos; })),
      0);
  chmod(file_.c_str(), 0666);
  chmod(folder_.c_str(), 0555);
  EXPECT_EQ(
      statusOf(inChild([&] { return asSomebody() && refusal().find("for writing") != std::string::npos; })),
      0);
  chmod(folder_.c_str(), 0700);
  EXPECT_EQ(stored(), (Dictionary{{"key", 1}}));
}

TEST_F(SettingsTest, NeverReadDamageAsOtherValues) {
  Dictionary values;
  for (int i = 0; i < 60; ++i) values.emplace("key " + std::to_string(i), std::string(100, 'v'));
  store(values);
  const std::string whole = contentOf(file_);
  for (std::size_t at = 0; at < whole.size(); at += at < 100 ? 1 : 41) {
    for (const int bit : {0x01, 0x80}) {
      std::string damaged = whole;
      damaged[at] = static_cast<char>(damaged[at] ^ bit);
      writeFile(file_, damaged);
      EXPECT_TRUE(!refusal().empty() || stored() == values) << "byte " << at;
      fs::remove(journal());
    }
  }
  for (std::size_t size = 0; size < whole.size(); size += 509) {
    writeFile(file_, whole.substr(0, size));
    EXPECT_NE(refusal(), "") << size << " bytes";
  }
  writeFile(file_, whole);
  sql("DELETE FROM settings WHERE key = 'key 7'");
  expectRefusal("does not match its digest");
}

TEST_F(SettingsTest, KeepTheOldStateWhenTheDiskIsFull) {
  const std::string big(2'000'000, 'b');
  const pid_t child = inChild([&] {
    signal(SIGXFSZ, SIG_IGN);
    Settings settings(file_);
    settings.set("old", 1);
    settings.synchronize();
    settings.set("old", 2);
    settings.set("big", big);

    rlimit limit{};
    getrlimit(RLIMIT_FSIZE, &limit);
    const rlimit small{100'000, limit.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
    bool refused = false;
    try {
      settings.synchronize();
    } catch (const SettingsError&) {
      refused = settings.get("old") == Value(2);
    }
    setrlimit(RLIMIT_FSIZE, &limit);
    const fs::path copy = folder_ / "copy";
    fs::copy_file(file_, copy);
    fs::copy_file(journal(), copy.string() + "-wal");
    const bool whole = Settings(copy).values() == Dictionary{{"old", 1}};
    settings.synchronize();
    return refused && whole && kill(getpid(), SIGKILL) == 0;
  });
  EXPECT_TRUE(WIFSIGNALED(statusOf(child)));
  EXPECT_EQ(stored(), (Dictionary{{"big", big}, {"old", 2}}));
}

TEST_F(SettingsTest, CanBeUsedFromAnyThread) {
  Settings settings(file_);
  std::vector<std::thread> threads;
  threads.reserve(4);
  for (int id = 0; id < 4; ++id) {
    threads.emplace_back([&settings, id] {
      for (int i = 0; i < 25; ++i) {
        settings.set("key " + std::to_string(id), i);
        settings.synchronize();
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  settings.close();
  EXPECT_EQ(stored(), (Dictionary{{"key 0", 24}, {"key 1", 24}, {"key 2", 24}, {"key 3", 24}}));
}

}  // namespace
}  // namespace quorvantis::device
