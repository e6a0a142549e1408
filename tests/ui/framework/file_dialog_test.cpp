#include "ui/framework/file_dialog.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include "support/temporary_folder.h"
#include "ui/framework/framework_fixture.h"
#include "util/text.h"

namespace celldesk {
namespace {

using testing::ElementsAre;
using Path = std::optional<std::u16string>;

constexpr std::u16string_view kFilter = u"Address book (*.ADR)#*.adr#All files (*.*)#*.*#";

class FileDialogTest : public FrameworkTest {
 protected:
  /// Shows the real dialog in the test's folder, works it once it is there, and gives its answer.
  Path Choose(FileDialogKind kind, std::function<void(QFileDialog&)> work) {
    return ChooseFrom(kind, [this, work = std::move(work)](QFileDialog& dialog) {
      dialog.setDirectory(QString::fromStdString(folder_.path().string()));
      work(dialog);
    });
  }
  static Path ChooseFrom(FileDialogKind kind, const std::function<void(QFileDialog&)>& work) {
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &timer, [&] {
      auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
      if (dialog == nullptr) return;
      timer.stop();
      work(*dialog);
      if (dialog->isVisible()) dialog->reject();
    });
    timer.start(1);
    return ChooseFile(nullptr, {kind, std::u16string(kFilter), u"adr"});
  }
  /// Types a name and presses Enter.
  static std::function<void(QFileDialog&)> Type(const QString& name) {
    return [name](QFileDialog& dialog) { TypeName(dialog, name); };
  }
  static void TypeName(QFileDialog& dialog, const QString& name) {
    QLineEdit* field = NameField(dialog);
    field->setFocus();
    EXPECT_TRUE(QTest::qWaitFor([field] { return field->hasFocus(); }, 30000));
    field->selectAll();
    QTest::keyClicks(field, name);
    QTest::keyClick(field, Qt::Key_Return);
  }
  static QLineEdit* NameField(QFileDialog& dialog) {
    return dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
  }
  static QListView* Files(QFileDialog& dialog) {
    return dialog.findChild<QListView*>(QStringLiteral("listView"));
  }
  /// The names that the dialog lists, once `name` is among them.
  static std::vector<std::string> ListWith(QFileDialog& dialog, const std::string& name) {
    std::vector<std::string> names;
    const bool listed = QTest::qWaitFor(
        [&] {
          names = Names(dialog);
          return std::find(names.begin(), names.end(), name) != names.end();
        },
        30000);
    EXPECT_TRUE(listed) << name;
    return names;
  }
  static std::vector<std::string> Names(QFileDialog& dialog) {
    std::vector<std::string> names;
    const QListView* list = Files(dialog);
    for (int row = 0; row < list->model()->rowCount(list->rootIndex()); ++row)
      names.push_back(list->model()->index(row, 0, list->rootIndex()).data().toString().toStdString());
    return names;
  }
  static QPoint PlaceOf(QFileDialog& dialog, const std::string& name) {
    const auto names = ListWith(dialog, name);
    const auto row = static_cast<int>(std::find(names.begin(), names.end(), name) - names.begin());
    QListView* list = Files(dialog);
    return list->visualRect(list->model()->index(row, 0, list->rootIndex())).center();
  }
  Path In(const std::string& name) const { return FromUtf8((folder_.path() / name).string()); }

  TemporaryFolder folder_;
  MessageBoxScript boxes_;
};

TEST(FileFilter, IsCaptionsAndPatternsInTurn) {
  EXPECT_THAT(ParseFileFilters(kFilter), ElementsAre(FileFilter{u"Address book (*.ADR)", u"*.adr"},
                                                     FileFilter{u"All files (*.*)", u"*.*"}));
  EXPECT_TRUE(ParseFileFilters(u"").empty());
  EXPECT_TRUE(ParseFileFilters(u"Alone#").empty());
  EXPECT_TRUE(ParseFileFilters(u"Not ended#*.adr").empty());
}

TEST_F(FileDialogTest, SavesUnderTheNameThatIsTyped) {
  EXPECT_EQ(Choose(FileDialogKind::kSave, Type("friends.adr")), In("friends.adr"));
  EXPECT_TRUE(boxes_.asked().empty());
}

TEST_F(FileDialogTest, AddsTheExtensionToANameWithoutOne) {
  EXPECT_EQ(Choose(FileDialogKind::kSave, Type("friends")), In("friends.adr"));
  EXPECT_EQ(Choose(FileDialogKind::kSave, Type("friends.txt")), In("friends.txt"));
  EXPECT_EQ(Choose(FileDialogKind::kSave, Type("friends.")), In("friends."));
  folder_.Write("friends.adr", "");
  EXPECT_EQ(Choose(FileDialogKind::kOpen, Type("friends")), In("friends.adr"));
}

TEST_F(FileDialogTest, OpensAnExistingFileWithoutAnExtension) {
  folder_.Write("friends", "");
  folder_.Write("friends.adr", "");
  EXPECT_EQ(Choose(FileDialogKind::kOpen, Type("friends")), In("friends"));
}

TEST_F(FileDialogTest, AsksBeforeAFileIsReplaced) {
  folder_.Write("friends.adr", "");
  boxes_.Answer(kAnswerNo);
  EXPECT_EQ(Choose(FileDialogKind::kSave,
                   [&](QFileDialog& dialog) {
                     TypeName(dialog, "friends");
                     EXPECT_TRUE(dialog.isVisible());
                   }),
            std::nullopt);
  boxes_.Answer(kAnswerYes);
  EXPECT_EQ(Choose(FileDialogKind::kSave, Type("friends")), In("friends.adr"));
  ASSERT_EQ(boxes_.asked().size(), 2U);
  const BoxQuestion& question = boxes_.asked().front();
  EXPECT_EQ(Utf8(question.text), "'friends.adr' already exists.\rDo you want to replace it?");
  EXPECT_EQ(Utf8(question.caption), "Save As");
  EXPECT_EQ(question.buttons, BoxButtons::kYesNo);
  EXPECT_EQ(question.icon, BoxIcon::kWarning);
  EXPECT_TRUE(question.default_no);
}

TEST_F(FileDialogTest, OpensOnlyWhatExists) {
  EXPECT_EQ(Choose(FileDialogKind::kOpen,
                   [&](QFileDialog& dialog) {
                     TypeName(dialog, "none");
                     EXPECT_TRUE(dialog.isVisible());
                   }),
            std::nullopt);
  EXPECT_EQ(Utf8(boxes_.asked().back().text), "There is no file 'none.adr'.");
  EXPECT_EQ(Utf8(boxes_.asked().back().caption), "Open");
}

TEST_F(FileDialogTest, ThePathMustExist) {
  for (const FileDialogKind kind : {FileDialogKind::kOpen, FileDialogKind::kSave}) {
    EXPECT_EQ(Choose(kind, Type("none/friends.adr")), std::nullopt);
    EXPECT_EQ(boxes_.asked().back().text, u"There is no folder '" + *In("none") + u"'.");
  }
}

TEST_F(FileDialogTest, GoesIntoAFolderThatIsTyped) {
  folder_.Write("sub/friends.adr", "");
  EXPECT_EQ(Choose(FileDialogKind::kOpen,
                   [&](QFileDialog& dialog) {
                     TypeName(dialog, "sub");
                     EXPECT_TRUE(dialog.isVisible());
                     TypeName(dialog, "friends.adr");
                   }),
            In("sub/friends.adr"));
}

TEST_F(FileDialogTest, CancelChoosesNothing) {
  folder_.Write("friends.adr", "");
  const auto escape = [](QFileDialog& dialog) { QTest::keyClick(NameField(dialog), Qt::Key_Escape); };
  EXPECT_EQ(Choose(FileDialogKind::kSave, escape), std::nullopt);
  const auto click = [](QFileDialog& dialog) {
    QTest::keyClicks(NameField(dialog), "friends.adr");
    auto* buttons = dialog.findChild<QDialogButtonBox*>();
    QTest::mouseClick(buttons->button(QDialogButtonBox::Cancel), Qt::LeftButton);
  };
  EXPECT_EQ(Choose(FileDialogKind::kOpen, click), std::nullopt);
  EXPECT_TRUE(boxes_.asked().empty());
}

TEST_F(FileDialogTest, ThePenOpensAFileByADoubleClick) {
  folder_.Write("Friends.ADR", "");
  EXPECT_EQ(Choose(FileDialogKind::kOpen,
                   [&](QFileDialog& dialog) {
                     QWidget* list = Files(dialog)->viewport();
                     const QPoint place = PlaceOf(dialog, "Friends.ADR");
                     QTest::mouseClick(list, Qt::LeftButton, {}, place);
                     QTest::mouseDClick(list, Qt::LeftButton, {}, place);
                   }),
            In("Friends.ADR"));
}

TEST_F(FileDialogTest, ThePenChoosesAFileAndThenOpen) {
  folder_.Write("friends.adr", "");
  EXPECT_EQ(Choose(FileDialogKind::kOpen,
                   [&](QFileDialog& dialog) {
                     const QPoint place = PlaceOf(dialog, "friends.adr");
                     QTest::mouseClick(Files(dialog)->viewport(), Qt::LeftButton, {}, place);
                     auto* buttons = dialog.findChild<QDialogButtonBox*>();
                     QTest::mouseClick(buttons->button(QDialogButtonBox::Open), Qt::LeftButton);
                   }),
            In("friends.adr"));
}

TEST_F(FileDialogTest, ListsTheFilesOfTheChosenType) {
  folder_.Write("friends.adr", "");
  folder_.Write("notes.txt", "");
  folder_.Write("plain", "");
  Choose(FileDialogKind::kOpen, [&](QFileDialog& dialog) {
    auto* types = dialog.findChild<QComboBox*>(QStringLiteral("fileTypeCombo"));
    ASSERT_EQ(types->count(), 2);
    EXPECT_EQ(types->itemText(0).toStdString(), "Address book (*.ADR)");
    EXPECT_EQ(types->itemText(1).toStdString(), "All files (*.*)");
    EXPECT_THAT(ListWith(dialog, "friends.adr"), ElementsAre("friends.adr"));
    types->setFocus();
    QTest::keyClick(types, Qt::Key_Down);
    EXPECT_THAT(ListWith(dialog, "plain"), ElementsAre("friends.adr", "notes.txt", "plain"));
  });
}

TEST_F(FileDialogTest, StartsWhereAFileWasChosenLast) {
  folder_.Write("sub/friends.adr", "");
  EXPECT_EQ(Choose(FileDialogKind::kOpen, Type("sub/friends.adr")), In("sub/friends.adr"));
  EXPECT_EQ(ChooseFrom(FileDialogKind::kSave, Type("new")), In("sub/new.adr"));
  std::filesystem::remove_all(folder_.path() / "sub");
  ChooseFrom(FileDialogKind::kSave, [](QFileDialog& dialog) { EXPECT_TRUE(dialog.directory().exists()); });
}

TEST_F(FileDialogTest, FitsTheSmallestScreen) {
  folder_.Write("friends.adr", "");
  folder_.Write("a rather long name of an address book.adr", "");
  for (const FileDialogKind kind : {FileDialogKind::kOpen, FileDialogKind::kSave}) {
    Choose(kind, [&](QFileDialog& dialog) {
      ListWith(dialog, "friends.adr");
      EXPECT_EQ(dialog.size(), QSize(640, 240));
      EXPECT_LE(dialog.minimumSizeHint().width(), 640);
      EXPECT_LE(dialog.minimumSizeHint().height(), 240);
      for (const QWidget* button : dialog.findChildren<QPushButton*>())
        EXPECT_TRUE(dialog.rect().contains({button->mapTo(&dialog, QPoint()), button->size()}));
      const QString folder = qEnvironmentVariable("CELLDESK_SCREENSHOTS");
      const char* name = kind == FileDialogKind::kOpen ? "/file_open.png" : "/file_save.png";
      if (folder.isEmpty()) return;
      EXPECT_TRUE(dialog.grab().save(folder + QLatin1String(name)));
    });
  }
}

TEST(FileDialogScript, AnswersInOrderAndThenCancels) {
  FileDialogScript script;
  script.Answer(u"a.adr");
  script.Answer(std::nullopt);
  const FileQuestion question{FileDialogKind::kSave, u"x#*.x#", u"x"};
  EXPECT_EQ(ChooseFile(nullptr, question), u"a.adr");
  EXPECT_EQ(ChooseFile(nullptr, {}), std::nullopt);
  EXPECT_EQ(ChooseFile(nullptr, {}), std::nullopt);
  ASSERT_EQ(script.asked().size(), 3U);
  EXPECT_EQ(script.asked()[0].default_extension, u"x");
  EXPECT_EQ(script.unused_answers(), 0U);
  {
    FileDialogScript inner;
    EXPECT_EQ(FileDialogScript::Current(), &inner);
  }
  EXPECT_EQ(FileDialogScript::Current(), &script);
}

}  // namespace
}  // namespace celldesk
