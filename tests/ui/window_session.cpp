#include "ui/window_session.h"

#include <algorithm>

#include "config/settings_store.h"
#include "pdu/gsm_alphabet.h"
#include "util/text.h"

namespace celldesk {
namespace {

// The toolkit keeps pointers to these for the application's life.
int argument_count = 1;
char program_name[] = "celldesk";
char* arguments[] = {program_name, nullptr};

void Fill(simulator::Phonebook& book, const std::vector<TestEntry>& entries, int last) {
  book.last = last;
  book.entries.clear();
  for (const TestEntry& entry : entries) {
    const int type = entry.number.starts_with('+') ? simulator::kInternational : simulator::kNational;
    book.entries[entry.index] = {entry.number, type, entry.name};
  }
}

}  // namespace

std::string Utf8(std::u16string_view text) { return ToUtf8(text); }

simulator::PhoneMemory PhoneWith(const std::vector<TestEntry>& sim, int sim_last,
                                 const std::vector<TestEntry>& phone, int phone_last) {
  simulator::PhoneMemory memory;
  Fill(*memory.FindPhonebook("SM"), sim, sim_last);
  Fill(*memory.FindPhonebook("ME"), phone, phone_last);
  return memory;
}

WindowSession::WindowSession(simulator::PhoneMemory memory, simulator::Profile profile)
    : line(waiter, simulator::SimulatedPhone(std::move(memory), std::move(profile))) {
  Settings settings;
  settings.centre = u"+447700900000";
  SettingsStore(registry).Save(settings);
  argument_count = 1;
  application = std::make_unique<CellDeskApplication>(argument_count, arguments, Machine());
  line.DeliverTo([this](std::span<const std::uint8_t> bytes) {
    std::u16string text(bytes.size(), u'\0');
    GsmBytesToWide(text.data(), bytes.data(), bytes.size());
    application->link().ReceiveChunk(text);
  });
}

WindowSession::~WindowSession() {
  Dialog::SetModalHook({});
  application->ExitInstance(0);
}

MachineServices WindowSession::Machine() {
  return {line,           threads, registry, locale,  shell,     port_list,
          port_inspector, files,   contacts, &waiter, &instances};
}

bool WindowSession::Start() {
  const bool started = application->InitInstance({}, true);
  Pump();
  return started;
}

void WindowSession::Command(int command) {
  frame().Dispatch(Message::kCommand, static_cast<WordParameter>(command), 0);
  Pump();
}

void WindowSession::Pump() {
  application->PumpMessages();
  if (application->frame() != nullptr) application->IdleLoop();
}

void WindowSession::ShowFolder(int index) {
  frame().pages().Select(index);
  Pump();
}

std::vector<std::string> WindowSession::Rows(AddressBookView& view) {
  std::vector<std::string> rows;
  std::u16string buffer;
  for (int row = 0; row < view.list().RowCount(); ++row) {
    const std::size_t record = view.list().RecordAt(row);
    std::string text = Utf8(view.ColumnText(record, 0, buffer));
    for (int column = 1; column < 3; ++column) text += "|" + Utf8(view.ColumnText(record, column, buffer));
    rows.push_back(text);
  }
  return rows;
}

std::vector<std::string> WindowSession::TakeAsked() {
  std::vector<std::string> texts;
  for (; asked_before_ < boxes.asked().size(); ++asked_before_)
    texts.push_back(Utf8(boxes.asked()[asked_before_].text));
  return texts;
}

void WindowSession::InNextDialog(std::function<void(Dialog& dialog)> work) {
  Dialog::SetModalHook([work = std::move(work)](Dialog& dialog) {
    const auto now = work;
    Dialog::SetModalHook({});
    now(dialog);
  });
}

void WindowSession::SelectRows(AddressBookView& view, const std::vector<int>& rows) {
  view.list().ClearSelection();
  for (const int row : rows) view.list().Select(row, true);
  if (!rows.empty()) view.list().SetFocusedRow(rows.front());
}

}  // namespace celldesk
