#pragma once

#include <cstdint>

namespace celldesk {

/// Result of every operation that can fail: 32 bits, negative (top bit set) means failure.
/// Callers pass a callee's failure back unchanged.
enum class [[nodiscard]] Status : std::uint32_t{};

inline constexpr Status S_OK{0};
inline constexpr Status E_NOTIMPL{
    0x80004001};  ///< the phone has no such memory, or the PDU type is not handled
inline constexpr Status E_ABORT{0x80004004};  ///< the user cancelled a file dialog
inline constexpr Status E_FAIL{0x80004005};   ///< failure, time-out, "ERROR" from the phone, malformed PDU
inline constexpr Status E_OUTOFMEMORY{0x8007000E};  ///< a buffer could not be had
inline constexpr Status E_INVALIDARG{0x80070057};   ///< a file is not of the expected format

/// True when `status` is a failure.
constexpr bool Failed(Status status) { return static_cast<std::int32_t>(status) < 0; }

/// The status of a system call that failed with `system_error`; S_OK for 0.
constexpr Status StatusFromSystemError(std::uint32_t system_error) {
  return system_error == 0 ? S_OK : Status{0x80070000U | (system_error & 0xFFFFU)};
}

}  // namespace celldesk
