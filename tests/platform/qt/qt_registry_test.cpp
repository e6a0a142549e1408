#include "platform/qt/qt_registry.h"

#include <sys/stat.h>
#include <unistd.h>

#include <fstream>
#include <sstream>
#include <utility>

#include "platform/line_parameters.h"
#include "platform/registry_contract.h"
#include "support/child_process.h"
#include "support/paths.h"
#include "support/temporary_folder.h"
#include "util/text.h"

namespace celldesk {
namespace {

constexpr RegistryRoot kUser = RegistryRoot::kCurrentUser;
constexpr std::u16string_view kSettings = u"\\Software\\Corvane\\CellDesk";

class FileStore {
 public:
  Registry& registry() { return registry_; }

 private:
  TemporaryFolder folder_;
  QtRegistry registry_{FromUtf8((folder_.path() / "celldesk/settings.ini").string())};
};

INSTANTIATE_TYPED_TEST_SUITE_P(File, RegistryContract, FileStore);

class QtRegistryTest : public testing::Test {
 protected:
  std::filesystem::path File() const { return folder_.path() / "settings.ini"; }
  std::u16string Path() const { return FromUtf8(File().string()); }
  std::string Content(const std::string& name = "settings.ini") const {
    std::ifstream stream(folder_.path() / name, std::ios::binary);
    std::ostringstream content;
    content << stream.rdbuf();
    return content.str();
  }
  static std::unique_ptr<RegistryKey> Key(QtRegistry& registry, std::u16string_view path = kSettings) {
    KeyDisposition disposition;
    SystemError error;
    return registry.Create(kUser, path, disposition, error);
  }
  static std::optional<RegistryData> Query(QtRegistry& registry, std::u16string_view name) {
    SystemError error;
    const auto key = registry.Open(kUser, kSettings, error);
    return key ? key->Query(name) : std::nullopt;
  }
  static SystemError Set(QtRegistry& registry, std::u16string_view name, const RegistryData& data) {
    KeyDisposition disposition;
    SystemError error;
    const auto key = registry.Create(kUser, kSettings, disposition, error);
    return key ? key->Set(name, data) : error;
  }

  TemporaryFolder folder_;
};

TEST_F(QtRegistryTest, TheFileIsAsDocumented) {
  QtRegistry registry(Path());
  const auto key = Key(registry);
  ASSERT_EQ(key->Set(u"Port", StringData(u"COM1:")), kErrorSuccess);
  ASSERT_EQ(key->Set(u"Validity", NumberData(197)), kErrorSuccess);
  ASSERT_EQ(key->Set(u"COM1:", BinaryData(std::vector<std::uint8_t>{0x1c, 0, 0xff})), kErrorSuccess);
  ASSERT_NE(Key(registry, u"Other"), nullptr);
  EXPECT_EQ(Content(),
            "[CurrentUser/Software/Corvane/CellDesk]\n"
            "Port = string:COM1:\n"
            "Validity = number:197\n"
            "COM1: = binary:1c00ff\n"
            "\n"
            "[CurrentUser/Other]\n");
}

TEST_F(QtRegistryTest, TheExampleOfTheDocumentIsReadWhole) {
  std::ifstream document(SourceFolder() + "/docs/settings.md");
  std::string text, line;
  while (std::getline(document, line) && line != "## Example") continue;
  while (std::getline(document, line) && line != "```") continue;
  while (std::getline(document, line) && line != "```") text += line + "\n";
  folder_.Write("settings.ini", text);
  QtRegistry registry(Path());
  const auto key = Key(registry);
  EXPECT_EQ(key->Counts().values, 10U);
  EXPECT_EQ(key->Query(u"Port"), StringData(u"COM1:"));
  EXPECT_EQ(key->Query(u"Validity"), NumberData(167));
  EXPECT_EQ(key->Query(u"COM1:"), BinaryData(LineParameters().ToBytes()));
  EXPECT_EQ(Key(registry, u"\\Software\\Corvane\\CellDesk\\Ports")->Query(u"COM1:"),
            StringData(u"link:Simulated phone"));
}

TEST_F(QtRegistryTest, WhatAPersonWroteIsReadAndKept) {
  folder_.Write("settings.ini",
                "\xEF\xBB\xBF# mine\r\n"
                "  [ currentuser/SOFTWARE/corvane/celldesk ]  \r\n"
                "[currentuser/SOFTWARE/corvane/celldesk]\r\n"
                "\r\n"
                "port=string:COM2:\r\n"
                "; the long way round\r\n"
                "  DI27  =  number: 1 \r\n"
                "COM2: = binary: 1C 00 ff \r\n"
                "Port = string:COM3:\r\n"
                "Future = colour:red\r\n");
  QtRegistry registry(Path());
  EXPECT_EQ(Query(registry, u"Port"), StringData(u"COM2:"));
  EXPECT_EQ(Query(registry, u"DI27"), NumberData(1));
  EXPECT_EQ(Query(registry, u"COM2:"), BinaryData(std::vector<std::uint8_t>{0x1c, 0, 0xff}));
  EXPECT_EQ(Query(registry, u"Future"), std::nullopt);
  ASSERT_EQ(Set(registry, u"DI27", NumberData(0)), kErrorSuccess);
  const std::string content = Content();
  for (const char* kept : {"# mine\n", "; the long way round\n", "port=string:COM2:\n", "DI27 = number:0\n",
                           "COM2: = binary: 1C 00 ff \n", "Future = colour:red\n"})
    EXPECT_THAT(content, testing::HasSubstr(kept));
}

TEST_F(QtRegistryTest, ASetOfTheSameValueWritesNothing) {
  QtRegistry registry(Path());
  ASSERT_EQ(Set(registry, u"Port", StringData(u"COM1:")), kErrorSuccess);
  struct stat before {
  }, after{};
  ASSERT_EQ(::stat(File().c_str(), &before), 0);
  ASSERT_EQ(Set(registry, u"Port", StringData(u"COM1:")), kErrorSuccess);
  ASSERT_EQ(::stat(File().c_str(), &after), 0);
  EXPECT_EQ(before.st_ino, after.st_ino);
}

TEST_F(QtRegistryTest, ReadingMakesNoFile) {
  QtRegistry registry(Path());
  EXPECT_EQ(Query(registry, u"Port"), std::nullopt);
  EXPECT_TRUE(std::filesystem::is_empty(folder_.path()));
}

TEST_F(QtRegistryTest, FoldersOnTheWayAreMadeByTheFirstWrite) {
  QtRegistry registry(FromUtf8((folder_.path() / "a/b c/settings.ini").string()));
  ASSERT_EQ(Set(registry, u"Port", StringData(u"COM1:")), kErrorSuccess);
  EXPECT_TRUE(std::filesystem::exists(folder_.path() / "a/b c/settings.ini"));
}

TEST_F(QtRegistryTest, ALinkToTheFileStaysALink) {
  folder_.Write("real/settings.ini", "");
  std::filesystem::create_symlink(folder_.path() / "real/settings.ini", File());
  QtRegistry registry(Path());
  ASSERT_EQ(Set(registry, u"Port", StringData(u"COM1:")), kErrorSuccess);
  EXPECT_TRUE(std::filesystem::is_symlink(File()));
  EXPECT_THAT(Content("real/settings.ini"), testing::HasSubstr("string:COM1:"));
}

TEST_F(QtRegistryTest, TheDefaultPathFollowsTheConfigurationFolder) {
  const char* found = ::getenv("XDG_CONFIG_HOME");
  const std::string before = found ? found : "";
  ::setenv("XDG_CONFIG_HOME", "/somewhere/config", 1);
  EXPECT_EQ(QtRegistry::DefaultPath(), u"/somewhere/config/celldesk/settings.ini");
  if (found)
    ::setenv("XDG_CONFIG_HOME", before.c_str(), 1);
  else
    ::unsetenv("XDG_CONFIG_HOME");
}

TEST_F(QtRegistryTest, AGarbageFileIsCopiedAsideOnceAndWhatCanBeReadIsKept) {
  const std::string garbage = "[CurrentUser/Software/Corvane/CellDesk]\nPort = string:COM4:\n" +
                              std::string("\0\xFF\xFE garbage\nno value\n", 21) +
                              "DI27 = number:maybe\n[broken\nPort = string:COM5:\n";
  folder_.Write("settings.ini", garbage);
  QtRegistry registry(Path());
  EXPECT_EQ(Query(registry, u"Port"), StringData(u"COM4:"));
  EXPECT_EQ(Query(registry, u"DI27"), std::nullopt);
  EXPECT_EQ(Query(registry, u"SMSC"), std::nullopt);
  EXPECT_EQ(Content(), garbage);

  ASSERT_EQ(Set(registry, u"SMSC", StringData(u"+420603052000")), kErrorSuccess);
  ASSERT_EQ(Set(registry, u"SMSC", StringData(u"+420603052001")), kErrorSuccess);
  EXPECT_EQ(Content("settings.ini.damaged"), garbage);
  EXPECT_FALSE(std::filesystem::exists(folder_.path() / "settings.ini.damaged-2"));
  EXPECT_EQ(Query(registry, u"Port"), StringData(u"COM4:"));
  EXPECT_THAT(Content(), testing::Not(testing::HasSubstr("COM5:")));
  EXPECT_THAT(Content(), testing::HasSubstr("DI27 = number:maybe"));
}

TEST_F(QtRegistryTest, AnEarlierDamagedCopyIsNotOverwritten) {
  folder_.Write("settings.ini", "garbage");
  folder_.Write("settings.ini.damaged", "the first");
  QtRegistry registry(Path());
  ASSERT_EQ(Set(registry, u"Port", StringData(u"COM1:")), kErrorSuccess);
  EXPECT_EQ(Content("settings.ini.damaged"), "the first");
  EXPECT_EQ(Content("settings.ini.damaged-2"), "garbage");
}

TEST_F(QtRegistryTest, EveryFileOfRandomBytesCanBeOpenedAndWrittenTo) {
  std::uint32_t seed = 1;
  for (int round = 0; round < 30; ++round) {
    std::string noise;
    for (int i = 0; i < 300; ++i) {
      seed = seed * 1664525U + 1013904223U;
      noise += "[]=\\:/#@\n\rstring:u\xC3\x28\0 "[seed >> 24 & 15];
      if ((seed >> 16 & 7) == 0) noise += static_cast<char>(seed >> 8);
    }
    folder_.Write("settings.ini", noise);
    QtRegistry registry(Path());
    (void)Query(registry, u"Port");
    ASSERT_EQ(Set(registry, u"Port", StringData(u"COM1:")), kErrorSuccess);
    ASSERT_EQ(Query(registry, u"Port"), StringData(u"COM1:"));
  }
}

TEST_F(QtRegistryTest, ADirectoryInTheFilesPlaceIsAnErrorNotACrash) {
  std::filesystem::create_directories(File() / "inner");
  QtRegistry registry(Path());
  EXPECT_EQ(Query(registry, u"Port"), std::nullopt);
  EXPECT_NE(Set(registry, u"Port", StringData(u"COM1:")), kErrorSuccess);
  EXPECT_TRUE(std::filesystem::is_directory(File() / "inner"));
}

TEST_F(QtRegistryTest, AFileInTheFoldersPlaceIsAnError) {
  folder_.Write("file", "");
  QtRegistry registry(FromUtf8((folder_.path() / "file/settings.ini").string()));
  EXPECT_EQ(Query(registry, u"Port"), std::nullopt);
  EXPECT_NE(Set(registry, u"Port", StringData(u"COM1:")), kErrorSuccess);
}

TEST_F(QtRegistryTest, AFolderThatMayNotBeWrittenIsAnErrorAndTheFileStays) {
  QtRegistry registry(Path());
  ASSERT_EQ(Set(registry, u"Port", StringData(u"COM1:")), kErrorSuccess);
  ASSERT_EQ(::chmod(folder_.path().c_str(), 0555), 0);
  ChildProcess user([&] {
    BecomeOrdinaryUser();
    const bool readable = Query(registry, u"Port") == StringData(u"COM1:");
    return readable && Set(registry, u"Port", StringData(u"COM2:")) != kErrorSuccess ? 0 : 1;
  });
  EXPECT_EQ(user.ExitCode(), 0);
  ASSERT_EQ(::chmod(folder_.path().c_str(), 0755), 0);
  EXPECT_EQ(Query(registry, u"Port"), StringData(u"COM1:"));
}

TEST_F(QtRegistryTest, AFileThatMayNotBeReadIsNeverReplaced) {
  QtRegistry registry(Path());
  ASSERT_EQ(Set(registry, u"Port", StringData(u"COM1:")), kErrorSuccess);
  ASSERT_EQ(::chmod(folder_.path().c_str(), 0777), 0);
  ASSERT_EQ(::chmod(File().c_str(), 0), 0);
  ChildProcess user([&] {
    BecomeOrdinaryUser();
    const bool absent = Query(registry, u"Port") == std::nullopt;
    return absent && Set(registry, u"SMSC", StringData(u"+1")) != kErrorSuccess ? 0 : 1;
  });
  EXPECT_EQ(user.ExitCode(), 0);
  ASSERT_EQ(::chmod(File().c_str(), 0644), 0);
  EXPECT_EQ(Query(registry, u"Port"), StringData(u"COM1:"));
}

TEST_F(QtRegistryTest, TwoWindowsTakeTurnsWithoutLosingEachOthersValues) {
  QtRegistry one(Path()), other(Path());
  const auto first = Key(one), second = Key(other);
  for (std::uint32_t i = 0; i < 50; ++i) {
    ASSERT_EQ(first->Set(u"First" + FromUtf8(std::to_string(i)), NumberData(i)), kErrorSuccess);
    ASSERT_EQ(second->Set(u"Second" + FromUtf8(std::to_string(i)), NumberData(i)), kErrorSuccess);
    ASSERT_EQ(second->Query(u"First" + FromUtf8(std::to_string(i))), NumberData(i));
  }
  EXPECT_EQ(first->Counts().values, 100U);
}

TEST_F(QtRegistryTest, ProcessesThatWriteAtOnceLoseNothing) {
  constexpr std::uint32_t kWrites = 40;
  const auto writer = [&](std::u16string_view prefix) {
    QtRegistry registry(Path());
    for (std::uint32_t i = 0; i < kWrites; ++i)
      if (Set(registry, std::u16string(prefix) + FromUtf8(std::to_string(i)), NumberData(i)) != kErrorSuccess)
        return 1;
    return 0;
  };
  ChildProcess a([&] { return writer(u"A"); });
  ChildProcess b([&] { return writer(u"B"); });
  EXPECT_EQ(writer(u"C"), 0);
  EXPECT_EQ(a.ExitCode(), 0);
  EXPECT_EQ(b.ExitCode(), 0);
  QtRegistry registry(Path());
  EXPECT_EQ(Key(registry)->Counts().values, 3 * kWrites);
}

/// A process that sets "Count" to 1, 2, 3 ... until it is killed, and tells of each.
class EndlessWriter {
 public:
  explicit EndlessWriter(QtRegistry& registry)
      : writer_([&] {
          for (std::uint32_t i = 1;; ++i) {
            KeyDisposition disposition;
            SystemError error;
            const auto key = registry.Create(kUser, kSettings, disposition, error);
            if (!key || key->Set(u"Count", NumberData(i)) != kErrorSuccess) return 1;
            if (::write(pipe_.ends[1], "!", 1) != 1) return 2;
          }
        }) {
    ::close(std::exchange(pipe_.ends[1], -1));
  }

  /// Waits for `count` more writes.
  bool Hear(int count) {
    while (count > 0 && HearOne()) --count;
    return count == 0;
  }
  /// Kills it; how many writes it told of in all.
  std::uint32_t Kill() {
    writer_.Kill();
    while (HearOne()) continue;
    return heard_;
  }

 private:
  struct Pipe {
    Pipe() { EXPECT_EQ(::pipe(ends), 0); }
    ~Pipe() {
      for (int end : ends)
        if (end >= 0) ::close(end);
    }
    int ends[2] = {-1, -1};
  };

  bool HearOne() {
    char told = 0;
    const bool heard = ::read(pipe_.ends[0], &told, 1) == 1;
    if (heard) ++heard_;
    return heard;
  }

  Pipe pipe_;
  std::uint32_t heard_ = 0;
  ChildProcess writer_;
};

/// Large enough that a file that is not replaced whole is caught half-written.
RegistryData LargeData() { return BinaryData(std::vector<std::uint8_t>(50'000, 0x5A)); }

TEST_F(QtRegistryTest, AReaderFindsAWholeFileWhileAnotherProcessWrites) {
  QtRegistry registry(Path());
  ASSERT_EQ(Set(registry, u"Before", LargeData()), kErrorSuccess);
  EndlessWriter writer(registry);
  for (int i = 0; i < 15; ++i) {
    ASSERT_TRUE(writer.Hear(1));
    for (int look = 0; look < 5; ++look) ASSERT_TRUE(Query(registry, u"Before") == LargeData());
  }
}

TEST_F(QtRegistryTest, AWriterThatIsKilledAtAnyMomentLeavesAWholeFile) {
  constexpr int kRounds = 30;
  QtRegistry registry(Path());
  ASSERT_EQ(Set(registry, u"Before", LargeData()), kErrorSuccess);
  ASSERT_EQ(Set(registry, u"Count", NumberData(0)), kErrorSuccess);
  for (int round = 0; round < kRounds; ++round) {
    EndlessWriter writer(registry);
    ASSERT_TRUE(writer.Hear(1 + round % 3));
    // Some work of our own, of another length each round, moves the moment through the next write.
    for (int look = 0; look < round % 10; ++look) (void)Content();
    const std::uint32_t told = writer.Kill();
    ASSERT_TRUE(Query(registry, u"Before") == LargeData());
    // What it told of is in the file, and the one it was killed at is whole or not there.
    ASSERT_THAT(Query(registry, u"Count"), testing::AnyOf(NumberData(told), NumberData(told + 1)));
    EXPECT_FALSE(std::filesystem::exists(folder_.path() / "settings.ini.damaged"));
  }
  EXPECT_EQ(Set(registry, u"Count", NumberData(0)), kErrorSuccess);
  EXPECT_EQ(Query(registry, u"Count"), NumberData(0));
}

}  // namespace
}  // namespace celldesk
