#pragma once

#include <cstdint>
#include <string_view>

namespace celldesk {

/// What a TP-Status octet says (GSM 03.40 9.2.3.15); "<Reserved>" for a value that is not in the table.
std::string_view DeliveryStatusText(std::uint32_t status);

/// What the class of a TP-Status (its bits 0xE0) says; "<Unknown>" for 0x80 and above.
std::string_view DeliverySeverityText(std::uint32_t status);

/// Number of the sentence for the class: 124 delivered, 178 tried again, 179 given up, 348 for class 0x80 and
/// above, which tells nothing. Each takes status, status text and severity text.
int DeliverySentence(std::uint32_t status);

}  // namespace celldesk
