// Start-up beside other windows, and what the shell is told.

#include <gtest/gtest.h>

#include <QWidget>

#include "config/settings_key.h"
#include "ui/file_types.h"
#include "ui/framework/qt/native.h"
#include "ui/window_session.h"

namespace celldesk {
namespace {

TEST(SecondStart, WithoutArgumentsWakesTheRunningWindowAndEnds) {
  WindowSession session;
  session.instances.another_runs = true;
  EXPECT_FALSE(session.application->InitInstance({}, true));
  EXPECT_EQ(session.instances.woken, 1);
  EXPECT_EQ(session.application->frame(), nullptr);
  EXPECT_EQ(session.application->ExitInstance(0), 0);
}

TEST(SecondStart, WithAFileStartsInFull) {
  WindowSession session;
  session.instances.another_runs = true;
  EXPECT_TRUE(session.application->InitInstance(u"/nowhere/book.txt", true));
  EXPECT_EQ(session.instances.woken, 0);
  ASSERT_NE(session.application->frame(), nullptr);
  EXPECT_TRUE(session.frame().IsVisible());
}

TEST(SecondStart, BringsAMinimizedWindowBackAndKeepsAMaximizedOneSo) {
  WindowSession session;
  ASSERT_TRUE(session.Start());
  QWidget* window = WidgetOf(&session.frame());
  window->setWindowState(Qt::WindowMaximized | Qt::WindowMinimized);
  ASSERT_TRUE(session.instances.AnotherStart());
  session.Pump();
  EXPECT_TRUE(window->isVisible());
  EXPECT_FALSE(window->isMinimized());
  EXPECT_TRUE(window->isMaximized());
  EXPECT_TRUE(window->isActiveWindow());
}

TEST(SecondStart, FindsNoWindowThatHasClosed) {
  WindowSession session;
  ASSERT_TRUE(session.Start());
  session.application->ExitInstance(0);
  EXPECT_FALSE(session.instances.AnotherStart());
}

class FileTypes : public testing::Test {
 protected:
  std::u16string Default(std::u16string_view path) {
    SettingsKey key(registry_);
    if (key.Open(RegistryRoot::kClassesRoot, path) != kErrorSuccess) return u"(no key)";
    return key.Value({}).GetString();
  }

  FakeRegistry registry_;
  FakeShell shell_;
};

TEST_F(FileTypes, AreWrittenWhereTheProgramRegistersThem) {
  shell_.registers_file_types = true;
  shell_.program_path = u"\\Program Files\\Cell Desk\\celldesk.exe";
  RegisterFileTypes(registry_, shell_);
  EXPECT_EQ(Default(u".adr"), u"adrfile");
  EXPECT_EQ(Default(u"adrfile"), u"Phone Book");
  EXPECT_EQ(Default(u"adrfile\\DefaultIcon"), u"\\Program Files\\Cell Desk\\celldesk.exe,-2");
  EXPECT_EQ(Default(u"adrfile\\Shell\\Open\\Command"), u"\"\\Program Files\\Cell Desk\\celldesk.exe\" %1");
  EXPECT_EQ(Default(u".sms"), u"smsfile");
  EXPECT_EQ(Default(u"smsfile"), u"SMS messages");
  EXPECT_EQ(Default(u"smsfile\\DefaultIcon"), u"\\Program Files\\Cell Desk\\celldesk.exe,-3");
  EXPECT_EQ(Default(u"smsfile\\Shell\\Open\\Command"), u"\"\\Program Files\\Cell Desk\\celldesk.exe\" %1");
}

TEST_F(FileTypes, AreLeftToThePackage) {
  RegisterFileTypes(registry_, shell_);
  EXPECT_EQ(registry_.write_count(), 0);
}

TEST_F(FileTypes, AreNotWrittenWithoutTheProgramsPath) {
  shell_.registers_file_types = true;
  shell_.program_path.clear();
  RegisterFileTypes(registry_, shell_);
  EXPECT_EQ(registry_.write_count(), 0);
}

TEST(FileTypesAtStart, AreRegisteredEachTime) {
  WindowSession session;
  session.shell.registers_file_types = true;
  ASSERT_TRUE(session.Start());
  SettingsKey key(session.registry);
  EXPECT_EQ(key.Open(RegistryRoot::kClassesRoot, u"smsfile"), kErrorSuccess);
}

}  // namespace
}  // namespace celldesk
