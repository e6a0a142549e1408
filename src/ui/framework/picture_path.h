#pragma once

#include <array>
#include <string_view>
#include <vector>

namespace celldesk {

/// A place on a picture's canvas; y grows downwards.
struct PicturePoint {
  double x = 0, y = 0;
};

inline PicturePoint operator+(PicturePoint a, PicturePoint b) { return {a.x + b.x, a.y + b.y}; }

/// One step of an outline, from where the one before ended.
struct PictureStep {
  enum class Kind { kMove, kLine, kCurve, kClose };
  Kind kind = Kind::kMove;
  /// Of a curve the two control points and the end; of a move and a line the first is the end.
  std::array<PicturePoint, 3> points{};
};

/// An elliptic arc that is not turned, as path data give it.
struct PictureArc {
  double radius_x = 0, radius_y = 0;
  bool large = false;  ///< the longer way round
  bool sweep = false;  ///< clockwise on the screen
};

/// Appends the curves that follow `arc` from `start` to `end`.
void AppendArc(std::vector<PictureStep>& steps, PicturePoint start, const PictureArc& arc, PicturePoint end);

/// The steps of SVG path data with the commands M, L, H, V, C, A and Z, absolute or relative; up to the first
/// fault in them. An arc's rotation is passed over.
std::vector<PictureStep> ReadPath(std::string_view data);

}  // namespace celldesk
