#pragma once

#include <cstdint>
#include <span>

namespace celldesk {

/// The operator directory (resource type PROVIDERS, number 200) as it is compiled in: windows-1250 text with
/// CR LF. Lives for the whole run.
std::span<const std::uint8_t> ProvidersResource();

}  // namespace celldesk
