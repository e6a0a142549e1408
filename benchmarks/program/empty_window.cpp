// An empty window of the toolkit: what every program with a window takes.
#include <QMainWindow>

#include "first_paint.h"

int main(int argument_count, char** arguments) {
  QApplication application(argument_count, arguments);
  const celldesk::bench::FirstPaint watch;
  QMainWindow window;
  window.show();
  return QApplication::exec();
}
