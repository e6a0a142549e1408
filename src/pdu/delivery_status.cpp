#include "pdu/delivery_status.h"

#include <algorithm>
#include <array>

namespace celldesk {
namespace {

struct StatusRow {
  std::uint8_t status;
  std::string_view text;
};

constexpr StatusRow kStatusTexts[] = {
    {0x00, "Short message received by the SME"},
    {0x01, "Short message forwarded by the SC to the SME but the SC is unable to confirm delivery"},
    {0x02, "Short message replaced by the SC"},
    {0x20, "Congestion"},
    {0x21, "SME busy"},
    {0x22, "No response from SME"},
    {0x23, "Service rejected"},
    {0x24, "Quality of service not available"},
    {0x25, "Error in SME"},
    {0x40, "Remote procedure error"},
    {0x41, "Incompatible destination"},
    {0x42, "Connection rejected by SME"},
    {0x43, "Not obtainable"},
    {0x44, "Quality of service not available"},
    {0x45, "No interworking available"},
    {0x46, "SM Validity Period Expired"},
    {0x47, "SM Deleted by originating SME"},
    {0x48, "SM Deleted by SC Administration"},
    {0x49,
     "SM does not exist (The SM may have previously existed in the SC but the SC no longer has knowledge of "
     "it or "
     "the SM may never have previously existed in the SC)"},
    {0x60, "Congestion"},
    {0x61, "SME busy"},
    {0x62, "No response from SME"},
    {0x63, "Service rejected"},
    {0x64, "Quality of service not available"},
    {0x65, "Error in SME"},
};

struct ClassRow {
  std::string_view severity;
  int sentence;
};

constexpr std::array<ClassRow, 4> kClasses = {{
    {"Short message transaction completed", 124},
    {"Temporary error, SC still trying to transfer SM", 178},
    {"Permanent error, SC is not making any more transfer attempts", 179},
    {"Temporary error, SC is not making any more transfer attempts", 179},
}};

constexpr ClassRow kUnknownClass = {"<Unknown>", 348};

constexpr ClassRow ClassOf(std::uint32_t status) {
  const std::size_t index = (status & 0xE0) >> 5;
  return index < kClasses.size() ? kClasses[index] : kUnknownClass;
}

}  // namespace

std::string_view DeliveryStatusText(std::uint32_t status) {
  const auto* row = std::find_if(std::begin(kStatusTexts), std::end(kStatusTexts),
                                 [status](const StatusRow& known) { return known.status == status; });
  return row != std::end(kStatusTexts) ? row->text : "<Reserved>";
}

std::string_view DeliverySeverityText(std::uint32_t status) { return ClassOf(status).severity; }

int DeliverySentence(std::uint32_t status) { return ClassOf(status).sentence; }

}  // namespace celldesk
