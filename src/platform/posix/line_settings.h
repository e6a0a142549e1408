#pragma once

#include <termios.h>

#include <cstdint>
#include <optional>

#include "platform/line_parameters.h"

namespace celldesk {

/// Puts `parameters`, but for a speed without a constant of its own, into `settings`, raw and without job
/// control. False, with `settings` unchanged, when a terminal cannot be like that: a byte size other than 5
/// to 8, an unknown parity, or speed 0. One and a half stop bits become two. Handshake on RTS, or output that
/// obeys CTS, turns RTS/CTS on for both directions.
bool FillTerminalSettings(const LineParameters& parameters, termios& settings);

/// What `settings` says of the line once it is raw: speed, byte size, parity, stop bits and RTS/CTS. XON/XOFF
/// of a terminal that people type at is no property of the line and is left out.
LineParameters DescribeTerminalSettings(const termios& settings);

/// The constant for a standard speed in bits a second; none for any other.
std::optional<speed_t> StandardSpeed(std::uint32_t bits_per_second);

/// Makes the terminal behind `descriptor` run at any speed; false when the driver refuses.
bool SetCustomSpeed(int descriptor, std::uint32_t bits_per_second);

}  // namespace celldesk
