#pragma once

#include <string>
#include <string_view>

#include "platform/line_parameters.h"
#include "ui/framework/dialog.h"

namespace celldesk {

/// Edits the line parameters of one port by five choice lists. A parameter that is none of its choices is
/// shown as a number and stays as it is until the user picks another.
class PortDialog : public Dialog {
 public:
  static constexpr int kSpeed = 1001, kDataBits = 1002, kParity = 1003, kStopBits = 1004, kFlowControl = 1005;

  /// `port` is the name for the title.
  PortDialog(std::u16string_view port, const LineParameters& parameters);

  /// As the lists left them when the dialog ended with OK.
  const LineParameters& parameters() const { return parameters_; }

  bool OnInitDialog(int focus, LongParameter parameter) override;
  bool UpdateData(bool save) override;

 private:
  std::u16string port_;
  LineParameters parameters_;
};

}  // namespace celldesk
