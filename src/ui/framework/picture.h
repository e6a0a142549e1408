#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "ui/framework/picture_path.h"

namespace celldesk {

/// What a line or an area of a picture is painted with.
struct PicturePaint {
  enum class Kind { kNone, kInk, kColor };
  Kind kind = Kind::kNone;
  std::uint32_t rgb = 0;  ///< of kColor: 0xRRGGBB; the ink is the colour of the text around the picture

  bool operator==(const PicturePaint&) const = default;
};

/// An outline, filled and then drawn along with a pen whose ends and corners are round.
struct PictureShape {
  std::vector<PictureStep> outline;
  PicturePaint stroke, fill;
  double stroke_width = 1;
};

/// A drawing in units of its own: its shapes from the back to the front, on a canvas from 0, 0.
struct Picture {
  double width = 0, height = 0;
  std::vector<PictureShape> shapes;
};

/// Reads what the program's icons use of SVG 1.1: svg with a viewBox from 0 0, g, path, rect with rx, circle;
/// stroke, stroke-width and fill with "none", "currentColor", "#rgb" or "#rrggbb". Round caps and joins are
/// taken for granted; other elements and attributes are passed over.
Picture ReadPicture(std::string_view svg);

}  // namespace celldesk
