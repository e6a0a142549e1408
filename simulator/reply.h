#pragma once

#include <string>
#include <vector>

namespace celldesk::simulator {

enum class ResultKind { kOk, kError, kPhoneError, kMessageError };

/// Codes of +CME ERROR (GSM 07.07 9.2).
enum PhoneErrorCode {
  kOperationNotAllowed = 3,
  kOperationNotSupported = 4,
  kPhonebookFull = 20,
  kInvalidPhonebookIndex = 21,
  kNotFound = 22,
  kTextTooLong = 24,
  kInvalidText = 25,
  kNumberTooLong = 26,
  kInvalidNumber = 27
};

/// Codes of +CMS ERROR (GSM 07.05 3.2.5).
enum MessageErrorCode {
  kMessageNotAllowed = 302,
  kInvalidPduParameter = 304,
  kInvalidTextParameter = 305,
  kInvalidMemoryIndex = 321,
  kMemoryFull = 322
};

/// What a command answers before it is put on the line.
struct Reply {
  std::vector<std::string> lines;  // information lines, without line ends
  ResultKind result = ResultKind::kOk;
  int code = 0;
  bool wants_body = false;  // the prompt comes instead of lines and result

  bool ok() const { return result == ResultKind::kOk; }
};

inline Reply Ok(std::vector<std::string> lines = {}) { return {std::move(lines)}; }
inline Reply Error() { return {{}, ResultKind::kError}; }
inline Reply PhoneError(int code) { return {{}, ResultKind::kPhoneError, code}; }
inline Reply MessageError(int code) { return {{}, ResultKind::kMessageError, code}; }
inline Reply WantBody() { return {{}, ResultKind::kOk, 0, true}; }

/// The words +CMEE=2 shows in place of a code; "unknown error" for a code without any.
std::string ErrorText(ResultKind kind, int code);

}  // namespace celldesk::simulator
