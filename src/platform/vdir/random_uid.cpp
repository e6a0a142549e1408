#include "platform/vdir/random_uid.h"

#include <exception>
#include <random>
#include <string_view>

namespace celldesk {

std::string RandomUid() try {
  constexpr std::string_view kDigits = "0123456789abcdef";
  constexpr std::string_view kVariants = "89ab";
  std::string uid = "xxxxxxxx-xxxx-4xxx-vxxx-xxxxxxxxxxxx";
  std::random_device random;
  for (char& character : uid) {
    if (character == 'x') character = kDigits[random() % kDigits.size()];
    if (character == 'v') character = kVariants[random() % kVariants.size()];
  }
  return uid;
} catch (const std::exception&) {
  return {};
}

}  // namespace celldesk
