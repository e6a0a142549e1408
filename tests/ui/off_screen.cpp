#include <QTemporaryDir>
#include <cstdio>

namespace celldesk {
namespace {

// What the off-screen display cannot do; all else that the toolkit warns of is shown.
void ShowWarnings(QtMsgType /*type*/, const QMessageLogContext& /*context*/, const QString& text) {
  if (!text.startsWith(QLatin1String("This plugin does not support")))
    std::fprintf(stderr, "%s\n", qPrintable(text));
}

// The window tests run anywhere: no display, no desktop session, no style but the toolkit's own.
class OffScreen {
 public:
  OffScreen() {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_STYLE_OVERRIDE", "Fusion");
    qputenv("XDG_RUNTIME_DIR", runtime_.path().toUtf8());
    qInstallMessageHandler(ShowWarnings);
  }

 private:
  QTemporaryDir runtime_;
};

const OffScreen off_screen;

}  // namespace
}  // namespace celldesk
