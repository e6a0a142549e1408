#pragma once

#include <QString>

namespace celldesk {

/// A profile of its own in `folder`, which is emptied first: a service centre, and the simulated phone as its
/// first port. False when the folder cannot be made.
bool MakeProfile(const QString& folder);

}  // namespace celldesk
