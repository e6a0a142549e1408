#include "ui/framework/picture_path.h"

#include <charconv>
#include <cmath>
#include <numbers>

namespace celldesk {
namespace {

using Kind = PictureStep::Kind;

bool IsLetter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }
bool IsRelative(char command) { return command >= 'a'; }

/// Takes commands and numbers from the front of path data.
class PathReader {
 public:
  explicit PathReader(std::string_view data) : data_(data) {}

  std::vector<PictureStep> Read() {
    while (NextCommand() && Step()) {
    }
    return std::move(steps_);
  }

 private:
  void SkipSeparators() {
    while (!data_.empty() && std::string_view(" ,\t\r\n").find(data_.front()) != data_.npos) {
      data_.remove_prefix(1);
    }
  }

  // A command holds for more numbers that follow it; after a move they are lines.
  bool NextCommand() {
    SkipSeparators();
    if (data_.empty()) return false;
    if (IsLetter(data_.front())) {
      command_ = data_.front();
      data_.remove_prefix(1);
    } else if (command_ == 'M' || command_ == 'm') {
      command_ = command_ == 'M' ? 'L' : 'l';
    } else if (command_ == 'Z' || command_ == 'z') {
      return false;
    }
    return true;
  }

  bool Number(double& value) {
    SkipSeparators();
    const auto [end, error] =
        std::from_chars(data_.data(), data_.data() + data_.size(), value, std::chars_format::fixed);
    if (error != std::errc()) return false;
    data_.remove_prefix(static_cast<std::size_t>(end - data_.data()));
    return true;
  }

  // One character, which the next number may follow without a gap.
  bool Flag(bool& value) {
    SkipSeparators();
    if (data_.empty() || (data_.front() != '0' && data_.front() != '1')) return false;
    value = data_.front() == '1';
    data_.remove_prefix(1);
    return true;
  }

  bool Point(PicturePoint& point) {
    if (!Number(point.x) || !Number(point.y)) return false;
    if (IsRelative(command_)) point = point + current_;
    return true;
  }

  void Append(const PictureStep& step, PicturePoint end) {
    steps_.push_back(step);
    current_ = end;
  }

  bool Step() {
    switch (command_) {
      case 'M':
      case 'm':
        return Move();
      case 'L':
      case 'l':
        return Line(true, true);
      case 'H':
      case 'h':
        return Line(true, false);
      case 'V':
      case 'v':
        return Line(false, true);
      case 'C':
      case 'c':
        return Curve();
      case 'A':
      case 'a':
        return Arc();
      case 'Z':
      case 'z':
        Append({Kind::kClose}, start_);
        return true;
      default:
        return false;
    }
  }

  bool Move() {
    if (!Point(start_)) return false;
    Append({Kind::kMove, {start_}}, start_);
    return true;
  }

  bool Line(bool across, bool down) {
    PicturePoint offset = IsRelative(command_) ? current_ : PicturePoint{};
    PicturePoint end = current_;
    if (across && !Number(end.x)) return false;
    if (down && !Number(end.y)) return false;
    if (across) end.x += offset.x;
    if (down) end.y += offset.y;
    Append({Kind::kLine, {end}}, end);
    return true;
  }

  bool Curve() {
    PictureStep step{Kind::kCurve};
    for (PicturePoint& point : step.points) {
      if (!Point(point)) return false;
    }
    Append(step, step.points[2]);
    return true;
  }

  bool Arc() {
    PictureArc arc;
    double rotation = 0;
    PicturePoint end;
    if (!Number(arc.radius_x) || !Number(arc.radius_y) || !Number(rotation) || !Flag(arc.large) ||
        !Flag(arc.sweep) || !Point(end)) {
      return false;
    }
    AppendArc(steps_, current_, arc, end);
    current_ = end;
    return true;
  }

  std::string_view data_;
  std::vector<PictureStep> steps_;
  PicturePoint current_, start_;
  char command_ = 0;
};

}  // namespace

// From the two ends to the centre and the angles as in SVG 1.1, F.6.5; a curve for each quarter at most.
void AppendArc(std::vector<PictureStep>& steps, PicturePoint start, const PictureArc& arc, PicturePoint end) {
  const double half_x = (start.x - end.x) / 2, half_y = (start.y - end.y) / 2;
  double rx = std::abs(arc.radius_x), ry = std::abs(arc.radius_y);
  if (rx == 0 || ry == 0) return steps.push_back({Kind::kLine, {end}});
  const double reach = std::hypot(half_x / rx, half_y / ry);
  if (reach == 0) return;
  if (reach > 1) rx *= reach, ry *= reach;
  const double side = arc.large == arc.sweep ? -1 : 1;
  const double factor = reach > 1 ? 0 : side * std::sqrt(1 / (reach * reach) - 1);
  const double center_x = factor * half_y * rx / ry, center_y = -factor * half_x * ry / rx;
  const double first = std::atan2((half_y - center_y) / ry, (half_x - center_x) / rx);
  double turn = std::atan2((-half_y - center_y) / ry, (-half_x - center_x) / rx) - first;
  if (arc.sweep && turn < 0) turn += 2 * std::numbers::pi;
  if (!arc.sweep && turn > 0) turn -= 2 * std::numbers::pi;
  const int pieces = static_cast<int>(std::ceil(std::abs(turn) / (std::numbers::pi / 2) - 1e-9));
  const double piece = turn / pieces, pull = 4.0 / 3 * std::tan(piece / 4);
  const PicturePoint center{center_x + (start.x + end.x) / 2, center_y + (start.y + end.y) / 2};
  const auto at = [&](double x, double y) { return center + PicturePoint{rx * x, ry * y}; };
  for (int i = 0; i < pieces; ++i) {
    const double a = first + i * piece, b = a + piece;
    const PicturePoint last =
        i + 1 == pieces ? end : at(std::cos(b), std::sin(b));  // no gap at the end by rounding
    steps.push_back({Kind::kCurve,
                     {at(std::cos(a) - pull * std::sin(a), std::sin(a) + pull * std::cos(a)),
                      at(std::cos(b) + pull * std::sin(b), std::sin(b) - pull * std::cos(b)), last}});
  }
}

std::vector<PictureStep> ReadPath(std::string_view data) { return PathReader(data).Read(); }

}  // namespace celldesk
