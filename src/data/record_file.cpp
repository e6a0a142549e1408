#include "data/record_file.h"

#include <algorithm>
#include <new>

namespace celldesk {
namespace {

std::string WithLineEnds(std::string_view text) {
  std::string result;
  result.reserve(text.size() + static_cast<std::size_t>(std::ranges::count(text, '\n')));
  for (const char byte : text) {
    if (byte == '\n') result += '\r';
    result += byte;
  }
  return result;
}

}  // namespace

Status RecordWriter::Create(std::u16string_view path) {
  SystemError error = kErrorSuccess;
  file_ = files_.Create(path, error);
  status_ = StatusFromSystemError(error);
  return status_;
}

RecordWriter& RecordWriter::Field(std::u16string_view text) {
  Gather([&] { AppendField(block_, text); });
  return *this;
}

RecordWriter& RecordWriter::Number(std::int32_t number) {
  Gather([&] { AppendNumber(block_, number); });
  return *this;
}

Status RecordWriter::EndRecord() {
  Gather([&] { AppendLineEnd(block_); });
  if (block_.size() >= kBlock) WriteBlock();
  return status_;
}

template <typename Append>
void RecordWriter::Gather(Append append) {
  if (Failed(status_)) return;
  const std::size_t gathered = block_.size();
  try {
    append();
  } catch (const std::bad_alloc&) {
    block_.resize(gathered);
    WriteBlock();
    if (!Failed(status_)) status_ = E_OUTOFMEMORY;
  }
}

void RecordWriter::WriteBlock() {
  if (file_) {
    const auto* const bytes = reinterpret_cast<const std::uint8_t*>(block_.data());
    status_ = StatusFromSystemError(file_->Write({bytes, block_.size()}));
  }
  block_.clear();
}

Status RecordWriter::Close() {
  if (!block_.empty()) WriteBlock();
  const SystemError error = file_ ? file_->Close() : kErrorSuccess;
  file_.reset();
  if (!Failed(status_)) status_ = StatusFromSystemError(error);
  return status_;
}

Status RecordFile::Open(FileSystem& files, std::u16string_view path) {
  SystemError error = kErrorSuccess;
  file_ = files.Map(path, error);
  with_line_ends_.clear();
  if (!file_) return StatusFromSystemError(error);
  const FieldBytes mapped = file_->bytes();
  const std::string_view text(reinterpret_cast<const char*>(mapped.data()), mapped.size());
  try {
    if (text.find("\r\n") == std::string_view::npos) with_line_ends_ = WithLineEnds(text);
  } catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
  }
  return S_OK;
}

FieldBytes RecordFile::bytes() const {
  if (!with_line_ends_.empty()) {
    return {reinterpret_cast<const std::uint8_t*>(with_line_ends_.data()), with_line_ends_.size()};
  }
  return file_ ? file_->bytes() : FieldBytes{};
}

}  // namespace celldesk
