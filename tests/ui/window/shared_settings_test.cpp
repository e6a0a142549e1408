#include "config/settings_store.h"
#include "platform/qt/qt_registry.h"
#include "support/child_process.h"
#include "support/temporary_folder.h"
#include "ui/window/book_window.h"

namespace celldesk {
namespace {

// The toolkit keeps pointers to these for the application's life.
int argument_count = 1;
char program_name[] = "celldesk";
char* arguments[] = {program_name, nullptr};

/// The window with its settings in a real file, which another process may use at the same time.
class WindowOnFile : public WindowSession {
 public:
  explicit WindowOnFile(QtRegistry& settings) {
    application.reset();
    application = std::make_unique<CellDeskApplication>(
        argument_count, arguments,
        MachineServices{line, threads, settings, locale, shell, port_list, port_inspector, files, contacts,
                        &waiter, &instances});
    EXPECT_TRUE(Start());
  }
};

/// A folder, and the value that holds the widths of its columns.
struct Place {
  int folder;
  std::u16string_view value;
  std::size_t columns;
};
constexpr Place kBook{0, SettingsStore::kAddressColumns, 3}, kInbox{2, SettingsStore::kInboxColumns, 4};

constexpr int kRounds = 25;

std::uint16_t WidthOfRound(int round) { return static_cast<std::uint16_t>(60 + round); }

/// Zero while none is stored.
int FirstWidth(QtRegistry& settings, const Place& place) {
  const std::vector<std::uint16_t> widths =
      SettingsStore(settings).LoadColumnWidths(place.value, place.columns);
  return widths.empty() ? 0 : widths.front();
}

/// Drags a column of one folder and confirms the settings, over and over, and finds each time what it stored.
/// Zero when all went well: the exit code of a process.
int UseTheWindow(const std::u16string& path, const Place& place) {
  QtRegistry settings(path);
  WindowOnFile window(settings);
  for (int round = 1; round <= kRounds; ++round) {
    window.ShowFolder(place.folder);
    std::vector<std::uint16_t> widths = window.frame().current_folder().list().Widths();
    widths.front() = WidthOfRound(round);
    window.frame().current_folder().list().SetWidths(widths);
    window.ShowFolder(3);
    if (FirstWidth(settings, place) != WidthOfRound(round)) return 1;
    window.InNextDialog([](Dialog& dialog) { ClickDialogButton(dialog, kIdOk); });
    window.Command(command::kSettings);
    if (FirstWidth(settings, place) != WidthOfRound(round)) return 2;
  }
  return testing::Test::HasFailure() ? 3 : 0;
}

TEST(SharedSettings, TwoWindowsAtOnceKeepEachOthersValues) {
  TemporaryFolder folder;
  const std::u16string path = FromUtf8((folder.path() / "settings.ini").string());
  {
    QtRegistry settings(path);
    Settings stored;
    stored.centre = u"+447700900000";
    SettingsStore(settings).Save(stored);
    // It is the first start of neither.
    SettingsStore(settings).SaveColumnWidths(kBook.value, {40, 170, 170});
  }
  ChildProcess other([&] { return UseTheWindow(path, kInbox); });
  EXPECT_EQ(UseTheWindow(path, kBook), 0);
  EXPECT_EQ(other.ExitCode(), 0);
  QtRegistry settings(path);
  EXPECT_EQ(FirstWidth(settings, kBook), WidthOfRound(kRounds));
  EXPECT_EQ(FirstWidth(settings, kInbox), WidthOfRound(kRounds));
  EXPECT_EQ(SettingsStore(settings).Load().centre, u"+447700900000");
}

}  // namespace
}  // namespace celldesk
