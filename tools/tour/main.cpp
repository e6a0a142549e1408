#include <QDir>
#include <QFile>
#include <cstdio>

#include "profile.h"
#include "tour.h"

int main(int argument_count, char** arguments) {
  if (argument_count != 3) {
    std::fprintf(stderr, "usage: celldesk-tour PHONE-PROGRAM FOLDER\n");
    return 2;
  }
  const QString phone = QFile::decodeName(arguments[1]);
  const QString folder = QDir(QFile::decodeName(arguments[2])).absolutePath();
  if (!celldesk::MakeProfile(folder)) {
    std::fprintf(stderr, "%s cannot be made.\n", qPrintable(folder));
    return 2;
  }
  celldesk::Tour tour(argument_count, arguments, folder);
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
