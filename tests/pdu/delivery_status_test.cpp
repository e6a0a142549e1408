#include "pdu/delivery_status.h"

#include <gtest/gtest.h>

#include <map>
#include <string>

namespace celldesk {
namespace {

TEST(DeliveryStatus, KnownStatusesHaveTheirTexts) {
  const std::map<std::uint32_t, std::string> texts = {
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
       "SM does not exist (The SM may have previously existed in the SC but the SC no longer has knowledge "
       "of it or "
       "the SM may never have previously existed in the SC)"},
      {0x60, "Congestion"},
      {0x61, "SME busy"},
      {0x62, "No response from SME"},
      {0x63, "Service rejected"},
      {0x64, "Quality of service not available"},
      {0x65, "Error in SME"}};
  for (std::uint32_t status = 0; status <= 0xFF; ++status) {
    const auto known = texts.find(status);
    EXPECT_EQ(DeliveryStatusText(status), known == texts.end() ? "<Reserved>" : known->second) << status;
  }
}

TEST(DeliveryStatus, TheClassTellsSeverityAndSentence) {
  struct Class {
    std::uint32_t first;
    const char* severity;
    int sentence;
  };
  const Class classes[] = {{0x00, "Short message transaction completed", 124},
                           {0x20, "Temporary error, SC still trying to transfer SM", 178},
                           {0x40, "Permanent error, SC is not making any more transfer attempts", 179},
                           {0x60, "Temporary error, SC is not making any more transfer attempts", 179},
                           {0x80, "<Unknown>", 348},
                           {0xA0, "<Unknown>", 348},
                           {0xC0, "<Unknown>", 348},
                           {0xE0, "<Unknown>", 348}};
  for (const auto& [first, severity, sentence] : classes) {
    for (const std::uint32_t status : {first, first + 0x1F}) {
      EXPECT_EQ(DeliverySeverityText(status), severity);
      EXPECT_EQ(DeliverySentence(status), sentence);
    }
  }
}

TEST(DeliveryStatus, AReservedStatusOfAKnownClassIsStillClassed) {
  EXPECT_EQ(DeliveryStatusText(0x03), "<Reserved>");
  EXPECT_EQ(DeliverySentence(0x03), 124);
}

}  // namespace
}  // namespace celldesk
