#include "link/phone_link.h"

#include <array>
#include <atomic>
#include <new>
#include <utility>

#include "link/port_settings.h"
#include "pdu/gsm_alphabet.h"

namespace celldesk {
namespace {

using std::chrono::milliseconds;

constexpr std::size_t kReadSize = 256;
constexpr milliseconds kReadInterval{50};
constexpr milliseconds kClosePause{200};
constexpr milliseconds kJoinTimeout{1000};
constexpr milliseconds kJoinSlice{50};

}  // namespace

/// All that the reader thread touches. A reader that does not end keeps it, with the port, for itself.
struct PhoneLink::ReaderState {
  LineQueue lines;
  std::atomic<bool> running = false;
  std::unique_ptr<SerialPort> port;  // set before the reader starts, taken away after it has ended
  std::shared_ptr<LineTrace> trace;  // set before the reader starts
};

PhoneLink::PhoneLink(SerialPortOpener& ports, ThreadStarter& threads, Registry& registry, Waiter& waiter)
    : ports_(ports),
      threads_(threads),
      registry_(registry),
      waiter_(waiter),
      state_(std::make_shared<ReaderState>()) {}

PhoneLink::~PhoneLink() {
  if (is_open_) (void)Close();
}

Status PhoneLink::Open() {
  if (is_open_) return E_FAIL;
  const bool reader_abandoned = state_->port != nullptr;
  if (reader_abandoned) state_ = std::make_shared<ReaderState>();
  state_->lines.Restart();
  state_->trace = trace_;
  state_->port = ports_.Open(port_name_, &open_problem_);
  is_open_ = state_->port != nullptr;
  if (trace_) trace_->Opened(port_name_, is_open_);
  if (!is_open_) return E_FAIL;

  ApplyLineParameters();
  (void)state_->port->SetReadInterval(kReadInterval);
  const bool started = StartReader();
  SetReaderPriority();
  return started ? S_OK : E_FAIL;
}

Status PhoneLink::Close() {
  if (!is_open_) return S_OK;
  if (reader_) reader_->SetPriority(ThreadPriority::kNormal);
  waiter_.ShowWaitCursor(true);
  state_->port->Purge();
  state_->running = false;
  waiter_.Pause(kClosePause);
  const bool ended = JoinReader();
  reader_.reset();
  state_->lines.line_event().Reset();
  if (ended) state_->port.reset();
  is_open_ = false;
  if (state_->trace) state_->trace->Closed(port_name_);
  waiter_.ShowWaitCursor(false);
  return S_OK;
}

void PhoneLink::FlushLines() {
  state_->lines.Flush();
  response_.Clear();
}

Status PhoneLink::TakeLine(ResponseLine& response) {
  std::u16string text;
  if (!state_->lines.Take(text)) return E_FAIL;
  response.Take(std::move(text));
  return S_OK;
}

void PhoneLink::ReceiveChunk(std::u16string_view text) { state_->lines.Receive(text); }

Status PhoneLink::Write(std::span<const std::uint8_t> bytes) {
  if (!is_open_) return E_FAIL;
  if (state_->trace) state_->trace->Sent(bytes);
  return Failed(state_->port->Write(bytes)) ? E_FAIL : S_OK;
}

Event& PhoneLink::line_event() { return state_->lines.line_event(); }

SerialPort* PhoneLink::port() { return is_open_ ? state_->port.get() : nullptr; }

std::uint32_t PhoneLink::completed_chunks() const { return state_->lines.completed_chunks(); }

void PhoneLink::ApplyLineParameters() {
  auto parameters = LoadLineParameters(registry_, port_name_);
  if (!parameters) {
    parameters = state_->port->Parameters();
    if (!parameters) return;
    (void)StoreLineParameters(registry_, port_name_, *parameters);
  }
  (void)state_->port->SetParameters(*parameters);
}

bool PhoneLink::StartReader() {
  // Set here rather than by the thread, so that a Close that is quicker than the thread's start is not
  // undone.
  state_->running = true;
  reader_ = threads_.Start([state = state_] { ReadLoop(*state); });
  return reader_ != nullptr;
}

void PhoneLink::SetReaderPriority() {
  const auto capabilities = state_->port->ProviderCapabilities();
  if (!capabilities || !reader_) return;
  reader_->SetPriority(*capabilities != 0 ? ThreadPriority::kAboveNormal : ThreadPriority::kBelowNormal);
}

/// False when the reader does not end. It may have begun another read between the purge and its look at the
/// flag, so every wait begins with a purge of its own.
bool PhoneLink::JoinReader() {
  if (!reader_) return true;
  for (milliseconds waited{}; waited < kJoinTimeout; waited += kJoinSlice) {
    state_->port->Purge();
    if (reader_->Join(kJoinSlice)) return true;
  }
  return false;
}

void PhoneLink::ReadLoop(ReaderState& state) {
  while (state.running) {
    (void)state.port->ClearError();
    while (ReadChunk(state) && state.running) {
    }
  }
}

/// True when the buffer was full, so that more waits already.
bool PhoneLink::ReadChunk(ReaderState& state) {
  std::array<std::uint8_t, kReadSize> bytes;
  const ReadResult read = state.port->Read(bytes);
  if (Failed(read.status) || read.count == 0) return false;
  if (state.trace) state.trace->Received({bytes.data(), read.count});
  std::array<char16_t, kReadSize> text;
  GsmBytesToWide(text.data(), bytes.data(), read.count);
  state.lines.Receive({text.data(), read.count});
  return read.count == bytes.size();
}

}  // namespace celldesk
