#include "program.h"
#include "util/text.h"

int main(int argument_count, char** arguments) {
  celldesk::Program program(argument_count, arguments);
  // What is left after the toolkit took its own options: at most a file to open.
  const std::u16string file = argument_count > 1 ? celldesk::FromUtf8(arguments[1]) : std::u16string();
  return program.Run(file);
}
