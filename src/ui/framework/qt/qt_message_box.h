#pragma once

#include "ui/framework/message_box.h"

class QWidget;

namespace celldesk {

/// ShowMessageBox over a widget that is no window of ours.
int ShowMessageBoxOver(QWidget* owner, BoxQuestion question);

}  // namespace celldesk
