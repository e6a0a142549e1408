#pragma once

#include <string_view>

#include "link/at_engine.h"
#include "link/phone_link.h"
#include "support/fake_registry.h"
#include "support/fake_serial_port.h"
#include "support/fake_thread.h"
#include "support/manual_waiter.h"
#include "support/scripted_phone.h"

namespace celldesk {

/// An open link to a scripted phone, without threads and without time: what a test of a phone procedure
/// needs. The end of the session checks that the script was used up.
///
///   ScriptedSession session(R"(
///     > AT+CPBS="SM"\r\n
///     < OK
///   )");
///
/// The procedure is then given `session.engine`, and `session.waiter.now()` is the time that it took.
class ScriptedSession {
 public:
  explicit ScriptedSession(std::string_view script = {});
  ~ScriptedSession();
  ScriptedSession(const ScriptedSession&) = delete;
  ScriptedSession& operator=(const ScriptedSession&) = delete;

  FakeRegistry registry;
  FakePortOpener ports;
  FakeThreadStarter threads;
  ManualWaiter waiter;
  ScriptedPhone phone;
  PhoneLink link;
  AtEngine engine;
};

}  // namespace celldesk
