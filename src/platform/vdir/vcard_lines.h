#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace celldesk {

/// A content line of a vCard, "group.name;parameters:value", without the group.
struct VcardLine {
  std::string_view name;
  std::string_view parameters;  ///< as they stand, after the first ";"
  std::string_view value;       ///< as it stands: encoded and escaped
};

/// Goes through a vCard file line by line: folded lines, and those that quoted-printable continues with a
/// soft line break, come as one. Lines end in CR LF, LF or CR. Any bytes are taken; each is looked at a fixed
/// number of times.
class VcardLines {
 public:
  /// `bytes` is borrowed for the object's life; a byte order mark in front is passed over.
  explicit VcardLines(std::string_view bytes);

  /// The next line that has a ":"; none after the last. Borrowed until the next call.
  std::optional<VcardLine> Next();
  /// vCard 2.1 folds before a blank, which belongs to the text; later versions fold with a blank, which does
  /// not. The latter at first.
  void set_fold_keeps_blank(bool keeps) { fold_keeps_blank_ = keeps; }

 private:
  std::string_view TakePhysicalLine();
  void ReadLogicalLine();
  void Append(std::string_view physical_line);
  void FindColon();
  bool NextIsFolded() const;
  bool EndsInSoftBreak();
  bool IsQuotedPrintable();

  std::string_view bytes_;
  std::size_t position_ = 0;
  bool fold_keeps_blank_ = false;

  std::string line_;            // unfolded
  std::size_t last_start_ = 0;  // of the physical line that was appended last
  std::size_t scanned_ = 0;     // no colon that ends the header stands before this
  bool quoted_ = false;         // an odd number of quotes stands before it
  std::optional<std::size_t> colon_;
  std::optional<bool> quoted_printable_;
};

}  // namespace celldesk
