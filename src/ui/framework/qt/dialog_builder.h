#pragma once

#include <QWidget>

#include "ui/framework/dialog_template.h"
#include "ui/framework/qt/native.h"

namespace celldesk {

/// Lays out a template's controls in `page` and ties them to `dialog`: labelled rows below each other, beside
/// each other from a column mark on, buttons in a row at the end.
void BuildControls(const DialogTemplate& form, QWidget* page, Window& dialog, NativeDialog& native);

}  // namespace celldesk
