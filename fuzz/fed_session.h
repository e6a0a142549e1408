#pragma once

#include <algorithm>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "link/at_engine.h"
#include "link/phone_link.h"
#include "pdu/gsm_alphabet.h"

namespace celldesk {

/// An open link whose phone says what the input says, without time: the n-th write is answered by the n-th
/// part of the input, cut into reads. A wait is over at once.
class FedSession : private SerialPortOpener, private ThreadStarter, private Registry, private Waiter {
 public:
  /// `cuts` decides where the reads end (0: nowhere), `answers` are what is said after each write.
  FedSession(std::uint8_t cuts, std::vector<std::u16string> answers)
      : link(*this, *this, *this, *this), engine(link, *this), cuts_(cuts), answers_(std::move(answers)) {
    link.set_port_name(u"COM1:");
    static_cast<void>(link.Open());
  }

  std::size_t writes() const { return writes_; }
  const std::string& sent() const { return sent_; }

  PhoneLink link;
  AtEngine engine;

 private:
  class Port : public SerialPort {
   public:
    explicit Port(FedSession& session) : session_(session) {}
    ReadResult Read(std::span<std::uint8_t> /*buffer*/) override { return {}; }
    Status Write(std::span<const std::uint8_t> bytes) override {
      session_.sent_.append(bytes.begin(), bytes.end());
      session_.Answer();
      return S_OK;
    }
    void Purge() override {}
    std::optional<LineParameters> Parameters() const override { return std::nullopt; }
    Status SetParameters(const LineParameters& /*parameters*/) override { return S_OK; }
    Status SetReadInterval(std::chrono::milliseconds /*interval*/) override { return S_OK; }
    Status ClearError() override { return S_OK; }
    std::optional<std::uint32_t> ProviderCapabilities() const override { return std::nullopt; }

   private:
    FedSession& session_;
  };
  class NoThread : public Thread {
   public:
    void SetPriority(ThreadPriority /*priority*/) override {}
    bool Join(std::chrono::milliseconds /*timeout*/) override { return true; }
  };

  std::unique_ptr<SerialPort> Open(std::u16string_view /*name*/, OpenProblem* /*problem*/) override {
    return std::make_unique<Port>(*this);
  }
  std::unique_ptr<Thread> Start(std::function<void()> /*body*/) override {
    return std::make_unique<NoThread>();
  }
  std::unique_ptr<RegistryKey> Create(RegistryRoot /*root*/, std::u16string_view /*path*/,
                                      KeyDisposition& /*disposition*/, SystemError& error) override {
    error = kErrorFileNotFound;
    return nullptr;
  }
  std::unique_ptr<RegistryKey> Open(RegistryRoot /*root*/, std::u16string_view /*path*/,
                                    SystemError& error) override {
    error = kErrorFileNotFound;
    return nullptr;
  }
  SystemError Delete(RegistryRoot /*root*/, std::u16string_view /*path*/) override {
    return kErrorFileNotFound;
  }
  bool WaitFor(Event& event, std::chrono::milliseconds /*timeout*/) override { return event.IsSet(); }
  void Pause(std::chrono::milliseconds /*duration*/) override {}
  void ShowWaitCursor(bool /*visible*/) override {}

  void Answer() {
    if (writes_++ >= answers_.size()) return;
    std::u16string_view rest = answers_[writes_ - 1];
    while (!rest.empty()) {
      cuts_ = static_cast<std::uint8_t>(cuts_ * 5);
      const std::size_t length =
          cuts_ == 0 ? rest.size() : std::min<std::size_t>(rest.size(), cuts_ % 16 + 1);
      link.ReceiveChunk(rest.substr(0, length));
      rest.remove_prefix(length);
    }
  }

  std::uint8_t cuts_;
  std::vector<std::u16string> answers_;
  std::size_t writes_ = 0;
  std::string sent_;
};

/// The parts of an input, which an octet 255 separates, as the link reads them.
inline std::vector<std::u16string> AnswersOf(const std::uint8_t* data, std::size_t size) {
  std::vector<std::u16string> answers;
  const std::uint8_t* const end = data + size;
  while (data != end) {
    const std::uint8_t* const stop = std::find(data, end, 0xFF);
    std::u16string answer(static_cast<std::size_t>(stop - data), u'\0');
    GsmBytesToWide(answer.data(), data, answer.size());
    answers.push_back(std::move(answer));
    data = stop == end ? end : stop + 1;
  }
  return answers;
}

/// What stands between the carriage returns of a text, without line feeds before it and without empty lines.
inline std::vector<std::u16string> LinesOf(std::u16string_view text) {
  std::vector<std::u16string> lines;
  for (std::size_t end; (end = text.find(u'\r')) != text.npos; text.remove_prefix(end + 1)) {
    std::u16string_view line = text.substr(0, end);
    line.remove_prefix(std::min(line.find_first_not_of(u'\n'), line.size()));
    if (!line.empty()) lines.emplace_back(line);
  }
  return lines;
}

/// Lines of all answers that begin with `start`.
inline std::size_t CountLines(const std::vector<std::u16string>& answers, std::u16string_view start) {
  std::u16string all;
  for (const std::u16string& answer : answers) all += answer;
  const auto lines = LinesOf(all);
  return static_cast<std::size_t>(
      std::count_if(lines.begin(), lines.end(), [&](const auto& line) { return line.starts_with(start); }));
}

}  // namespace celldesk
