#pragma once

#include "ui/framework/qt/late_icon_style.h"

namespace celldesk {

/// The toolkit's style with edges that are seen in dark windows too: its own there are darker than the
/// window.
class DeskStyle : public LateIconStyle {
 public:
  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget = nullptr) const override;
};

}  // namespace celldesk
