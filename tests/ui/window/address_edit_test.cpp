#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ui/window/book_window.h"

namespace celldesk {
namespace {

using edit_dialog::kMemory, edit_dialog::kName, edit_dialog::kNumber;
using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> Choices(const Dialog& dialog) {
  std::vector<std::string> texts;
  for (int i = 0; i < dialog.ChoiceCount(kMemory); ++i) texts.push_back(Utf8(dialog.ChoiceText(kMemory, i)));
  return texts;
}

void Choose(Dialog& dialog, std::u16string_view id) {
  for (int i = 0; i < dialog.ChoiceCount(kMemory); ++i)
    if (dialog.ChoiceText(kMemory, i) == id) dialog.SelectChoice(kMemory, i);
  EXPECT_EQ(dialog.Text(kMemory), id);
}

TEST(AddressEdit, ShowsTheFocusedEntryWithTheFreeSlotsAndItsOwn) {
  BookWindow window(ThreeEntries());
  window.Load();
  ClickRow(window.sim().list(), 1);
  bool shown = false;
  window.InNextDialog([&](Dialog& dialog) {
    shown = true;
    EXPECT_EQ(Utf8(dialog.Title()), "Edit item");
    EXPECT_EQ(Utf8(dialog.Text(kName)), "Bert");
    EXPECT_EQ(Utf8(dialog.Text(kNumber)), "112");
    EXPECT_EQ(Utf8(dialog.Text(kMemory)), "2");
    EXPECT_THAT(Choices(dialog), ElementsAre("2", "3", "5"));
    dialog.EndDialog(kIdCancel);
  });
  window.Command(command::kOpen);
  EXPECT_TRUE(shown);
  EXPECT_THAT(window.SimRows(), ElementsAre("1|Anna|+447700900101", "2|Bert|112", "4|Carl|0044"));
  EXPECT_FALSE(window.sim().book().IsModified());
}

TEST(AddressEdit, IsOpenedByEnterAndByADoubleClickToo) {
  BookWindow window(ThreeEntries());
  window.Load();
  std::vector<std::string> opened;
  const auto note = [&](Dialog& dialog) {
    opened.push_back(Utf8(dialog.Text(kName)));
    PressKey(dialog, Qt::Key_Escape);
  };
  ClickRow(window.sim().list(), 2);
  window.InNextDialog(note);
  PressKey(window.sim().list(), Qt::Key_Return);
  window.InNextDialog(note);
  DoubleClickRow(window.sim().list(), 0);
  EXPECT_THAT(opened, ElementsAre("Carl", "Anna"));
}

TEST(AddressEdit, DoesNothingWithoutAFocusedRow) {
  BookWindow window(ThreeEntries());
  window.Load();
  bool shown = false;
  window.InNextDialog([&](Dialog& dialog) {
    shown = true;
    dialog.EndDialog(kIdCancel);
  });
  EXPECT_FALSE(window.IsEnabled(command::kOpen));
  window.Command(command::kOpen);
  EXPECT_FALSE(shown);
}

TEST(AddressEdit, TakesWhatWasTypedAndMarksTheEntry) {
  BookWindow window(ThreeEntries());
  window.Load();
  ClickRow(window.sim().list(), 1);
  window.InNextDialog([](Dialog& dialog) {
    TypeInto(dialog, kName, QStringLiteral("Berta"));
    TypeInto(dialog, kNumber, QStringLiteral("+4917"));
    ClickDialogButton(dialog, kIdOk);
  });
  window.Command(command::kOpen);
  EXPECT_THAT(window.SimRows(), ElementsAre("1|Anna|+447700900101", "2|Berta|+4917", "4|Carl|0044"));
  EXPECT_EQ(window.SimEntry(1).flags, AddressEntry::kOccupied | AddressEntry::kModified);
  EXPECT_FALSE(window.SimEntry(0).is_modified());
  EXPECT_THAT(window.TakePhoneLines(), IsEmpty()) << "nothing changes in the phone before an upload";
}

TEST(AddressEdit, LeavesAnUnchangedEntryUnmodified) {
  BookWindow window(ThreeEntries());
  window.Load();
  ClickRow(window.sim().list(), 0);
  window.InNextDialog([](Dialog& dialog) { PressKey(dialog, Qt::Key_Return); });
  window.Command(command::kOpen);
  EXPECT_FALSE(window.sim().book().IsModified());
  EXPECT_FALSE(window.sim().HasUnsavedChanges());
}

TEST(AddressEdit, CountsOkWithoutNameAndNumberAsCancel) {
  BookWindow window(ThreeEntries());
  window.Load();
  ClickRow(window.sim().list(), 1);
  window.InNextDialog([](Dialog& dialog) {
    dialog.SetText(kName, u"");
    dialog.SetText(kNumber, u"");
    ClickDialogButton(dialog, kIdOk);
  });
  window.Command(command::kOpen);
  EXPECT_THAT(window.SimRows(), ElementsAre("1|Anna|+447700900101", "2|Bert|112", "4|Carl|0044"));
  EXPECT_FALSE(window.sim().book().IsModified());
}

TEST(AddressEdit, KeepsAnEntryWithOnlyOneOfTheTwo) {
  BookWindow window(ThreeEntries());
  window.Load();
  ClickRow(window.sim().list(), 1);
  window.InNextDialog([](Dialog& dialog) {
    dialog.SetText(kName, u"");
    ClickDialogButton(dialog, kIdOk);
  });
  window.Command(command::kOpen);
  EXPECT_THAT(window.SimRows(), ElementsAre("1|Anna|+447700900101", "2||112", "4|Carl|0044"));
}

TEST(AddressEdit, MovesToAFreeSlotAndErasesTheOldOne) {
  BookWindow window(ThreeEntries());
  window.Load();
  ClickRow(window.sim().list(), 1);
  window.InNextDialog([](Dialog& dialog) {
    Choose(dialog, u"5");
    ClickDialogButton(dialog, kIdOk);
  });
  window.Command(command::kOpen);
  EXPECT_THAT(window.SimRows(), ElementsAre("1|Anna|+447700900101", "5|Bert|112", "4|Carl|0044"));
  EXPECT_EQ(window.SimEntry(1).flags, AddressEntry::kModified);
  window.TakePhoneLines();
  window.Command(command::kUpload);
  EXPECT_THAT(window.TakeWrites(), ElementsAre("AT+CPBW=2", R"(AT+CPBW=5,"112",129,"Bert")"));
  EXPECT_THAT(window.PhoneEntries("SM"), ElementsAre("1|Anna|+447700900101", "4|Carl|0044", "5|Bert|112"));
}

TEST(AddressEdit, ReplacesTheEntryThatStandsAtTheChosenSlot) {
  BookWindow window(ThreeEntries());
  window.Load();
  // The slot of an entry whose id is another's: the box offers it, and nobody asks.
  window.SimEntry(3).id = u"2";
  ClickRow(window.sim().list(), 1);
  window.InNextDialog([](Dialog& dialog) {
    EXPECT_THAT(Choices(dialog), ElementsAre("2", "3", "4", "5"));
    Choose(dialog, u"4");
    ClickDialogButton(dialog, kIdOk);
  });
  window.Command(command::kOpen);
  EXPECT_THAT(window.SimRows(), ElementsAre("1|Anna|+447700900101", "4|Bert|112"));
  EXPECT_EQ(window.SimEntry(1).flags, AddressEntry::kModified);
  EXPECT_THAT(window.TakeAsked(), IsEmpty());
}

TEST(AddressEdit, SavesACopyBeforeItReplacesAnotherEntryAndOnlyThen) {
  for (const char16_t* target : {u"5", u"4"}) {
    BookWindow window(ThreeEntries());
    window.Load();
    window.SimEntry(3).id = u"2";
    ClickRow(window.sim().list(), 1);
    window.InNextDialog([&](Dialog& dialog) {
      Choose(dialog, target);
      ClickDialogButton(dialog, kIdOk);
    });
    const std::size_t files = window.files.files.size();
    window.Command(command::kOpen);
    EXPECT_EQ(window.files.files.size(), files + (target == std::u16string_view(u"4") ? 1 : 0));
  }
}

TEST(AddressEdit, KeepsOneRowPerEntryAfterAReplacement) {
  for (const int edited_row : {1, 2}) {
    BookWindow window(ThreeEntries());
    window.Load();
    const int other = edited_row == 1 ? 3 : 1;
    const std::u16string own = edited_row == 1 ? u"2" : u"4", target = edited_row == 1 ? u"4" : u"2";
    window.SimEntry(other).id = own;
    ClickRow(window.sim().list(), edited_row);
    window.InNextDialog([&](Dialog& dialog) {
      Choose(dialog, target);
      ClickDialogButton(dialog, kIdOk);
    });
    window.Command(command::kOpen);
    ASSERT_EQ(window.sim().list().RowCount(), 2);
    EXPECT_TRUE(window.sim().list().Shows(static_cast<std::size_t>(other)));
    EXPECT_THAT(window.sim().list().SelectedRows(), ElementsAre(1));
    // The same entry once more: it must not get a second row.
    window.InNextDialog([](Dialog& dialog) {
      dialog.SetText(kName, u"Dora");
      ClickDialogButton(dialog, kIdOk);
    });
    window.Command(command::kOpen);
    EXPECT_THAT(window.SimRows(),
                ElementsAre("1|Anna|+447700900101", testing::StartsWith(Utf8(target) + "|Dora|")));
  }
}

TEST(AddressEdit, ChoosesNothingForAnIdThatTheMemoryDoesNotHave) {
  BookWindow window(ThreeEntries());
  window.Load();
  window.SimEntry(0).id = u"77";
  ClickRow(window.sim().list(), 0);
  window.InNextDialog([](Dialog& dialog) {
    EXPECT_THAT(Choices(dialog), ElementsAre("1", "3", "5")) << "its own slot, not its id";
    EXPECT_EQ(Utf8(dialog.Text(kMemory)), "");
    ClickDialogButton(dialog, kIdOk);
  });
  window.Command(command::kOpen);
  EXPECT_EQ(window.SimEntry(0).id, u"77") << "without an id nothing happens";
  EXPECT_FALSE(window.sim().book().IsModified());
}

TEST(AddressEdit, LimitsTheFieldsToWhatThePhoneTakes) {
  simulator::PhoneMemory memory = ThreeEntries();
  memory.FindPhonebook("SM")->name_length = 7;
  memory.FindPhonebook("SM")->number_length = 12;
  BookWindow window(memory);
  window.Load();
  ClickRow(window.sim().list(), 1);
  window.InNextDialog([](Dialog& dialog) {
    TypeInto(dialog, kName, QStringLiteral("Bartholomew"));
    TypeInto(dialog, kNumber, QStringLiteral("012345678901234567"));
    EXPECT_EQ(Utf8(dialog.Text(kName)), "Barthol");
    EXPECT_EQ(Utf8(dialog.Text(kNumber)), "012345678901");
    dialog.EndDialog(kIdCancel);
  });
  window.Command(command::kOpen);
}

TEST(AddressEdit, ShowsALongerTextThanTheLimitWhole) {
  BookWindow window(ThreeEntries());
  window.Load();
  window.sim().book().memory().name_length = 2;
  ClickRow(window.sim().list(), 0);
  window.InNextDialog([](Dialog& dialog) {
    EXPECT_EQ(Utf8(dialog.Text(kName)), "Anna");
    ClickDialogButton(dialog, kIdOk);
  });
  window.Command(command::kOpen);
  EXPECT_FALSE(window.sim().book().IsModified());
}

TEST(AddressNew, TakesTheFirstFreeSlot) {
  BookWindow window(ThreeEntries());
  window.Load();
  window.InNextDialog([](Dialog& dialog) {
    EXPECT_EQ(Utf8(dialog.Title()), "New item");
    EXPECT_EQ(Utf8(dialog.Text(kMemory)), "3");
    EXPECT_EQ(Utf8(dialog.Text(kName)), "");
    TypeInto(dialog, kName, QStringLiteral("Dora"));
    TypeInto(dialog, kNumber, QStringLiteral("911"));
    PressKey(dialog, Qt::Key_Return);
  });
  PressKey(window.sim().list(), Qt::Key_N, Qt::ControlModifier);
  EXPECT_THAT(window.SimRows(),
              ElementsAre("1|Anna|+447700900101", "2|Bert|112", "4|Carl|0044", "3|Dora|911"));
  EXPECT_THAT(window.sim().list().SelectedRows(), ElementsAre(3));
  window.TakePhoneLines();
  window.Command(command::kUpload);
  EXPECT_THAT(window.TakeWrites(), ElementsAre(R"(AT+CPBW=3,"911",129,"Dora")"));
}

TEST(AddressNew, ChangesNothingWhenCancelled) {
  BookWindow window(ThreeEntries());
  window.Load();
  window.InNextDialog([](Dialog& dialog) {
    TypeInto(dialog, kName, QStringLiteral("Dora"));
    PressKey(dialog, Qt::Key_Escape);
  });
  ClickBarButton(window.frame(), command::kNew);
  EXPECT_EQ(window.sim().list().RowCount(), 3);
  EXPECT_FALSE(window.sim().book().IsModified());
}

TEST(AddressNew, TellsThatTheMemoryIsFull) {
  BookWindow window(PhoneWith({{1, "1", u"A"}, {2, "2", u"B"}}, 2));
  // A memory's last slot is not always read (see the transfer), so the second entry is put here by hand.
  window.Load();
  ASSERT_EQ(window.sim().book().count(), 2);
  window.SimEntry(1).flags = AddressEntry::kOccupied;
  window.TakeAsked();
  window.Command(command::kNew);
  EXPECT_THAT(window.LastBox(), IsErrorBox("Address book on your mobile phone is full."));
}

TEST(AddressNew, BeginsTheBookOfAPhoneThatWasNeverAskedAnew) {
  WindowSession session;
  ASSERT_TRUE(session.Start());
  AddressBook& book = session.sim().book();
  ASSERT_FALSE(Failed(book.Resize(3)));
  book.At(0).flags = AddressEntry::kOccupied;
  session.sim().AddItem(0);
  ASSERT_EQ(session.sim().list().RowCount(), 1);
  bool shown = false;
  session.InNextDialog([&](Dialog& dialog) {
    shown = true;
    EXPECT_EQ(Utf8(dialog.Title()), "New item");
    EXPECT_THAT(Choices(dialog), ElementsAre("1"));
    EXPECT_EQ(Utf8(dialog.Text(kMemory)), "1");
    TypeInto(dialog, kName, QString(60, u'n'));
    TypeInto(dialog, kNumber, QString(60, u'1'));
    ClickDialogButton(dialog, kIdOk);
  });
  const std::size_t files = session.files.files.size();
  session.Command(command::kNew);
  EXPECT_EQ(session.files.files.size(), files + 1) << "a copy of what is lost";
  EXPECT_TRUE(shown);
  EXPECT_EQ(book.count(), 1) << "the entry from before is gone";
  EXPECT_THAT(WindowSession::Rows(session.sim()),
              ElementsAre("1|" + std::string(40, 'n') + "|" + std::string(40, '1')));
  EXPECT_THAT(session.TakeAsked(), IsEmpty());
}

TEST(AddressEdit, EditsTheEntryOfAPhoneThatWasNeverAskedInItsPlace) {
  WindowSession session;
  ASSERT_TRUE(session.Start());
  AddressEntry& entry = session.sim().book().At(2);
  entry.id = u"3";
  entry.name = u"Anna";
  entry.flags = AddressEntry::kOccupied;
  session.sim().AddItem(2);
  session.sim().list().SetFocusedRow(0);
  session.InNextDialog([](Dialog& dialog) {
    EXPECT_EQ(Utf8(dialog.Text(kMemory)), "3");
    dialog.SetText(kName, u"Anne");
    ClickDialogButton(dialog, kIdOk);
  });
  session.Command(command::kOpen);
  EXPECT_THAT(WindowSession::Rows(session.sim()), ElementsAre("3|Anne|"));
  EXPECT_EQ(session.sim().book().At(2).flags, AddressEntry::kOccupied | AddressEntry::kModified);
}

TEST(AddressNew, MakesTheBookAsLongAsTheMemory) {
  BookWindow window(PhoneWith({}, 9));
  window.InNextDialog([](Dialog& dialog) { dialog.EndDialog(kIdCancel); });
  window.Command(command::kNew);
  EXPECT_EQ(window.sim().book().count(), 9);
  EXPECT_TRUE(window.sim().book().IsModified()) << "fresh slots are erased by the next upload";
}

}  // namespace
}  // namespace celldesk
