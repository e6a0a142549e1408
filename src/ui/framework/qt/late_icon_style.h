#pragma once

#include <QProxyStyle>

namespace celldesk {

/// The toolkit's own style, but that the arrow of a bar without room for its commands is made when it is
/// drawn. Every menu bar and tool bar asks for it when it is made, and making it loads all of the toolkit's
/// image plug-ins: more than the rest of the bar takes, for a picture that is hardly ever seen.
class LateIconStyle : public QProxyStyle {
 public:
  QIcon standardIcon(StandardPixmap which, const QStyleOption* option, const QWidget* widget) const override;
};

}  // namespace celldesk
