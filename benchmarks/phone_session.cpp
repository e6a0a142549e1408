#include "phone_session.h"

#include <fstream>
#include <future>
#include <thread>

#include "scratch.h"
#include "simulator/phone_state.h"
#include "util/text.h"

namespace celldesk::bench {
namespace {

std::vector<std::string> PhoneArguments(const std::string& name, const simulator::PhoneMemory& memory) {
  const std::string state = Scratch::Path(name + ".state");
  std::ofstream(state) << simulator::SaveState(memory);
  return {"--port", name, "--state", state, "--baud", std::to_string(kBaud)};
}

}  // namespace

bool CountingWaiter::WaitFor(Event& event, std::chrono::milliseconds timeout) {
  waits_ = true;
  const bool set = event.Wait(timeout);
  waits_ = false;
  return set;
}

void CountingWaiter::Pause(std::chrono::milliseconds duration) {
  paused_ += std::chrono::duration<double>(duration).count();
  std::this_thread::sleep_for(duration);
}

class CountingOpener::Port : public SerialPort {
 public:
  Port(std::unique_ptr<SerialPort> port, CountingOpener& counts) : port_(std::move(port)), counts_(counts) {}

  ReadResult Read(std::span<std::uint8_t> buffer) override {
    const ReadResult result = port_->Read(buffer);
    counts_.bytes_ += result.count;
    const bool silence = result.count > 0 && result.count < buffer.size();
    if (silence && counts_.waiter_.waits()) ++counts_.read_ends_;
    return result;
  }
  Status Write(std::span<const std::uint8_t> bytes) override {
    counts_.bytes_ += bytes.size();
    return port_->Write(bytes);
  }
  void Purge() override { port_->Purge(); }
  std::optional<LineParameters> Parameters() const override { return port_->Parameters(); }
  Status SetParameters(const LineParameters& parameters) override { return port_->SetParameters(parameters); }
  Status SetReadInterval(std::chrono::milliseconds interval) override {
    return port_->SetReadInterval(interval);
  }
  Status ClearError() override { return port_->ClearError(); }
  std::optional<std::uint32_t> ProviderCapabilities() const override { return port_->ProviderCapabilities(); }

 private:
  std::unique_ptr<SerialPort> port_;
  CountingOpener& counts_;
};

std::unique_ptr<SerialPort> CountingOpener::Open(std::u16string_view name, OpenProblem* problem) {
  std::unique_ptr<SerialPort> port = ports_.Open(name, problem);
  return port == nullptr ? nullptr : std::make_unique<Port>(std::move(port), *this);
}

PhoneSession::PhoneSession(const std::string& name, const simulator::PhoneMemory& memory)
    : phone_("celldesk-phone", PhoneArguments(name, memory)) {
  link_.set_port_name(FromUtf8(phone_.ReadLine()));
}

std::vector<PhoneRun> RunAtOnce(int runs, const simulator::PhoneMemory& memory,
                                const std::function<PhoneRun(PhoneSession&)>& run) {
  std::vector<std::unique_ptr<PhoneSession>> sessions;
  for (int i = 0; i < runs; ++i) {
    sessions.push_back(std::make_unique<PhoneSession>("Bench phone " + std::to_string(i), memory));
  }
  std::vector<std::future<PhoneRun>> pending;
  for (const auto& session : sessions) {
    pending.push_back(std::async(std::launch::async, [&run, &session] { return run(*session); }));
  }
  std::vector<PhoneRun> results;
  for (std::future<PhoneRun>& one : pending) results.push_back(one.get());
  return results;
}

}  // namespace celldesk::bench
