#include <csignal>
#include <ctime>
#include <filesystem>
#include <iostream>

#include "simulator/ascii.h"
#include "simulator/options.h"
#include "simulator/phone_state.h"
#include "simulator/posix/pty_phone.h"
#include "simulator/posix/state_file.h"
#include "simulator/sample_memory.h"

namespace {

using namespace celldesk::simulator;

PtyPhone* served_phone = nullptr;

void HandleSignal(int) { served_phone->RequestStop(); }

PhoneSeconds LocalSeconds() {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  return timegm(&local);
}

/// The memory to begin with; nothing when the state file is there but not usable.
std::optional<PhoneMemory> FirstMemory(const Options& options) {
  std::error_code error;
  if (options.state_path.empty() || !std::filesystem::exists(options.state_path, error)) {
    return options.filled ? SampleMemory() : PhoneMemory();
  }
  std::string where = "cannot be read";
  const auto text = ReadFile(options.state_path);
  auto memory = text ? LoadState(*text, &where) : std::nullopt;
  if (!memory) std::cerr << "celldesk-phone: " << options.state_path << ": " << where << '\n';
  return memory;
}

void SaveMemory(const Options& options, const PhoneMemory& memory) {
  if (options.state_path.empty() || ReplaceFile(options.state_path, SaveState(memory))) return;
  std::cerr << "celldesk-phone: " << options.state_path << ": cannot be written\n";
}

/// Readable bytes as they are, all others as <HH>.
void TraceBytes(char direction, const std::string& bytes) {
  std::string text;
  for (const char byte : bytes) {
    const bool readable = byte >= ' ' && byte < 0x7F;
    text += readable ? std::string(1, byte) : '<' + ToHex(std::string_view(&byte, 1)) + '>';
  }
  std::cerr << direction << ' ' << text << '\n';
}

PtyOptions LineOptions(const Options& options) {
  PtyOptions line;
  line.baud = options.baud;
  line.port_name = options.port_name;
  line.on_change = [&options](const PhoneMemory& memory) { SaveMemory(options, memory); };
  line.on_device = [](const std::string& device) { std::cout << device << std::endl; };
  if (options.verbose) line.on_bytes = TraceBytes;
  return line;
}

int Run(const Options& options) {
  auto memory = FirstMemory(options);
  if (!memory) return 1;
  SimulatedPhone phone(std::move(*memory), options.profile, options.seed);
  phone.AddLatency(options.latency_ms);
  phone.set_clock(LocalSeconds);
  for (const Fault& fault : options.faults) phone.AddFault(fault);
  PtyPhone pty(std::move(phone), LineOptions(options));
  if (!pty.Open()) {
    std::cerr << "celldesk-phone: no pseudo-terminal, or the port cannot be listed in " << PortFolder()
              << '\n';
    return 1;
  }
  served_phone = &pty;
  std::signal(SIGINT, HandleSignal);
  std::signal(SIGTERM, HandleSignal);
  std::cout << pty.device() << std::endl;
  pty.Serve();
  pty.ChangePhone([&](SimulatedPhone& served) {
    SaveMemory(options, served.memory());
    return std::vector<Emission>();
  });
  return 0;
}

}  // namespace

int main(int count, char** arguments) {
  const Options options = ParseOptions({arguments + 1, arguments + count});
  if (!options.error.empty()) {
    std::cerr << "celldesk-phone: " << options.error << " (see --help)\n";
    return 2;
  }
  if (options.show_help) std::cout << HelpText();
  if (options.show_profiles) std::cout << ProfileListText();
  return options.show_help || options.show_profiles ? 0 : Run(options);
}
