// Pictures of every window on a screen of a given size: celldesk-pictures PHONE FOLDER WIDTHxHEIGHT VARIANT.
// The toolkit's scale and the country come from the environment.

#include <QDir>
#include <QFile>
#include <QStringList>
#include <cstdio>

#include "album.h"
#include "profile.h"

namespace {

// The off-screen display with a screen that has this size after scaling.
bool MakeScreen(const QString& folder, int width, int height) {
  const double scale =
      qEnvironmentVariableIsSet("QT_SCALE_FACTOR") ? qgetenv("QT_SCALE_FACTOR").toDouble() : 1;
  QFile file(folder + "/screen.json");
  if (!file.open(QIODevice::WriteOnly)) return false;
  file.write(QString(R"({"screens": [{"name": "screen", "x": 0, "y": 0, "width": %1, "height": %2}]})")
                 .arg(qRound(width * scale))
                 .arg(qRound(height * scale))
                 .toUtf8());
  qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + QFile::encodeName(file.fileName()));
  return true;
}

}  // namespace

int main(int argument_count, char** arguments) {
  const QStringList size = argument_count == 5 ? QString(arguments[3]).split('x') : QStringList();
  if (size.size() != 2) {
    std::fprintf(stderr, "usage: celldesk-pictures PHONE-PROGRAM FOLDER WIDTHxHEIGHT VARIANT\n");
    return 2;
  }
  const QString folder = QDir(QFile::decodeName(arguments[2])).absolutePath();
  const QString profile = folder + "/profile";
  if (!celldesk::MakeProfile(profile) || !MakeScreen(profile, size[0].toInt(), size[1].toInt())) {
    std::fprintf(stderr, "%s cannot be made.\n", qPrintable(profile));
    return 2;
  }
  QFile::remove(folder + "/phone.txt");  // the phone as it was before another screen's messages were read
  celldesk::Tour tour(argument_count, arguments, folder);
  tour.Step("The simulated phone starts", [&] { return tour.StartPhone(QFile::decodeName(arguments[1])); });
  tour.Step("The window opens", [&] { return tour.application().InitInstance({}, true); });
  if (tour.all_passed()) {
    tour.Resize(size[0].toInt(), size[1].toInt());
    celldesk::Album(tour, arguments[4]).Fill();
  }
  tour.application().ExitInstance(0);
  return tour.all_passed() ? 0 : 1;
}
