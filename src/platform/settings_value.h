#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/registry.h"

namespace celldesk {

/// The written form of registry values and names in the settings file (UTF-8, one line).
///
///   string:TEXT         the text as it is read; see escapes
///   number:197          decimal, 0 to 4294967295
///   binary:1c 00 80     hexadecimal octets, blanks between them allowed
///   string-bytes:HEX    a string that is no whole UTF-16 text with its terminating zero
///   number-bytes:HEX    a number that has not four bytes
///
/// Escapes: "\\" a backslash, "\n", "\r", "\t", "\s" a blank (only needed at the end of a line), "\uXXXX" any
/// UTF-16 unit.
std::string EncodeValue(const RegistryData& data);

/// The value, or none when the type is unknown or the data is not of its form.
std::optional<RegistryData> DecodeValue(std::string_view text);

/// Text with escapes for control characters, backslashes, the units in `special`, a blank at either end and
/// surrogates that stand alone.
std::string EscapeText(std::u16string_view text, std::u16string_view special = {});

/// The inverse; none when an escape is not complete.
std::optional<std::u16string> UnescapeText(std::string_view text);

}  // namespace celldesk
