#pragma once

#include <string_view>

namespace celldesk {

/// What the parameters of a content line say that matters here: "TYPE=CELL,VOICE;CHARSET=UTF-8", in vCard 2.1
/// also without the names: "CELL;VOICE". Unknown ones are passed over.
struct VcardParameters {
  std::string_view charset;  ///< borrowed from the text parsed
  bool quoted_printable = false;
  bool base64 = false;
  bool uri = false;  ///< the value is a URI

  bool cell = false;
  bool work = false;
  bool home = false;
  bool no_voice = false;  ///< a fax, pager or modem: nobody to speak to

  static VcardParameters Parse(std::string_view parameters);

 private:
  void Take(std::string_view parameter);
  void TakeWord(std::string_view word);
};

}  // namespace celldesk
