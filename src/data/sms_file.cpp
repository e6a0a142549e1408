#include "data/sms_file.h"

#include <memory>
#include <new>
#include <optional>
#include <string>
#include <utility>

#include "data/record_file.h"
#include "pdu/address.h"
#include "util/number_text.h"

namespace celldesk {
namespace {

constexpr std::u16string_view kMagic = u"SMSArchive11";
constexpr std::uint32_t kSubmitWithRelativeValidity = 0x11;

std::u16string AddressOf(const SmsMessage& message) {
  switch (message.type()) {
    case SmsType::kDeliver:
      return AddressForDisplay(message.deliver.number, message.deliver.toa);
    case SmsType::kSubmit:
      return AddressForDisplay(message.submit.number, message.submit.toa);
    case SmsType::kStatusReport:
      return AddressForDisplay(message.report.number, message.report.toa);
    default:
      return {};
  }
}

/// The message's own text, or its report's sentence in `buffer`.
std::u16string_view TextOf(const SmsMessage& message, TextSource texts, std::u16string& buffer) {
  if (message.type() != SmsType::kStatusReport) return message.text;
  return buffer = message.DeliveryReportText(texts);
}

Status WriteMessage(RecordWriter& writer, const SmsMessage& message, TextSource texts) {
  const auto characters = static_cast<int>(message.pdu_text.size());
  std::u16string buffer;
  return writer.Field(AddressOf(message))
      .Field(TextOf(message, texts, buffer))
      .Number(message.tpdu_length == 0 ? characters : message.tpdu_length)
      .Number(message.storage_status)
      .Field(message.pdu_text)
      .EndRecord();
}

void MakeSubmit(SmsMessage& message, const SmsFileSettings& settings) {
  message.first_octet = kSubmitWithRelativeValidity;
  if (settings.delivery_report) message.first_octet |= kStatusReportRequest;
  if (settings.reply_path) message.first_octet |= kReplyPath;
  message.submit.relative_validity = settings.validity;
}

void MakeOutgoing(SmsMessage& message, const SmsFileSettings& settings) {
  message.flags = kMessageInUse | kMessageChanged | kMessageToSend | kMessageNew;
  message.storage_status = kStoredUnsent;
  MakeSubmit(message, settings);
}

/// Fills `message` from the rest of a line, after its length; false when fields are missing.
bool TakePdu(SmsMessage& message, FieldBytes length, FieldReader& fields, const SmsFileSettings& settings) {
  const auto status = fields.NextBytes();
  const auto pdu = status ? fields.NextBytes() : std::nullopt;
  if (!pdu) return false;
  message.tpdu_length = static_cast<std::int16_t>(fields.Number(length));
  message.storage_status = static_cast<std::int16_t>(fields.Number(*status));
  fields.Take(*pdu, message.pdu_text);
  message.flags = kMessageInUse | kMessageNew;
  // A message that does not decode stays, with the text of its line. One that was not encoded yet when it was
  // written is an outgoing message all the same.
  const bool decoded = !Failed(message.Decode());
  if (!decoded && message.pdu_text.empty() && !message.is_received()) MakeSubmit(message, settings);
  return true;
}

/// Reads messages line by line.
class MessageReader {
 public:
  MessageReader(const SmsTarget& target, const SmsFileSettings& settings)
      : target_(target), settings_(settings) {}

  /// False when the reading ends with this line.
  bool Read(FieldReader& fields);
  Status status() const { return status_; }

 private:
  const SmsTarget& target_;
  const SmsFileSettings& settings_;
  std::u16string address_;  // of the line that is read
  Status status_ = S_OK;
};

// A line that breaks off ends the import. A line without a text is passed over.
bool MessageReader::Read(FieldReader& fields) {
  const auto address = fields.NextBytes();
  const auto text = address ? fields.NextBytes() : std::nullopt;
  if (!text) return true;
  if (target_.messages->count() >= SmsStore::kLimit) {
    status_ = E_OUTOFMEMORY;
    return false;
  }
  auto message = std::make_unique<SmsMessage>();
  // A number that no phone could dial leaves the message without one.
  fields.Take(*address, address_);
  static_cast<void>(MakeAddress(message->submit.number, message->submit.toa, address_));
  fields.Take(*text, message->text);
  const auto length = fields.NextBytes();
  if (length && !TakePdu(*message, *length, fields, settings_)) return false;
  if (!length) MakeOutgoing(*message, settings_);
  const int position = target_.messages->Append(std::move(message));
  if (target_.observer != nullptr) target_.observer->RowRead(position);
  return true;
}

}  // namespace

Status WriteSmsFile(FileSystem& files, std::u16string_view path, std::u16string_view folder,
                    std::span<const SmsMessage* const> messages, TextSource texts) {
  RecordWriter writer(files);
  Status status = writer.Create(path);
  if (Failed(status)) return status;
  status = writer.Field(kMagic).Field(folder).EndRecord();
  for (const SmsMessage* const message : messages) {
    if (Failed(status)) break;
    status = WriteMessage(writer, *message, texts);
  }
  return writer.Close();
}

Status ReadSmsFile(FileSystem& files, std::u16string_view path, const SmsFileSettings& settings,
                   const ChooseSmsFolder& choose) {
  RecordFile file;
  const Status status = file.Open(files, path);
  return Failed(status) ? status : ReadMessages(file.bytes(), settings, choose);
}

Status ReadMessages(FieldBytes bytes, const SmsFileSettings& settings, const ChooseSmsFolder& choose) try {
  FieldReader fields(bytes);
  if (fields.Next() != kMagic) return E_INVALIDARG;
  const SmsTarget target = choose(fields.Next().value_or(u""));
  if (target.messages == nullptr) return S_OK;
  MessageReader reader(target, settings);
  while (fields.NextLine() && reader.Read(fields)) {
  }
  return reader.status();
} catch (const std::bad_alloc&) {
  return E_OUTOFMEMORY;
}

}  // namespace celldesk
