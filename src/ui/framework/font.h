#pragma once

#include <memory>
#include <string_view>

namespace celldesk {

/// The uses of the font set.
enum class FontRole {
  kNormal,           ///< the control's own font
  kStruckOut,        ///< list items marked for deletion
  kItalic,           ///< list items to be sent
  kBold,             ///< list items to be stored, or not yet opened
  kBoldItalic,       ///< list items to be sent and stored
  kField,            ///< fields of viewer and editor, height 18
  kFieldStruckOut,   ///< the same of a message marked for deletion
  kFieldUnderlined,  ///< the editor's recipient when it shows a name
};

struct NativeFonts;

/// The frame's seven fonts. Made once; lists and dialogs borrow it. Interface thread only.
class FontSet {
 public:
  FontSet();
  ~FontSet();
  FontSet(const FontSet&) = delete;
  FontSet& operator=(const FontSet&) = delete;

  /// Makes the fonts from a face name and a height in pixels, whose sign does not matter; an empty face, a
  /// height of 0 and one that no screen has are the system's own. False when a font that the program needs
  /// cannot be made.
  bool Create(std::u16string_view face, int height);
  const NativeFonts* native() const { return native_.get(); }

 private:
  std::unique_ptr<NativeFonts> native_;
};

}  // namespace celldesk
