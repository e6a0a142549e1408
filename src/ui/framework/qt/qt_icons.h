#pragma once

#include <QIcon>
#include <string_view>

namespace celldesk {

/// The icon resource of this name, drawn in the palette's colours at any size; a null icon when there is
/// none.
QIcon IconOf(std::string_view name);

}  // namespace celldesk
