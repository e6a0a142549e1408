#include "window_application.h"

#include <array>
#include <string>

#include "ui/framework/application.h"

namespace celldesk::bench {

Application& WindowApplication() {
  static int count = 1;
  static std::string name = "celldesk-bench";
  static std::array<char*, 2> words{name.data(), nullptr};
  static auto* const application = new Application(count, words.data());
  return *application;
}

}  // namespace celldesk::bench
