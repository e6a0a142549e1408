#include "tour.h"
#include "ui/commands.h"
#include "ui/framework/message_box.h"

namespace celldesk {

void TourWindow(Tour& tour) {
  tour.Step("Every folder fits small, middle and large screens, light and dark", [&] {
    const struct { int width, height; } sizes[] = {{640, 240}, {800, 480}, {1280, 800}};
    const char* names[] = {"address_sim", "address_mt", "inbox", "outbox"};
    for (const bool dark : {false, true}) {
      tour.SetDark(dark);
      for (const auto& size : sizes) {
        tour.Resize(size.width, size.height);
        for (int folder = 0; folder < 4; ++folder) {
          tour.ShowFolder(folder);
          tour.Picture(QString("%1_%2x%3%4")
                           .arg(names[folder])
                           .arg(size.width)
                           .arg(size.height)
                           .arg(dark ? "_dark" : ""));
          if (tour.frame().pages().Current() != folder) return false;
        }
      }
    }
    tour.SetDark(false);
    tour.Resize(640, 420);
    tour.ShowFolder(0);
    return true;
  });
  tour.Step("About tells the version", [&] {
    bool shown = false;
    tour.InNextDialog([&](Dialog& dialog) {
      shown = dialog.Text(1002) == u"Cell Desk v. 1.8";
      tour.Picture("about");
      dialog.Dispatch(Message::kCommand, kIdCancel, 0);
    });
    tour.Choose(command::kAbout);
    return shown;
  });
  tour.Step("Disconnect closes the line", [&] {
    tour.Click(command::kConnection);
    return !tour.frame().IsConnected();
  });
  tour.Step("Exit closes the window", [&] {
    tour.Choose(command::kExit);
    return !tour.frame().IsAttached();
  });
}

}  // namespace celldesk
