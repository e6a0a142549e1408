#include <QTemporaryDir>

namespace celldesk {
namespace {

// The window tests run anywhere: no display, no desktop session, no style but the toolkit's own.
class OffScreen {
 public:
  OffScreen() {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_STYLE_OVERRIDE", "Fusion");
    qputenv("XDG_RUNTIME_DIR", runtime_.path().toUtf8());
  }

 private:
  QTemporaryDir runtime_;
};

const OffScreen off_screen;

}  // namespace
}  // namespace celldesk
