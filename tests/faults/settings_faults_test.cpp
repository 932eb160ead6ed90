#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <random>

#include "tests/faults/failing_disk.h"
#include "tests/phone.h"
#include "tests/scratch_folder.h"

namespace quorvantis {
namespace {

namespace fs = std::filesystem;
using device::Device;
using device::Settings;
using platform::make;

#ifdef QUORVANTIS_SANITIZED
constexpr int kKills = 100;
#else
constexpr int kKills = 1000;
#endif
constexpr int kKillsOfOneFile = 25;

/// What a registration stores, with all values depending on `number`.
json::Dictionary stored(int number, const json::Value& identifier) {
  const std::string name = std::to_string(number);
  return {{"deviceUuid", identifier},  {"idioma", "en"},          {"nombreTerminal", name},
          {"pushVersion", name},       {"tipoTerminal", name},    {"tokenMovil", "token " + name},
          {"versionAplicacion", name}, {"versionTerminal", name}, {"zona", "US"}};
}

/// The system delivers a token to the library. Its request fails: no host is known.
bool registerToken(Device& device, PushRequestData& client, int number) {
  const std::string name = std::to_string(number);
  device.facts.name = device.facts.model = device.facts.systemVersion = name;
  device.application.version = name;
  client.registerForRemoteNotificationsWithDeviceToken(text("token " + name), nullptr, text(name));
  device.queue.settle([](const auto& task) { task(); });
  return !device.settingsFailure();
}

/// A process that registers one changed token after the other, and reports each that is on disk.
class RegisteringProcess {
 public:
  RegisteringProcess(const fs::path& file, int first) {
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0) throw std::runtime_error("no pipe");
    reports_ = ends[0];
    process_ = fork();
    if (process_ == 0) {
      close(ends[0]);
      run(file, first, ends[1]);
    }
    close(ends[1]);
  }

  void awaitReports(int count) {
    for (int i = 0; i < count && readReport(); ++i) {
    }
  }

  /// Returns the last token that was reported, if any was.
  std::optional<int> kill() {
    ::kill(process_, SIGKILL);
    int status = 0;
    waitpid(process_, &status, 0);
    EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL) << "it ended by itself: " << status;
    while (readReport()) {
    }
    close(reports_);
    return last_;
  }

 private:
  [[noreturn]] static void run(const fs::path& file, int first, int reports) {
    try {
      Device device(file);
      const auto client = make<PushRequestData>();
      for (int number = first; registerToken(device, *client, number); ++number) {
        (void)device.record.take();
        if (write(reports, &number, sizeof number) != sizeof number) break;
      }
      fprintf(stderr, "%s\n", device.settingsFailure().value_or("no report").c_str());
    } catch (const std::exception& error) {
      fprintf(stderr, "%s\n", error.what());
    }
    _exit(1);
  }

  bool readReport() {
    int number = 0;
    if (::read(reports_, &number, sizeof number) != sizeof number) return false;
    last_ = number;
    return true;
  }

  int reports_ = -1;
  pid_t process_ = -1;
  std::optional<int> last_;
};

TEST(SettingsFaults, KeepWhatWasSynchronisedWhenTheProcessIsKilled) {
  std::mt19937 random(20160913);
  std::optional<ScratchFolder> folder;
  int before = 0;
  json::Value identifier;
  int unseen = 0;
  for (int kill = 0; kill < kKills; ++kill) {
    SCOPED_TRACE("kill " + std::to_string(kill));
    if (kill % kKillsOfOneFile == 0) {
      folder.emplace();
      before = 0;
      identifier = nullptr;
    }
    const fs::path file = folder->path() / "settings.sqlite";
    RegisteringProcess process(file, before + 1);
    process.awaitReports(static_cast<int>(random() % 4));
    usleep(static_cast<useconds_t>(random() % 3000));
    const std::optional<int> reported = process.kill();
    const int least = reported.value_or(before);

    Settings settings(file);
    json::Dictionary values;
    ASSERT_NO_THROW(values = settings.values());
    if (values.empty()) {
      ASSERT_EQ(least, 0);
      continue;
    }
    const int number = std::stoi(*values.at("pushVersion").get<std::string>());
    ASSERT_TRUE(number == least || number == least + 1) << number << " after " << least;
    if (identifier.isNull()) identifier = values.at("deviceUuid");
    ASSERT_EQ(values, stored(number, identifier));
    unseen += number > least ? 1 : 0;
    before = number;
  }
  RecordProperty("kills", kKills);
  RecordProperty("kills between the disk and the report", unseen);
}

class FailingDiskTest : public testing::Test {
 protected:
  FailingDiskTest() {
    Device device(file);
    EXPECT_TRUE(registerToken(device, *make<PushRequestData>(), 1));
    device.endProcess();
    old = Settings(file).values();
  }

  /// What a process would find that starts after this one was killed now.
  json::Dictionary onDisk() {
    const ScratchFolder copies;
    const fs::path copy = copies.path() / "settings.sqlite";
    fs::copy_file(file, copy);
    const std::string journal = file.string() + "-wal";
    if (fs::exists(journal)) fs::copy_file(journal, copy.string() + "-wal");
    return Settings(copy).values();
  }

  const ScratchFolder folder;
  const fs::path file = folder.path() / "settings.sqlite";
  json::Dictionary old;
};

TEST_F(FailingDiskTest, KeepsTheOldStateAndReportsTheFailure) {
  const json::Dictionary next = stored(2, old.at("deviceUuid"));
  for (const DiskFault fault : {DiskFault::write, DiskFault::full, DiskFault::shortWrite, DiskFault::sync}) {
    int survived = 0;
    for (int operation = 1;; ++operation) {
      SCOPED_TRACE("fault " + std::to_string(static_cast<int>(fault)) + ", operation " +
                   std::to_string(operation));
      {
        Settings restored(file);
        for (const auto& [key, value] : old) restored.set(key, value);
        restored.close();
      }
      Device device(file);
      const auto client = make<PushRequestData>();
      const bool opened = device.userDefault("tokenMovil").has_value();
      ASSERT_TRUE(opened);
      failDisk(fault, operation);
      const bool registered = registerToken(device, *client, 2);
      const bool hit = diskHasFailed();
      mendDisk();
      EXPECT_EQ(registered, !hit);
      const json::Dictionary found = onDisk();
      if (registered) {
        EXPECT_EQ(found, next);
      } else if (fault == DiskFault::sync) {
        EXPECT_TRUE(found == old || found == next);  // the disk did not say what it had kept
      } else {
        EXPECT_EQ(found, old);
      }
      EXPECT_EQ(device.settings.values(), next) << "memory keeps what was set";
      device.settings.synchronize();
      EXPECT_EQ(onDisk(), next) << "the next attempt makes up for it";
      device.endProcess();
      if (!hit) break;
      ++survived;
    }
    EXPECT_GT(survived, 0);
  }
}

TEST_F(FailingDiskTest, NoFileIsHalfCreatedOrHalfOpened) {
  for (const DiskFault fault : {DiskFault::write, DiskFault::full, DiskFault::shortWrite, DiskFault::sync}) {
    for (const bool isNew : {true, false}) {
      for (int operation = 1;; ++operation) {
        SCOPED_TRACE("fault " + std::to_string(static_cast<int>(fault)) + (isNew ? ", a new file" : "") +
                     ", operation " + std::to_string(operation));
        const fs::path used = isNew ? folder.path() / "new.sqlite" : file;
        failDisk(fault, operation);
        bool refused = false;
        try {
          Settings(used).open();
        } catch (const device::SettingsError&) {
          refused = true;
        }
        const bool hit = diskHasFailed();
        mendDisk();
        EXPECT_TRUE(hit || !refused);
        EXPECT_EQ(Settings(used).values(), isNew ? json::Dictionary() : old);
        if (isNew) fs::remove(used);
        EXPECT_EQ(std::distance(fs::directory_iterator(folder.path()), {}), 1) << "something was left behind";
        if (!hit) break;
      }
    }
  }
}

// Partly read, the store would look like that of a fresh installation.
TEST_F(FailingDiskTest, AStoreThatBecomesReadableLateIsNotOverwritten) {
  std::optional<Settings> other(std::in_place, file);
  other->open();
  Device device(file);
  const auto client = make<PushRequestData>();
  EXPECT_FALSE(device.userDefault("deviceUuid"));
  other.reset();
  EXPECT_FALSE(registerToken(device, *client, 2));
  EXPECT_NE(device.settingsFailure().value_or("").find("in use by another process"), std::string::npos);
  EXPECT_EQ(onDisk(), old);
  device.endProcess();
  EXPECT_EQ(device.userDefault("deviceUuid"), old.at("deviceUuid")) << "the next process reads it";
}

}  // namespace
}  // namespace quorvantis
