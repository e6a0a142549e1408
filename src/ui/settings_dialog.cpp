#include "ui/settings_dialog.h"

#include "ui/framework/token_list.h"
#include "ui/resources/providers.h"
#include "ui/resources/resources.h"

namespace celldesk {
namespace {

constexpr int kTemplate = 220;
constexpr int kLabels = 104;
constexpr std::array<std::string_view, 3> kIcons = {"connection", "address_sim", "message"};

}  // namespace

SettingsDialog::SettingsDialog(const ProgramServices& services)
    : Dialog(kTemplate),
      services_(services),
      general_(settings_, services),
      operators_(settings_, OperatorDirectory(ProvidersResource())),
      sms_(settings_, services.locale) {}

SettingsDialog::~SettingsDialog() = default;

bool SettingsDialog::OnInitDialog(int /*focus*/, LongParameter /*parameter*/) {
  MakePages();
  UpdateData(false);
  pages_->Start();
  general_.FocusControl(GeneralPage::kPort);
  return false;
}

// Every page is there from the start: the messages go to all of them, shown or not.
void SettingsDialog::MakePages() {
  pages_ =
      std::make_unique<PageHost>(*this, kPages, PageHostStyle{.icon_list = false, .select_first_page = true});
  const std::vector<std::u16string> labels = ParseTokens(LoadString(kLabels));
  const std::array<Dialog*, 3> pages = AllPages();
  for (std::size_t i = 0; i < pages.size(); ++i) pages_->AddPage(labels[i], kIcons[i], *pages[i]);
  pages_->CreatePages();
}

MessageResult SettingsDialog::WindowProc(Message message, WordParameter /*word*/,
                                         LongParameter /*parameter*/) {
  if (message != Message::kDestroy) return 0;
  for (Dialog* page : AllPages()) page->Destroy();
  pages_.reset();
  return 0;
}

bool SettingsDialog::UpdateData(bool save) {
  SettingsKey key(services_.registry);
  key.Create(RegistryRoot::kCurrentUser, SettingsStore::kPath);
  const Message message = save ? Message::kSaveSettings : Message::kLoadSettings;
  for (Dialog* page : AllPages()) page->Dispatch(message, 0, reinterpret_cast<LongParameter>(&key));
  return true;
}

}  // namespace celldesk
