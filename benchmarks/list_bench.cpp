#include <QCoreApplication>
#include <QScrollBar>
#include <algorithm>
#include <cstdio>
#include <optional>
#include <span>
#include <vector>

#include "benchmarks.h"
#include "data/address_book.h"
#include "measure.h"
#include "memory.h"
#include "platform/qt/qt_locale.h"
#include "sample_messages.h"
#include "ui/commands.h"
#include "ui/framework/dialog.h"
#include "ui/framework/list_view.h"
#include "ui/framework/qt/list_table.h"
#include "ui/framework/qt/native.h"
#include "ui/resources/resources.h"
#include "ui/sms_columns.h"
#include "util/number_text.h"
#include "window_application.h"

namespace celldesk::bench {
namespace {

constexpr int kFolderTemplate = 180;
constexpr int kListId = 1000;
constexpr std::size_t kRecords = 100000;
constexpr double kMilliseconds = 1e3;

/// Messages as an Inbox has them: all different, in no order.
std::vector<SmsMessage> MakeRecords() {
  const auto& samples = SampleMessages();
  std::vector<SmsMessage> records(kRecords);
  std::uint32_t random = 1;
  for (std::size_t i = 0; i < kRecords; ++i) {
    SmsMessage& message = records[i];
    TakeListed(message, samples[i % 17]);  // the received ones
    static_cast<void>(message.Decode());
    random = random * 1664525 + 1013904223;
    message.flags = kMessageInUse;
    message.memory = 0;
    message.text.insert(0, DecimalText(static_cast<int>(random >> 8)) + u" ");
    CalendarTime& time = message.deliver.timestamp.fields;
    time.month = static_cast<std::uint16_t>(1 + random % 12);
    time.day = static_cast<std::uint16_t>(1 + random / 16 % 28);
    time.second = static_cast<std::uint16_t>(random / 512 % 60);
  }
  return records;
}

/// An Inbox over records of its own: one store would not hold so many.
class Folder : public Dialog {
 public:
  Folder(const std::vector<SmsMessage>& records, const SmsColumns& columns)
      : Dialog(kFolderTemplate), records_(records), columns_(columns) {}

  ListView& list() { return List(kListId); }
  void Fill() {
    std::vector<std::uint32_t> rows;
    for (std::uint32_t record = 0; record < records_.size(); ++record) {
      if (BelongsTo(SmsFolder::kInbox, records_[record])) rows.push_back(record);
    }
    list().SetRows(rows);
  }

  /// At once; UpdateNow leaves a painting out when the last one was just before.
  void Paint() { list().native()->table->viewport()->repaint(); }
  void ScrollPage() {
    list().native()->table->verticalScrollBar()->triggerAction(QAbstractSlider::SliderPageStepAdd);
    Paint();
  }

  bool OnInitDialog(int /*focus*/, LongParameter /*parameter*/) override {
    list().BuildColumns(text::kInboxColumns);
    list().SetFonts(fonts_);
    list().EnableSorting(true);
    return true;
  }
  int AddItem(std::size_t record) override {
    if (!BelongsTo(SmsFolder::kInbox, records_[record])) return -1;
    return list().Shows(record) ? list().RowOf(record) : list().AddRow(record);
  }
  int Compare(std::size_t record1, std::size_t record2) override {
    return columns_.Compare(records_[record1], records_[record2], list().sort_column(), true);
  }
  bool SortsLast(std::size_t record) override {
    return columns_.SortsLast(records_[record], list().sort_column());
  }
  std::vector<std::uint64_t> SortKeys(std::span<const std::uint32_t> records, bool descending) override {
    std::vector<const SmsMessage*> messages(records.size());
    std::transform(records.begin(), records.end(), messages.begin(),
                   [this](std::uint32_t record) { return &records_[record]; });
    return columns_.SortKeys(messages, list().sort_column(), true, descending);
  }
  std::u16string_view ColumnText(std::size_t record, int column, std::u16string& buffer) override {
    return columns_.Text(records_[record], column, true, buffer);
  }
  FontRole ItemFont(std::size_t record) override { return FontFor(records_[record]); }

 private:
  const std::vector<SmsMessage>& records_;
  const SmsColumns& columns_;
  FontSet fonts_;
};

void Add(Figures& figures, const char* name, const Sample& sample, std::optional<double> budget = {}) {
  figures.push_back({name, sample.median * kMilliseconds, "ms", {}, budget, sample.spread});
}

/// Sorts the rows as they were filled in, by a click on the header of `column`.
Sample TimeSort(Folder& folder, int column, const Options& options) {
  // Another column first, so that each click on this one sorts upwards.
  const int other = column == SmsColumns::kMemory ? SmsColumns::kNumber : SmsColumns::kMemory;
  return Repeat(options.runs, [&] {
    folder.list().Clear();
    folder.list().OnHeaderClick(other);
    folder.Fill();
    return TimeOf([&] { folder.list().OnHeaderClick(column); });
  });
}

/// Bytes of the filled list, beside the records.
double ListBytes(Folder& folder) {
  folder.list().Clear();
  QCoreApplication::processEvents();
  const std::size_t before = HeapInUse();
  folder.Fill();
  folder.Paint();
  QCoreApplication::processEvents();
  return static_cast<double>(HeapInUse() - before) / static_cast<double>(kRecords);
}

void MeasureFolder(Figures& figures, Folder& folder, const Options& options) {
  const double bytes = ListBytes(folder);
  const Sample fill = Repeat(options.runs, [&] { return TimeOf([&] { folder.Fill(); }); });
  Add(figures, "list of 100000 records: fill", fill, 20);
  // The sender's column sorts by time, the date's by the text that it shows.
  Add(figures, "list of 100000 records: sort by memory", TimeSort(folder, SmsColumns::kMemory, options));
  Add(figures, "list of 100000 records: sort by time", TimeSort(folder, SmsColumns::kNumber, options), 60);
  Add(figures, "list of 100000 records: sort by date", TimeSort(folder, SmsColumns::kDate, options));
  Add(figures, "list of 100000 records: sort by text", TimeSort(folder, SmsColumns::kBody, options), 250);
  const Sample paint = Repeat(options.runs, [&] { return TimeOf([&] { folder.Paint(); }); });
  Add(figures, "list of 100000 records: repaint a page", paint, 8);
  const Sample scroll = Repeat(options.runs, [&] { return TimeOf([&] { folder.ScrollPage(); }); });
  Add(figures, "list of 100000 records: scroll a page", scroll, 8);
  figures.push_back({"list of 100000 records: memory beside the model", bytes, "B/record", {}, 16.0, 0});
}

}  // namespace

void MeasureList(Figures& figures, const Options& options) {
  WindowApplication();
  const QtLocale locale(u"de_DE");
  const AddressBook sim(u"SM", true), phone(u"ME", false);
  const AddressBooks books(sim, phone);
  const SmsColumns columns(SmsFolder::kInbox, books, locale);
  const std::vector<SmsMessage> records = MakeRecords();
  Folder folder(records, columns);
  if (!folder.CreateModeless(nullptr)) {
    std::fputs("The list could not be made; its figures are left out.\n", stderr);
    return;
  }
  folder.Show(true);
  QCoreApplication::processEvents();
  MeasureFolder(figures, folder, options);
}

}  // namespace celldesk::bench
