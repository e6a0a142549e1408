#pragma once

namespace celldesk {

class AtEngine;
class ContactsDatabase;
class FileSystem;
class Locale;
class PhoneLink;
class PortInspector;
class PortList;
class Registry;
class Shell;
class SmsService;

/// What the windows borrow from the program for its whole run.
struct ProgramServices {
  PhoneLink& link;
  AtEngine& engine;
  SmsService& sms;
  Registry& registry;
  const Locale& locale;
  Shell& shell;
  PortList& port_list;
  PortInspector& port_inspector;
  FileSystem& files;
  ContactsDatabase& contacts;
};

}  // namespace celldesk
