#include <QApplication>
#include <QFontInfo>
#include <cstdlib>

#include "ui/framework/font.h"
#include "ui/framework/qt/native.h"
#include "ui/framework/qt/qt_text.h"

namespace celldesk {
namespace {

constexpr int kFieldHeight = 18;

// No font of a screen is higher; a height beyond it is garbage in the registry.
constexpr int kTallest = 200;

// A negative height is that of the characters, a positive one that of the line (logical fonts); here both are
// the size of the characters.
QFont MakeFont(const QFont& base, int height) {
  QFont font = base;
  if (height != 0 && height >= -kTallest && height <= kTallest) font.setPixelSize(std::abs(height));
  return font;
}

}  // namespace

FontSet::FontSet() = default;
FontSet::~FontSet() = default;

bool FontSet::Create(std::u16string_view face, int height) {
  auto fonts = std::make_unique<NativeFonts>();
  QFont base = QApplication::font();
  if (!face.empty()) base.setFamily(ToQt(face));
  const QFont list = MakeFont(base, height);
  const QFont field = MakeFont(base, kFieldHeight);
  const auto at = [&](FontRole role) -> QFont& { return fonts->fonts[static_cast<std::size_t>(role)]; };
  for (const FontRole role :
       {FontRole::kNormal, FontRole::kStruckOut, FontRole::kItalic, FontRole::kBold, FontRole::kBoldItalic}) {
    at(role) = list;
  }
  for (const FontRole role : {FontRole::kField, FontRole::kFieldStruckOut, FontRole::kFieldUnderlined}) {
    at(role) = field;
  }
  at(FontRole::kStruckOut).setStrikeOut(true);
  at(FontRole::kItalic).setItalic(true);
  at(FontRole::kBold).setBold(true);
  at(FontRole::kBoldItalic).setBold(true);
  at(FontRole::kBoldItalic).setItalic(true);
  at(FontRole::kFieldStruckOut).setStrikeOut(true);
  at(FontRole::kFieldUnderlined).setUnderline(true);
  // A system without any font at all gives fonts of no size. One is enough to tell: each that is looked at is
  // opened.
  if (QFontInfo(list).pixelSize() <= 0) return false;
  native_ = std::move(fonts);
  return true;
}

QFont FontOf(const FontSet* fonts, FontRole role, const QFont& base) {
  if (fonts == nullptr || fonts->native() == nullptr || role == FontRole::kNormal) return base;
  return fonts->native()->fonts[static_cast<std::size_t>(role)];
}

}  // namespace celldesk
