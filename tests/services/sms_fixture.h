#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <vector>

#include "services/sms_service.h"
#include "support/scripted_session.h"

namespace celldesk {

/// A list that remembers what it was told.
class RecordingList : public RowObserver {
 public:
  void RowRead(int position) override { rows.push_back(position); }
  void Repaint() override { ++repaints; }

  std::vector<int> rows;
  int repaints = 0;
};

/// An SMS service over a scripted phone.
struct SmsSession : ScriptedSession {
  explicit SmsSession(std::string_view script = {}) : ScriptedSession(script), service(engine) {}

  SmsService service;
};

/// The exchange that asks for the memories `read`, e.g. "SM","ME", and for storing.
inline std::string Capabilities(const std::string& read) {
  return "> AT+CPMS=?\\r\n< +CPMS: (" + read + "),(" + read + "),(\"SM\")\n< OK\n> AT+CMGW=?\\r\n< OK\n";
}

inline std::string Select(const std::string& memory, const std::string& reply = "< OK\n") {
  return "> AT+CPMS=\"" + memory + "\",\"" + memory + "\"\\r\n" + reply;
}

inline std::vector<std::chrono::milliseconds> Milliseconds(std::initializer_list<int> values) {
  return {values.begin(), values.end()};
}

/// A composed message to 420601123456 with the text "Hi", encoded.
inline SmsMessage& AddMessage(SmsService& service, std::uint32_t flags, int memory = 0) {
  SmsMessage& message = service.messages().At(service.messages().Append());
  message.flags = flags;
  message.memory = static_cast<std::int16_t>(memory);
  message.storage_status = kStoredUnsent;
  message.first_octet = 0x11;
  message.submit.toa = 0x91;
  message.submit.number = u"420601123456";
  message.submit.relative_validity = 0xA7;
  message.text = u"Hi";
  EXPECT_EQ(message.Encode(), S_OK);
  return message;
}

inline const std::string kHiPdu = "11000C912460102143650000A702C834";  // 16 octets

}  // namespace celldesk
