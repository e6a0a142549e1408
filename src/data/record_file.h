#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

#include "platform/file.h"
#include "util/field_text.h"
#include "util/status.h"

namespace celldesk {

/// Writes a file of records, a block of them at a time. The first failure sticks, E_OUTOFMEMORY for a field
/// that finds no room included: later writes do nothing and return it. What was written before stays in the
/// file.
class RecordWriter {
 public:
  /// Records are gathered until they have this many bytes.
  static constexpr std::size_t kBlock = 65536;

  /// The file system is borrowed for the object's life.
  explicit RecordWriter(FileSystem& files) : files_(files) {}

  /// Creates the file, replacing an existing one.
  Status Create(std::u16string_view path);
  RecordWriter& Field(std::u16string_view text);
  RecordWriter& Number(std::int32_t number);
  /// Ends the record, and writes the block when it is full.
  Status EndRecord();
  /// Writes what is left and closes the file; the status of all that was done.
  Status Close();

 private:
  template <typename Append>
  void Gather(Append append);
  void WriteBlock();

  FileSystem& files_;
  std::unique_ptr<OutputFile> file_;
  std::string block_;
  Status status_ = S_OK;
};

/// A file of records open for reading. Files that a text editor wrote with bare line feeds are read as if
/// their lines ended in CR LF.
class RecordFile {
 public:
  /// E_OUTOFMEMORY, or the system's error code as a status.
  Status Open(FileSystem& files, std::u16string_view path);
  /// Borrowed for the object's life.
  FieldBytes bytes() const;

 private:
  std::unique_ptr<MappedFile> file_;
  std::string with_line_ends_;
};

}  // namespace celldesk
