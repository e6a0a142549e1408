#include "platform/qt/qt_shell.h"

#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>
#include <QUrl>
#include <filesystem>
#include <system_error>

namespace celldesk {
namespace {

constexpr std::u16string_view kScheme = u"file:";

// Levels between a program in a build folder and the top of the source tree.
constexpr int kMostLevelsUp = 5;

QString Text(std::u16string_view text) {
  return QStringView(text.data(), static_cast<qsizetype>(text.size())).toString();
}

QStringList HelpFolders(const QString& program) {
  QString folder = QFileInfo(program).absolutePath();
  QStringList folders = {folder + "/../share/celldesk/help", folder + "/help"};
  for (int level = 0; level < kMostLevelsUp; ++level) {
    folder = QDir::cleanPath(folder + "/..");
    folders += folder + "/src/ui/resources/help";
  }
  return folders;
}

bool OpenUrl(const std::u16string& url) { return QDesktopServices::openUrl(QUrl(Text(url))); }

}  // namespace

std::u16string FindHelpPage(std::u16string_view page, std::u16string_view program) {
  const QString given = qEnvironmentVariable("CELLDESK_HELP");
  if (!given.isEmpty() && QFileInfo(given).isFile())
    return QFileInfo(given).absoluteFilePath().toStdU16String();
  QStringList folders = HelpFolders(Text(program));
  if (!given.isEmpty()) folders.prepend(given);
  for (const QString& folder : folders) {
    const QString file = QDir::cleanPath(folder + "/" + Text(page));
    if (QFileInfo(file).isFile()) return QFileInfo(file).absoluteFilePath().toStdU16String();
  }
  return {};
}

QtShell::QtShell() : open_(OpenUrl) {}

bool QtShell::OpenHelp(std::u16string_view topic) {
  if (topic.starts_with(kScheme)) topic.remove_prefix(kScheme.size());
  const std::size_t mark = topic.find(u'#');
  const std::u16string page = FindHelpPage(topic.substr(0, mark), ProgramPath());
  if (page.empty()) return false;
  QUrl url = QUrl::fromLocalFile(Text(page));
  if (mark != topic.npos) url.setFragment(Text(topic.substr(mark + 1)));
  return open_(url.toString(QUrl::FullyEncoded).toStdU16String());
}

std::u16string QtShell::ProgramPath() const {
  // Known before the toolkit is started, too, unlike its own path of the application.
  std::error_code error;
  return std::filesystem::read_symlink("/proc/self/exe", error).u16string();
}

std::u16string QtShell::DataFolder() const {
  return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation).toStdU16String() +
         u"/celldesk";
}

}  // namespace celldesk
