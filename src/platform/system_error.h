#pragma once

#include <cstdint>

namespace celldesk {

/// System error codes of the registry and file operations, numbered as the window manager's; 0 is success.
using SystemError = std::uint32_t;
inline constexpr SystemError kErrorSuccess = 0;
inline constexpr SystemError kErrorFileNotFound = 2;
inline constexpr SystemError kErrorPathNotFound = 3;
inline constexpr SystemError kErrorTooManyOpenFiles = 4;
inline constexpr SystemError kErrorAccessDenied = 5;
inline constexpr SystemError kErrorInvalidHandle = 6;
inline constexpr SystemError kErrorNotEnoughMemory = 8;
inline constexpr SystemError kErrorWriteFault = 29;
inline constexpr SystemError kErrorReadFault = 30;
inline constexpr SystemError kErrorGeneralFailure = 31;
inline constexpr SystemError kErrorFileExists = 80;
inline constexpr SystemError kErrorDiskFull = 112;
inline constexpr SystemError kErrorInvalidName = 123;
inline constexpr SystemError kErrorFileTooLarge = 223;
inline constexpr SystemError kErrorMoreData = 234;
inline constexpr SystemError kErrorNoMoreItems = 259;

}  // namespace celldesk
