#pragma once

namespace celldesk {

/// Pixels that a pen hits without care: the least height, and width of a button, of menus, tabs and bars.
inline constexpr int kTouchTarget = 32;

}  // namespace celldesk
