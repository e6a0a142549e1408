// The pictures of every window, on the smallest screen (tools/pictures takes them on all).

#include <gtest/gtest.h>

#include <QDir>
#include <QImage>
#include <QTemporaryDir>

#include "tools/program_run.h"

namespace celldesk {
namespace {

class Pictures : public testing::Test {
 protected:
  ProgramRun Take() {
    const std::string phone = ProgramFolder() + "/celldesk-phone";
    return RunProgram("celldesk-pictures", {phone, folder_.path().toStdString(), "640x240", "small"});
  }
  QString Path(const QString& name) const { return folder_.filePath(name); }

  QTemporaryDir folder_;
};

TEST_F(Pictures, OfEveryWindowAreTakenLightAndDark) {
  const ProgramRun run = Take();
  EXPECT_EQ(run.exit_status, 0) << run.output << run.errors;
  const QStringList light = QDir(folder_.path()).entryList({"*_small.png"});
  EXPECT_GE(light.size(), 36);
  for (QString name : light) {
    const QSize size = QImage(Path(name)).size();
    EXPECT_TRUE(size.width() <= 640 && size.height() <= 240) << name.toStdString();
    EXPECT_EQ(QImage(Path(name.replace("_small", "_small_dark"))).size(), size) << name.toStdString();
  }
}

TEST_F(Pictures, OneThatCannotBeTakenIsAFailure) {
  ASSERT_TRUE(QDir(folder_.path()).mkdir("viewer_small.png")) << "in the picture's way";
  const ProgramRun run = Take();
  EXPECT_EQ(run.exit_status, 1);
  EXPECT_NE(run.output.find("[FAILED] viewer_small\n"), std::string::npos) << run.output;
}

}  // namespace
}  // namespace celldesk
