#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QStandardPaths>

#include "ui/framework/file_dialog.h"
#include "ui/framework/qt/native.h"
#include "ui/framework/qt/qt_message_box.h"
#include "ui/framework/qt/qt_text.h"
#include "ui/resources/resources.h"
#include "util/text.h"

namespace celldesk {
namespace {

constexpr int kOpenTitle = 350, kSaveTitle = 351, kReplaceFile = 352, kNoSuchFile = 353, kNoSuchFolder = 354;
constexpr QSize kSmallestScreen(640, 240);

// The folder of the file that was chosen last in this run.
QString last_folder;

QString StartFolder() {
  if (!last_folder.isEmpty() && QDir(last_folder).exists()) return last_folder;
  const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
  return QDir(documents).exists() ? documents : QDir::homePath();
}

// The toolkit takes the pattern from the last brackets, which it does not show.
QStringList NameFilters(std::u16string_view filter) {
  QStringList filters;
  for (const FileFilter& one : ParseFileFilters(filter)) {
    const std::u16string pattern = one.pattern == u"*.*" ? u"*" : one.pattern;
    filters.append(ToQt(one.caption + u" (" + pattern + u")"));
  }
  return filters;
}

// The same dialog on every desktop, with our own questions about what was chosen.
class NativeFileDialog : public QFileDialog {
 public:
  NativeFileDialog(Window* owner, const FileQuestion& question)
      : QFileDialog(WidgetOf(owner)), is_open_(question.kind == FileDialogKind::kOpen) {
    setOptions(DontUseNativeDialog | HideNameFilterDetails | DontConfirmOverwrite |
               DontUseCustomDirectoryIcons);
    setAcceptMode(is_open_ ? AcceptOpen : AcceptSave);
    setFileMode(AnyFile);  // whether the file exists is asked once its extension is known
    setViewMode(List);
    setWindowTitle(ToQt(LoadString(is_open_ ? kOpenTitle : kSaveTitle)));
    setNameFilters(NameFilters(question.filter));
    setDirectory(StartFolder());
    extension_ = ToQt(question.default_extension);
    resize(kSmallestScreen);
  }

  const QString& chosen() const { return chosen_; }

  void accept() override {
    const QString typed = selectedFiles().value(0);
    if (typed.isEmpty()) return;
    if (QFileInfo(typed).isDir()) return setDirectory(typed);
    const QString path = Completed(typed);
    if (!IsUsable(path)) return;
    chosen_ = path;
    last_folder = QFileInfo(path).absolutePath();
    QDialog::accept();
  }

 private:
  QString Completed(const QString& typed) const {
    const bool has_extension = QFileInfo(typed).fileName().contains(u'.');
    if (has_extension || extension_.isEmpty() || (is_open_ && QFileInfo::exists(typed))) return typed;
    return typed + u'.' + extension_;
  }

  bool IsUsable(const QString& path) {
    const QFileInfo file(path);
    if (!QDir(file.absolutePath()).exists()) return Refuse(kNoSuchFolder, file.absolutePath());
    if (is_open_) return file.exists() || Refuse(kNoSuchFile, file.fileName());
    if (!file.exists()) return true;
    return Show(kReplaceFile, file.fileName(), BoxButtons::kYesNo, BoxIcon::kWarning) == kAnswerYes;
  }

  bool Refuse(int text, const QString& name) {
    Show(text, name, BoxButtons::kOk, BoxIcon::kWarning);
    return false;
  }

  int Show(int text, const QString& name, BoxButtons buttons, BoxIcon icon) {
    const std::u16string question = Format(LoadString(text), {FromQt(name)});
    return ShowMessageBoxOver(this, {question, FromQt(windowTitle()), buttons, icon, true});
  }

  bool is_open_;
  QString extension_;
  QString chosen_;
};

}  // namespace

std::optional<std::u16string> ChooseFile(Window* owner, const FileQuestion& question) {
  if (FileDialogScript* script = FileDialogScript::Current()) return script->Take(question);
  NativeFileDialog dialog(owner, question);
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  return FromQt(dialog.chosen());
}

}  // namespace celldesk
