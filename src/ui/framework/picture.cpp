#include "ui/framework/picture.h"

#include <algorithm>
#include <charconv>
#include <string>

namespace celldesk {
namespace {

using Kind = PictureStep::Kind;

// What the elements within an element take over from it.
struct Style {
  PicturePaint stroke, fill{PicturePaint::Kind::kColor, 0};
  double stroke_width = 1;
};

/// One tag: its name ("/g" for an end) and its attributes.
struct Tag {
  std::string_view name, attributes;
  bool is_empty = false;  // "<.../>"

  std::string_view Attribute(std::string_view wanted) const {
    std::string_view rest = attributes;
    while (true) {
      const std::size_t equals = rest.find("=\"");
      if (equals == rest.npos) return {};
      const std::size_t end = rest.find('"', equals + 2);
      if (end == rest.npos) return {};
      const std::size_t space = rest.find_last_of(" \t\r\n", equals);
      const std::size_t start = space == rest.npos ? 0 : space + 1;
      if (rest.substr(start, equals - start) == wanted) return rest.substr(equals + 2, end - equals - 2);
      rest.remove_prefix(end + 1);
    }
  }

  double Number(std::string_view wanted, double otherwise = 0) const {
    const std::string_view text = Attribute(wanted);
    double value = otherwise;
    std::from_chars(text.data(), text.data() + text.size(), value);
    return value;
  }
};

PicturePaint ReadPaint(std::string_view text) {
  if (text == "currentColor") return {PicturePaint::Kind::kInk};
  if (text.size() != 4 && text.size() != 7) return {};
  std::uint32_t digits = 0;
  const auto [end, error] = std::from_chars(text.data() + 1, text.data() + text.size(), digits, 16);
  if (text.front() != '#' || error != std::errc() || end != text.data() + text.size()) return {};
  if (text.size() == 7) return {PicturePaint::Kind::kColor, digits};
  // Each of three digits stands for itself twice.
  const std::uint32_t apart = (digits & 0xF00) << 8 | (digits & 0xF0) << 4 | (digits & 0xF);
  return {PicturePaint::Kind::kColor, apart * 0x11};
}

Style StyleOf(const Tag& tag, Style style) {
  if (const std::string_view text = tag.Attribute("stroke"); !text.empty()) style.stroke = ReadPaint(text);
  if (const std::string_view text = tag.Attribute("fill"); !text.empty()) style.fill = ReadPaint(text);
  style.stroke_width = tag.Number("stroke-width", style.stroke_width);
  return style;
}

std::vector<PictureStep> Rectangle(const Tag& tag) {
  const double x = tag.Number("x"), y = tag.Number("y");
  const double width = tag.Number("width"), height = tag.Number("height");
  const double r = std::min({tag.Number("rx"), width / 2, height / 2});
  const PictureArc corner{r, r, false, true};
  std::vector<PictureStep> steps{{Kind::kMove, {{{x + r, y}}}}};
  const auto side = [&](PicturePoint from, PicturePoint to) {
    steps.push_back({Kind::kLine, {from}});
    if (r > 0) AppendArc(steps, from, corner, to);
  };
  side({x + width - r, y}, {x + width, y + r});
  side({x + width, y + height - r}, {x + width - r, y + height});
  side({x + r, y + height}, {x, y + height - r});
  side({x, y + r}, {x + r, y});
  steps.push_back({Kind::kClose});
  return steps;
}

std::vector<PictureStep> Circle(const Tag& tag) {
  const double x = tag.Number("cx"), y = tag.Number("cy"), r = tag.Number("r");
  std::vector<PictureStep> steps{{Kind::kMove, {{{x + r, y}}}}};
  AppendArc(steps, {x + r, y}, {r, r, false, true}, {x - r, y});
  AppendArc(steps, {x - r, y}, {r, r, false, true}, {x + r, y});
  steps.push_back({Kind::kClose});
  return steps;
}

std::vector<PictureStep> OutlineOf(const Tag& tag) {
  if (tag.name == "path") return ReadPath(tag.Attribute("d"));
  if (tag.name == "rect") return Rectangle(tag);
  if (tag.name == "circle") return Circle(tag);
  return {};
}

// The next tag of the text, which moves behind it; one without a name at the end.
Tag TakeTag(std::string_view& text) {
  const std::size_t start = text.find('<');
  const std::size_t end = text.find('>', start);
  if (start == text.npos || end == text.npos) return {};
  std::string_view inside = text.substr(start + 1, end - start - 1);
  text.remove_prefix(end + 1);
  Tag tag;
  tag.is_empty = inside.ends_with('/');
  if (tag.is_empty) inside.remove_suffix(1);
  const std::size_t name_end = std::min(inside.find_first_of(" \t\r\n"), inside.size());
  tag.name = inside.substr(0, name_end);
  tag.attributes = inside.substr(name_end);
  return tag;
}

void ReadSize(const Tag& tag, Picture& picture) {
  const std::vector<PictureStep> box = ReadPath(std::string("M").append(tag.Attribute("viewBox")));
  if (box.size() != 2) return;
  picture.width = box[1].points[0].x;
  picture.height = box[1].points[0].y;
}

}  // namespace

Picture ReadPicture(std::string_view svg) {
  Picture picture;
  std::vector<Style> styles{Style()};
  for (Tag tag = TakeTag(svg); !tag.name.empty(); tag = TakeTag(svg)) {
    if (tag.name.front() == '/') {
      if (styles.size() > 1) styles.pop_back();
      continue;
    }
    if (tag.name == "svg") ReadSize(tag, picture);
    const Style style = StyleOf(tag, styles.back());
    if (!tag.is_empty) styles.push_back(style);
    std::vector<PictureStep> outline = OutlineOf(tag);
    if (!outline.empty()) {
      picture.shapes.push_back({std::move(outline), style.stroke, style.fill, style.stroke_width});
    }
  }
  return picture;
}

}  // namespace celldesk
