#pragma once

#include <cstddef>
#include <string_view>

#include "link/response_line.h"

namespace celldesk {

/// The n-th field of a reply, as Field gives it, but empty where nothing stands between two separators: there
/// Field, which takes at least one character, runs into the fields that follow.
inline std::u16string_view ReplyField(const ResponseLine& line, std::size_t n) {
  const std::u16string_view field = Field(line, n);
  if (!field.starts_with(u',')) return field;
  const char16_t before = field.data() == line.text().data() ? u'\0' : field.data()[-1];
  const bool quoted = before == u'"' || before == u'(';
  return quoted ? field : std::u16string_view{};
}

}  // namespace celldesk
