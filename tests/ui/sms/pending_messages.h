#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>

#include "simulator/loopback_network.h"
#include "ui/sms/sms_window.h"
#include "ui/sms_editor_state.h"

namespace celldesk {

/// The flags with which the editor leaves a message.
inline constexpr std::uint32_t kLeftToStore = kMessageInUse | kMessageChanged | kMessageNew | kMessageToStore;
inline constexpr std::uint32_t kLeftToSend = kMessageInUse | kMessageChanged | kMessageNew | kMessageToSend;

/// A new message in the folders, as the editor leaves it.
inline SmsMessage& MakePending(SmsStore& messages, std::u16string_view text, std::uint32_t flags) {
  SmsEditorState state;
  state.number = u"+447700900555";
  state.text = text;
  SmsMessage& message = messages.MakeAt(messages.FirstFree());
  EXPECT_EQ(state.WriteInto(message), S_OK);
  message.first_octet = 1;
  message.memory = 0;
  message.flags = flags;
  message.storage_status = kStoredUnsent;
  EXPECT_EQ(message.Encode(), S_OK);
  return message;
}

/// Messages of this text that wait for something of `flags`.
inline bool IsPending(SmsWindow& window, std::u16string_view text, std::uint32_t flags) {
  for (int position = 0; position < window.messages().count(); ++position) {
    const SmsMessage& message = window.messages().At(position);
    if (message.text == text && (message.flags & flags) != 0) return true;
  }
  return false;
}

/// How often the phone's memories hold a message of this text.
inline int TimesStored(SmsWindow& window, std::u16string_view text) {
  int times = 0;
  for (const simulator::MessageStore& store : window.phone().memory().stores) {
    for (const auto& [index, stored] : store.messages) {
      const auto tpdu = simulator::ParseStored(stored);
      times += tpdu && TextOf(*tpdu) == text ? 1 : 0;
    }
  }
  return times;
}

/// How often the network saw this PDU.
inline int TimesSent(SmsWindow& window, const std::string& pdu) {
  const auto bodies = window.SentBodies();
  return static_cast<int>(
      std::count_if(bodies.begin(), bodies.end(), [&](const auto& body) { return body.ends_with(pdu); }));
}

}  // namespace celldesk
