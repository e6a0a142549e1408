// An empty window of the toolkit: what every program with a window takes. With --text there is one word in
// it: what every program with a window that can be read takes.
#include <QLabel>
#include <QMainWindow>

#include "first_paint.h"

int main(int argument_count, char** arguments) {
  QApplication application(argument_count, arguments);
  const celldesk::bench::FirstPaint watch;
  QMainWindow window;
  if (argument_count > 1) window.setCentralWidget(new QLabel(QStringLiteral("Ready")));
  window.show();
  return QApplication::exec();
}
