#include <QDir>
#include <QFile>
#include <cstdio>

#include "tour.h"

namespace {

using celldesk::Tour;

// A profile of its own, with a service centre, and the simulated phone as its first port.
void MakeProfile(const QString& folder) {
  QDir(folder).removeRecursively();
  QDir().mkpath(folder + "/config/celldesk");
  QDir().mkpath(folder + "/run");
  QFile::setPermissions(folder + "/run", QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
  qputenv("XDG_CONFIG_HOME", (folder + "/config").toUtf8());
  qputenv("XDG_RUNTIME_DIR", (folder + "/run").toUtf8());
  QFile::copy(CELLDESK_FIRST_SETTINGS, folder + "/config/celldesk/settings.ini");
}

}  // namespace

int main(int argument_count, char** arguments) {
  if (argument_count != 3) {
    std::fprintf(stderr, "usage: celldesk-tour PHONE-PROGRAM FOLDER\n");
    return 2;
  }
  const QString phone = QFile::decodeName(arguments[1]);
  const QString folder = QDir(QFile::decodeName(arguments[2])).absolutePath();
  MakeProfile(folder);
  Tour tour(argument_count, arguments, folder);
  tour.Step("The simulated phone starts and names its device", [&] { return tour.StartPhone(phone); });
  tour.Step("The window opens", [&] { return tour.application().InitInstance({}, true); });
  if (tour.all_passed()) {
    celldesk::TourNewcomer(tour);
    celldesk::TourAddressBooks(tour);
    celldesk::TourMessages(tour);
    celldesk::TourWindow(tour);
  }
  tour.application().ExitInstance(0);
  return tour.all_passed() ? 0 : 1;
}
