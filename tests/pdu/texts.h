#pragma once

#include <string>

namespace celldesk {

/// The texts that the codecs ask for, by number.
inline std::u16string TestText(int number) {
  switch (number) {
    case 124:
      return u"Message delivery SUCCESS, status(%#2x,%s)severity(%s).";
    case 157:
      return u"%s hours";
    case 158:
      return u"%i days";
    case 159:
      return u"%i weeks";
    case 160:
      return u"till %s";
    case 178:
      return u"ERROR, delivery will by retryied, status(%#2x,%s)severity(%s).";
    case 179:
      return u"Message was NOT delivered, status(%#2x,%s)severity(%s).";
    case 348:
      return u"Message delivery is UNKNOWN, status(%#2x,%s)severity(%s).";
    default:
      return u"?";
  }
}

}  // namespace celldesk
