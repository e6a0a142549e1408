#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ui/framework/dialog_template.h"
#include "ui/framework/menu_template.h"
#include "ui/framework/token_list.h"
#include "ui/resources/resources.h"
#include "util/text.h"

namespace celldesk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// A menu in one line: titles with "|" before, items by text, "-" for separators.
std::string MenuText(int number) {
  std::string text;
  for (const MenuPopup& popup : LoadMenu(number)) {
    text += "|" + ToUtf8(popup.title) + ":";
    for (const MenuItem& item : popup.items)
      text += " " + (item.command == 0 ? "-" : ToUtf8(item.text)) + ",";
  }
  return text;
}

std::vector<int> Commands(int number) {
  std::vector<int> commands;
  for (const MenuPopup& popup : LoadMenu(number))
    for (const MenuItem& item : popup.items)
      if (item.command != 0) commands.push_back(item.command);
  return commands;
}

TEST(MenuTemplate, HasTheMenusOfTheFolders) {
  EXPECT_EQ(MenuText(185),
            "|&Address: &New, &Edit, &Delete, Delete Al&l, -, Send SMS, -, Change item &assignment, -, &Exit,"
            "|S&ervices: &Connect, &Disconnect, -, &Load Data, &Upload all, Upload &selected item, -, "
            "&Import..., &Export..., -, &Settings..., &About...,");
  EXPECT_EQ(MenuText(186),
            "|&SMS: &Open, &Delete, Delete &All, -, &Reply, &Forward, -, Show &Names, -, &Exit,"
            "|S&ervices: &Connect, &Disconnect, -, &Load Data, &Upload Data, -, &Import..., &Export..., -, "
            "&Settings..., &About...,");
  EXPECT_EQ(MenuText(196),
            "|&SMS: &New, &Open, &Delete, Delete &All, -, Show &Names, -, &Exit,"
            "|S&ervices: &Connect, &Disconnect, -, &Load Data, &Upload Data, -, &Import..., &Export..., -, "
            "&Settings..., &About...,");
}

TEST(MenuTemplate, HasTheMenusOfViewerAndEditor) {
  EXPECT_EQ(MenuText(198), "|&SMS: &Previous, &Next, -, &Reply, &Forward, -, &Delete,");
  EXPECT_EQ(MenuText(199), "|&SMS: &Previous, &Next, -, &Send, -, S&ave, &Delete,");
  EXPECT_THAT(MenuText(195), testing::EndsWith(": Filter..., -, All Items,"));
}

TEST(MenuTemplate, GivesTheItemsTheirCommands) {
  EXPECT_THAT(Commands(185), ElementsAre(2002, 2006, 2003, 2017, 2054, 2018, 2008, 2009, 2010, 2014, 2015,
                                         2048, 2012, 2013, 2011, 2047));
  EXPECT_THAT(Commands(186), ElementsAre(2006, 2003, 2017, 2023, 2025, 2027, 2008, 2009, 2010, 2014, 2015,
                                         2012, 2013, 2011, 2047));
  EXPECT_THAT(Commands(196), ElementsAre(2002, 2006, 2003, 2017, 2027, 2008, 2009, 2010, 2014, 2015, 2012,
                                         2013, 2011, 2047));
  EXPECT_THAT(Commands(198), ElementsAre(2042, 2036, 2023, 2025, 2003));
  EXPECT_THAT(Commands(199), ElementsAre(2042, 2036, 2030, 2034, 2003));
  EXPECT_THAT(Commands(195), ElementsAre(2029, 2028));
}

TEST(MenuTemplate, IsEmptyForAnUnknownNumber) {
  EXPECT_THAT(LoadMenu(9999), IsEmpty());
  EXPECT_THAT(LoadAccelerators(9999), IsEmpty());
  EXPECT_THAT(LoadCommandBar(9999), IsEmpty());
}

TEST(AcceleratorTable, HasTheTenKeys) {
  std::string text;
  for (const Accelerator& one : LoadAccelerators(190))
    text += ToUtf8(one.key) + "=" + std::to_string(one.command) + " ";
  EXPECT_EQ(text,
            "Ctrl+D=2003 Ctrl+E=2013 Ctrl+F=2025 Ctrl+I=2012 Ctrl+N=2002 Ctrl+P=2011 Ctrl+R=2023 Ctrl+S=2030 "
            "Alt+Down=2036 Alt+Up=2042 ");
}

std::string BarText(int tool_tips) {
  std::string text;
  for (const CommandBarItem& item : LoadCommandBar(tool_tips))
    text += std::to_string(item.command) + "=" + ToUtf8(item.tool_tip) + ";";
  return text;
}

TEST(CommandBarTemplate, BeginsWithASeparatorAndNamesEveryButton) {
  EXPECT_EQ(BarText(107), "0=;2002=New;2003=Delete;2011=Settings;2014=Download;2015=Upload;2044=Connection;");
  EXPECT_EQ(
      BarText(122),
      "0=;2003=Delete;2011=Settings;2023=Reply;2025=Forward;2014=Download;2015=Upload;2044=Connection;");
  EXPECT_EQ(BarText(123),
            "0=;2002=New;2003=Delete;2011=Settings;2025=Forward;2014=Donwload;2015=Upload;2044=Connection;");
}

TEST(DialogTemplate, ReadsTitleAndControlsInOrder) {
  const DialogTemplate form = LoadDialogTemplate(200);
  EXPECT_EQ(form.title, u"Edit item");
  std::string text;
  for (const ControlTemplate& control : form.controls)
    text += std::to_string(control.id) + ToUtf8(control.text) + ";";
  EXPECT_EQ(text, "1001Name:;1002Number:;1003Memory assignment:;1OK;2Cancel;");
  EXPECT_EQ(form.controls[2].kind, ControlKind::kCombo);
  EXPECT_EQ(form.controls[3].kind, ControlKind::kButton);
}

TEST(DialogTemplate, ShowsLogoVersionAndCloseInAbout) {
  const DialogTemplate form = LoadDialogTemplate(213);
  ASSERT_EQ(form.controls.size(), 3u);
  EXPECT_EQ(form.controls[0].kind, ControlKind::kImage);
  EXPECT_EQ(form.controls[1].text, u"Cell Desk v. 1.8");
  EXPECT_EQ(form.controls[2].text, u"&Close");
}

TEST(DialogTemplate, HasNoControlsForAnUnknownNumber) {
  EXPECT_THAT(LoadDialogTemplate(9999).controls, IsEmpty());
}

TEST(Strings, HaveTheColumnsOfEveryList) {
  EXPECT_EQ(LoadString(105), u"30;M;120;Recipient;100;Validity;370;Message Body;");
  EXPECT_EQ(LoadString(106), u"30;M;120;Sender;100;Date;370;Message Body;");
  EXPECT_EQ(LoadString(108), u"40;ID;170;Name;170;Number;");
  EXPECT_EQ(LoadString(174), u"30;M;30;ID;170;Name;170;Number;");
  EXPECT_EQ(LoadString(121), u"120;Name;70;Entries;70;Size;130;Modify;50;OID;50;Type;");
  EXPECT_EQ(LoadString(103), u"Address-SIM;Address-MT;Inbox;Outbox;");
  EXPECT_EQ(LoadString(100), u"Corvane Cell Desk");
}

TEST(Strings, HaveTheTextsOfTheFrameAndItsTransfers) {
  EXPECT_EQ(LoadString(110), u"Cannot open communication port '%s'");
  EXPECT_EQ(LoadString(127), u"You are currently connected to mobile phone\rDo you want to exit?");
  EXPECT_EQ(LoadString(138), u"You have unsaved changes in address book '%s'.\r\rDo you want to exit?");
  EXPECT_EQ(LoadString(139), u"You changed SMS message(s). Do you want to exit?");
  EXPECT_EQ(LoadString(145), u"No mobile phone detected.");
  EXPECT_EQ(LoadString(176), u"Phone Book");
  EXPECT_EQ(LoadString(177), u"SMS messages");
  EXPECT_EQ(LoadString(180), u"Invalid file format.");
  EXPECT_EQ(LoadString(128), u"Initialization...");
  EXPECT_EQ(LoadString(129), u"Starting communication...");
  EXPECT_EQ(LoadString(130), u"Progress %i of %i...");
  EXPECT_EQ(LoadString(131), u"Exporting address book...");
}

TEST(Strings, HaveTheLabelsOfTheSettingsAndWhatTheirSmsPageOffers) {
  EXPECT_EQ(LoadString(104), u"General;Operator;Sms;");
  std::string labels;
  for (const ControlTemplate& control : LoadDialogTemplate(223).controls)
    labels += ToUtf8(control.text) + ";";
  EXPECT_EQ(labels,
            "&Request delivery report;&Reply path;Validity:;;Delete SMS from SIM:;&Manually;After move into "
            "Inbox;Download automatically;");
}

TEST(Strings, ResolveTheirLineEnds) {
  EXPECT_EQ(LoadString(109), u"Bad SMS centre format.\rYou can change it in Settings.");
  EXPECT_EQ(LoadString(9999), u"");
}

}  // namespace
}  // namespace celldesk
