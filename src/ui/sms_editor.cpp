#include "ui/sms_editor.h"

#include "data/message_memory.h"
#include "pdu/validity.h"
#include "services/sms_service.h"
#include "ui/address_chooser.h"
#include "ui/commands.h"
#include "ui/framework/command_surface.h"
#include "ui/framework/menu_state.h"
#include "ui/framework/token_list.h"
#include "ui/questions.h"
#include "ui/resources/resources.h"
#include "ui/sms_folder_view.h"
#include "ui/sms_reading.h"

namespace celldesk {
namespace {

constexpr int kTemplate = 204, kMenu = 199;
constexpr int kRecipient = 1001, kBrowse = 1002, kBody = 1003, kCounter = 1004, kReading = 1005;
constexpr int kNoValidity = 1010, kRelative = 1011, kRelativeChoice = 1012, kAbsolute = 1013,
              kAbsoluteTime = 1014;
constexpr int kReplyPathCheck = 1015, kReportCheck = 1016, kSaveTo = 1053;

// What the years of a time stamp can tell (two digits).
constexpr CalendarTime kFirstTime{1998, 1, 0, 1, 0, 0, 0, 0};
constexpr CalendarTime kLastTime{2097, 12, 0, 31, 23, 59, 59, 0};

// Tokens of the "Save to:" list's string.
constexpr std::size_t kNotSupported = 0, kDoNotSave = 1, kSimMemoryToken = 2, kPhoneMemoryToken = 3;

}  // namespace

SmsEditor::SmsEditor(SmsFolderView& folder, int row) : SmsDialog(kTemplate, folder, row) {
  state_.Start(folder.sms(), folder.locale());
}

SmsEditor::SmsEditor(SmsFolderView& folder, const SmsDraft& draft) : SmsDialog(kTemplate, folder, -1) {
  state_.Start(folder.sms(), folder.locale());
  state_.Fill(draft);
}

bool SmsEditor::OnInitDialog(int focus, LongParameter parameter) {
  Surface().SetMenu(kMenu);
  Surface().SetCommandBar(text::kEditorToolTips);
  for (const int command : {command::kNext, command::kPrevious, command::kDelete}) {
    Surface().EnableButton(command, HasRow());
  }
  SetLimit(kBody, kTextLimit);
  SetDateRange(kAbsoluteTime, kFirstTime, kLastTime);
  SetFilter(kRecipient, EditFilter::kTelephone);
  MakeChoices();
  SmsDialog::OnInitDialog(focus, parameter);
  FocusControl(state_.number.empty() ? kRecipient : kBody);
  return false;
}

void SmsEditor::MakeChoices() {
  for (const ValidityPreset& preset : kValidityPresets) {
    AddChoice(kRelativeChoice, LoadString(preset.text), preset.value);
  }
  const std::vector<std::u16string> places = ParseTokens(LoadString(text::kSaveTo));
  AddChoice(kSaveTo, places[CanSave() ? kDoNotSave : kNotSupported], SmsEditorState::kDoNotSave);
  if (OffersMemory(kSimMemory)) AddChoice(kSaveTo, places[kSimMemoryToken], SmsEditorState::kSaveToSim);
  if (OffersMemory(kPhoneMemory)) AddChoice(kSaveTo, places[kPhoneMemoryToken], SmsEditorState::kSaveToPhone);
}

bool SmsEditor::OffersMemory(int memory) const {
  const SmsService& sms = folder().sms();
  return sms.store_supported() &&
         sms.write_memories().find(kMessageMemories[static_cast<std::size_t>(memory)]) !=
             std::u16string::npos;
}

bool SmsEditor::CanSave() const { return OffersMemory(kSimMemory) || OffersMemory(kPhoneMemory); }

void SmsEditor::ShowMessage() {
  if (HasRow()) state_.Fill(message(), folder().address_books(), CanSave());
  UpdateData(false);
}

bool SmsEditor::UpdateData(bool save) {
  if (save) {
    if (state_.name.empty()) state_.number = Text(kRecipient);
    state_.reply_path = IsChecked(kReplyPathCheck);
    state_.delivery_report = IsChecked(kReportCheck);
    return true;
  }
  showing_ = true;
  ShowRecipient();
  SetText(kBody, state_.text);
  SetChecked(kNoValidity, state_.validity == SmsEditorState::Validity::kNone);
  SetChecked(kRelative, state_.validity == SmsEditorState::Validity::kRelative);
  SetChecked(kAbsolute, state_.validity == SmsEditorState::Validity::kAbsolute);
  SelectChoice(kRelativeChoice, state_.relative_choice);
  SetDate(kAbsoluteTime, state_.absolute.fields);
  SetChecked(kReplyPathCheck, state_.reply_path);
  SetChecked(kReportCheck, state_.delivery_report);
  ShowSaveTo();
  showing_ = false;
  ShowTextFacts();
  EnableFields();
  return true;
}

void SmsEditor::ShowRecipient() {
  SetText(kRecipient, state_.name.empty() ? state_.number : state_.name);
  FontRole font = state_.name.empty() ? FontRole::kField : FontRole::kFieldUnderlined;
  if (state_.marked) font = FontRole::kFieldStruckOut;
  SetControlFont(kRecipient, folder().fonts(), font);
  SetControlFont(kBody, folder().fonts(), FontRole::kField);
}

// A memory that the phone does not offer cannot be saved to.
void SmsEditor::ShowSaveTo() {
  SelectChoice(kSaveTo, 0);
  for (int i = 0; i < ChoiceCount(kSaveTo); ++i) {
    if (ChoiceData(kSaveTo, i) == state_.save_to) SelectChoice(kSaveTo, i);
  }
  state_.save_to = static_cast<int>(ChoiceData(kSaveTo, SelectedChoice(kSaveTo)));
}

void SmsEditor::ShowTextFacts() {
  SetText(kCounter, CounterText(Text(kBody).size()));
  SetText(kReading, ReadingHint(state_.text));
}

void SmsEditor::EnableFields() {
  const bool can_save = state_.save_to != SmsEditorState::kDoNotSave;
  Enable(kRelativeChoice, state_.validity == SmsEditorState::Validity::kRelative);
  Enable(kAbsoluteTime, state_.validity == SmsEditorState::Validity::kAbsolute);
  Enable(command::kSave, can_save);
}

void SmsEditor::OnInitMenuPopup(MenuState& menu, int index) {
  SmsDialog::OnInitMenuPopup(menu, index);
  menu.Enable(command::kSave, state_.save_to != SmsEditorState::kDoNotSave);
}

// Fields are taken as the user changes them: what he leaves alone stays what the record holds, even where a
// field cannot show it.
MessageResult SmsEditor::OnNotify(int control_id, const Notification& notification) {
  if (notification.code == NotifyCode::kChanged && !showing_) TakeChange(control_id);
  return 0;
}

void SmsEditor::TakeChange(int control_id) {
  switch (control_id) {
    case kRecipient:
      DropName();
      break;
    case kBody:
      state_.text = Text(kBody);
      ShowTextFacts();
      break;
    case kRelativeChoice:
      state_.relative_choice = SelectedChoice(kRelativeChoice);
      break;
    case kAbsoluteTime:
      state_.absolute.fields = Date(kAbsoluteTime);
      state_.absolute.MarkSet(true);
      break;
    case kSaveTo:
      state_.save_to = static_cast<int>(ChoiceData(kSaveTo, SelectedChoice(kSaveTo)));
      EnableFields();
      break;
    default:
      break;
  }
}

// From the first key on the field holds a number again.
void SmsEditor::DropName() {
  state_.name.clear();
  SetControlFont(kRecipient, folder().fonts(), state_.marked ? FontRole::kFieldStruckOut : FontRole::kField);
}

void SmsEditor::OnCommand(int command, LongParameter parameter) {
  switch (command) {
    case kNoValidity:
      state_.validity = SmsEditorState::Validity::kNone;
      EnableFields();
      break;
    case kRelative:
      state_.validity = SmsEditorState::Validity::kRelative;
      EnableFields();
      break;
    case kAbsolute:
      state_.validity = SmsEditorState::Validity::kAbsolute;
      EnableFields();
      break;
    case kBrowse:
      ChooseAddress();
      break;
    case kIdOk:
    case command::kSend:
    case command::kSave:
      Finish(command);
      break;
    default:
      SmsDialog::OnCommand(command, parameter);
      break;
  }
}

void SmsEditor::ChooseAddress() {
  AddressChooser chooser(folder().address_books(), folder().locale());
  const std::optional<AddressEntry> entry = chooser.Choose(*this);
  if (!entry) return;
  UpdateData(true);
  state_.number = entry->number;
  state_.name = entry->name;
  UpdateData(false);
}

void SmsEditor::Finish(int command) {
  UpdateData(true);
  if (command == command::kSave && state_.save_to == SmsEditorState::kDoNotSave) return;
  if (command == kIdOk && Text(kRecipient).empty() && Text(kBody).empty()) {
    EndDialog(kIdOk);
    return;
  }
  if (!IsUsable()) return;
  if (HasRow()) {
    Complete(message(), command);
    folder().list().Redraw(row());
    EndDialog(command);
  } else if (MakeMessage()) {
    EndDialog(command::kSend);
  }
}

// Asked once for each ending of the dialog; what follows cannot fail any more.
bool SmsEditor::IsUsable() {
  SmsMessage scratch;
  if (Failed(state_.WriteInto(scratch))) {
    Tell(*this, LoadString(text::kBadNumber), BoxIcon::kStop);
    FocusControl(kRecipient);
    return false;
  }
  if (state_.text.empty() && Ask(*this, LoadString(text::kNoText), BoxIcon::kStop)) {
    FocusControl(kBody);
    return false;
  }
  if (state_.text.size() > kTextLimit) {
    Tell(*this, Format(LoadString(text::kTextTooLong), {kTextLimit}), BoxIcon::kStop);
    FocusControl(kBody);
    return false;
  }
  return true;
}

// A new message goes out at the next upload, whatever ended the dialog.
bool SmsEditor::MakeMessage() {
  SmsStore& messages = folder().sms().messages();
  const int position = messages.FirstFree();
  if (position < 0) return false;
  SmsMessage& message = messages.MakeAt(position);
  message.flags = kMessageInUse | kMessageNew;
  message.storage_status = kStoredUnsent;
  Complete(message, command::kSend);
  folder().ShowNewMessage(static_cast<std::size_t>(position));
  return true;
}

void SmsEditor::Complete(SmsMessage& message, int command) {
  constexpr std::uint32_t kTypeBits = 3;
  static_cast<void>(state_.WriteInto(message));
  message.memory = state_.StorageIndex();
  message.submit.reference = folder().sms().messages().NewReference();
  message.first_octet = (message.first_octet & ~kTypeBits) | static_cast<std::uint32_t>(SmsType::kSubmit);
  message.flags = FlagsAfter(command, message.flags, state_.save_to != SmsEditorState::kDoNotSave);
  message.storage_status = kStoredUnsent;
  static_cast<void>(message.Encode());
}

}  // namespace celldesk
