#include "support/scripted_session.h"

#include <gtest/gtest.h>

#include <string>

#include "pdu/gsm_alphabet.h"

namespace celldesk {

ScriptedSession::ScriptedSession(std::string_view script)
    : phone(waiter), link(ports, threads, registry, waiter), engine(link, waiter) {
  ports.line.on_write = [this](std::span<const std::uint8_t> bytes) { phone.Receive(bytes); };
  phone.DeliverTo([this](std::span<const std::uint8_t> bytes) {
    std::u16string text(bytes.size(), u'\0');
    GsmBytesToWide(text.data(), bytes.data(), bytes.size());
    link.ReceiveChunk(text);
  });
  phone.Load(script);
  link.set_port_name(u"COM1:");
  EXPECT_EQ(link.Open(), S_OK);
}

ScriptedSession::~ScriptedSession() { EXPECT_TRUE(phone.finished()) << "the script was not used up"; }

}  // namespace celldesk
