#pragma once

#include <cstdint>
#include <string_view>

namespace celldesk {

/// What a TP-Status octet says (GSM 03.40 9.2.3.15); "<Reserved>" for a value that is not in the table.
std::string_view DeliveryStatusText(std::uint32_t status);

/// What the class of a TP-Status (its bits 0xE0) says; "<Unknown>" for 0x80 and above.
std::string_view DeliverySeverityText(std::uint32_t status);

/// Number of the sentence for the class: 124 delivered, 178 tried again, 179 given up; 0 for class 0x80 and
/// above, which has none.
int DeliverySentence(std::uint32_t status);

/// The sentence for the classes that have no number; takes the same three values.
inline constexpr std::u16string_view kUnknownClassSentence =
    u"Message delivery is UNKNOWN, status(%#2x,%s)severity(%s).";

}  // namespace celldesk
