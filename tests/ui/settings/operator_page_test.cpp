#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QLineEdit>
#include <QTest>

#include "ui/settings/settings_window.h"

namespace celldesk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr int kCountry = OperatorPage::kCountry, kOperator = OperatorPage::kOperator,
              kCentre = OperatorPage::kCentre;

void StoreOperator(SettingsWindow& window, std::u16string_view country, std::u16string_view name,
                   std::u16string_view centre) {
  Settings settings = window.Stored();
  settings.country = country;
  settings.operator_name = name;
  settings.centre = centre;
  window.Store(settings);
}

// Replaces what an editable choice list holds by the clipboard.
void PasteInto(Dialog& dialog, int id) {
  auto* list = dynamic_cast<QComboBox*>(ControlOf(dialog, QStringLiteral("control_%1").arg(id)));
  ASSERT_NE(list, nullptr);
  list->lineEdit()->selectAll();
  list->lineEdit()->paste();
}

TEST(OperatorPage, ListsTheCountriesOfTheDirectory) {
  SettingsWindow window;
  window.Look([](SettingsDialog& dialog) {
    const std::vector<std::string> countries = Choices(dialog.operators(), kCountry);
    ASSERT_EQ(countries.size(), 58U);
    EXPECT_EQ(countries.front(), "Andorra");
    EXPECT_EQ(countries.back(), "Zimbabwe");
    EXPECT_EQ(dialog.operators().SelectedChoice(kCountry), -1);
    EXPECT_THAT(Choices(dialog.operators(), kOperator), IsEmpty());
  });
}

TEST(OperatorPage, AChangeOfCountryListsItsOperatorsAndEmptiesTheCentre) {
  SettingsWindow window;
  StoreOperator(window, u"Australia", u"Optus Mobile", u"+61411900000");
  window.Look([](SettingsDialog& dialog) {
    ClickTab(dialog, kOperatorTab);
    Pick(dialog.operators(), kCountry, "Austria");
    EXPECT_THAT(Choices(dialog.operators(), kOperator),
                ElementsAre("A1", "T-Mobile", "Connect", "One", "tele.ring", "Yesss!"));
    EXPECT_EQ(dialog.operators().SelectedChoice(kOperator), -1);
    EXPECT_EQ(TextOf(dialog.operators(), kOperator), "");
    EXPECT_THAT(Choices(dialog.operators(), kCentre), IsEmpty());
    EXPECT_EQ(TextOf(dialog.operators(), kCentre), "");
  });
}

TEST(OperatorPage, StoresNoOperatorOfTheCountryBefore) {
  SettingsWindow window;
  StoreOperator(window, u"Australia", u"Telstra", u"+61418706700");
  window.EditAndConfirm([](SettingsDialog& dialog) {
    ClickTab(dialog, kOperatorTab);
    Pick(dialog.operators(), kCountry, "Austria");
  });
  EXPECT_EQ(Utf8(window.Stored().country), "Austria");
  EXPECT_EQ(Utf8(window.Stored().operator_name), "");
  EXPECT_EQ(Utf8(window.Stored().centre), "");
}

TEST(OperatorPage, AChangeOfOperatorListsItsCentresAndSelectsTheFirst) {
  SettingsWindow window;
  window.EditAndConfirm([](SettingsDialog& dialog) {
    PickOperator(dialog, "Australia", "Optus Mobile");
    EXPECT_THAT(Choices(dialog.operators(), kCentre), ElementsAre("+61411900000", "+61411990000"));
    EXPECT_EQ(TextOf(dialog.operators(), kCentre), "+61411900000");
  });
  EXPECT_EQ(Utf8(window.Stored().country), "Australia");
  EXPECT_EQ(Utf8(window.Stored().operator_name), "Optus Mobile");
  EXPECT_EQ(Utf8(window.Stored().centre), "+61411900000");
}

TEST(OperatorPage, StoresAnotherCentreOfTheOperator) {
  SettingsWindow window;
  window.EditAndConfirm([](SettingsDialog& dialog) {
    PickOperator(dialog, "Australia", "Optus Mobile");
    Pick(dialog.operators(), kCentre, "+61411990000");
  });
  EXPECT_EQ(Utf8(window.Stored().centre), "+61411990000");
}

TEST(OperatorPage, ShowsWhatIsStored) {
  SettingsWindow window;
  StoreOperator(window, u"Australia", u"Optus Mobile", u"+61411990000");
  window.Look([](SettingsDialog& dialog) {
    EXPECT_EQ(TextOf(dialog.operators(), kCountry), "Australia");
    EXPECT_EQ(TextOf(dialog.operators(), kOperator), "Optus Mobile");
    EXPECT_EQ(TextOf(dialog.operators(), kCentre), "+61411990000");
    EXPECT_THAT(Choices(dialog.operators(), kOperator),
                ElementsAre("Telstra", "Optus Mobile", "Vodafone", "3"));
    EXPECT_THAT(Choices(dialog.operators(), kCentre), ElementsAre("+61411900000", "+61411990000"));
  });
}

TEST(OperatorPage, ACountryWithoutOperatorsGivesAnEmptyList) {
  SettingsWindow window;
  window.Look([](SettingsDialog& dialog) {
    ClickTab(dialog, kOperatorTab);
    Pick(dialog.operators(), kCountry, "Andorra");
    EXPECT_THAT(Choices(dialog.operators(), kOperator), IsEmpty());
  });
}

struct RowCase {
  const char* what;
  const char* country;
  const char* name;
  std::vector<std::string> centres;
};

TEST(OperatorPage, TakesTheIrregularRowsAsTheyStand) {
  const std::vector<RowCase> cases = {
      {"no network code", "Austria", "One", {"+436990001999"}},
      {"no dialling code", "Hungary", "Pannon GSM", {"+36209300099"}},
      {"header without its last end", "Azerbaijan", "Azerfon", {"+994702000700"}},
      {"centre in place of the network code", "Germany", "E-Plus", {"+491770620000"}},
  };
  SettingsWindow window;
  window.Look([&](SettingsDialog& dialog) {
    for (const RowCase& one : cases) {
      PickOperator(dialog, one.country, one.name);
      EXPECT_EQ(Choices(dialog.operators(), kCentre), one.centres) << one.what;
      EXPECT_EQ(TextOf(dialog.operators(), kCentre), one.centres.front()) << one.what;
    }
  });
}

TEST(OperatorPage, ShowsAStoredOperatorAndCentreThatTheDirectoryDoesNotHave) {
  SettingsWindow window;
  StoreOperator(window, u"Australia", u"Bush Telegraph", u"+61000000001");
  window.EditAndConfirm([](SettingsDialog& dialog) {
    EXPECT_THAT(Choices(dialog.operators(), kOperator),
                ElementsAre("Bush Telegraph", "Telstra", "Optus Mobile", "Vodafone", "3"));
    EXPECT_EQ(TextOf(dialog.operators(), kOperator), "Bush Telegraph");
    EXPECT_THAT(Choices(dialog.operators(), kCentre), ElementsAre("+61000000001"));
    EXPECT_EQ(TextOf(dialog.operators(), kCentre), "+61000000001");
  });
  EXPECT_EQ(Utf8(window.Stored().operator_name), "Bush Telegraph");
  EXPECT_EQ(Utf8(window.Stored().centre), "+61000000001");
}

TEST(OperatorPage, ShowsAStoredCentreFirstAmongTheOperators) {
  SettingsWindow window;
  StoreOperator(window, u"Australia", u"Telstra", u"+61000000002");
  window.Look([](SettingsDialog& dialog) {
    EXPECT_THAT(Choices(dialog.operators(), kCentre), ElementsAre("+61000000002", "+61418706700"));
    EXPECT_EQ(TextOf(dialog.operators(), kCentre), "+61000000002");
  });
}

TEST(OperatorPage, ShowsAStoredCountryThatTheDirectoryDoesNotHave) {
  SettingsWindow window;
  StoreOperator(window, u"Atlantis", u"Deep Sea", u"+99900000001");
  window.EditAndConfirm([](SettingsDialog& dialog) {
    EXPECT_EQ(Choices(dialog.operators(), kCountry).front(), "Atlantis");
    EXPECT_EQ(TextOf(dialog.operators(), kCountry), "Atlantis");
    EXPECT_THAT(Choices(dialog.operators(), kOperator), ElementsAre("Deep Sea"));
  });
  EXPECT_EQ(Utf8(window.Stored().country), "Atlantis");
  EXPECT_EQ(Utf8(window.Stored().operator_name), "Deep Sea");
}

TEST(OperatorPage, GivesAForeignCountryThatIsPickedAgainNoOperators) {
  SettingsWindow window;
  StoreOperator(window, u"Atlantis", u"Deep Sea", u"+99900000001");
  window.Look([](SettingsDialog& dialog) {
    ClickTab(dialog, kOperatorTab);
    Pick(dialog.operators(), kCountry, "Belgium");
    Pick(dialog.operators(), kCountry, "Atlantis");
    EXPECT_THAT(Choices(dialog.operators(), kOperator), IsEmpty());
  });
}

TEST(OperatorPage, TakesACentreTypedByHand) {
  SettingsWindow window;
  StoreOperator(window, u"Australia", u"Telstra", u"+61418706700");
  window.EditAndConfirm([](SettingsDialog& dialog) {
    ClickTab(dialog, kOperatorTab);
    TypeIntoList(dialog.operators(), kCentre, QStringLiteral("+61400000009"));
    EXPECT_THAT(Choices(dialog.operators(), kCentre), ElementsAre("+61418706700"));
  });
  EXPECT_EQ(Utf8(window.Stored().centre), "+61400000009");
  EXPECT_EQ(Utf8(window.Stored().operator_name), "Telstra");
}

TEST(OperatorPage, IgnoresCharactersThatNoTelephoneNumberHas) {
  SettingsWindow window;
  window.Look([](SettingsDialog& dialog) {
    ClickTab(dialog, kOperatorTab);
    TypeIntoList(dialog.operators(), kCentre, QStringLiteral("+44 (0)x7-7.0"));
    EXPECT_EQ(TextOf(dialog.operators(), kCentre), "+4407-70");
    auto* list = dynamic_cast<QComboBox*>(ControlOf(dialog.operators(), QStringLiteral("control_1037")));
    ASSERT_NE(list, nullptr);
    QTest::keyClick(list, Qt::Key_Backspace);
    EXPECT_EQ(TextOf(dialog.operators(), kCentre), "+4407-7");
    list->lineEdit()->setCursorPosition(1);
    QTest::keyClicks(list, QStringLiteral("x9"));
    EXPECT_EQ(TextOf(dialog.operators(), kCentre), "+94407-7");
  });
}

TEST(OperatorPage, TakesNoMoreThanIsReadBack) {
  SettingsWindow window;
  window.EditAndConfirm([](SettingsDialog& dialog) {
    ClickTab(dialog, kOperatorTab);
    QApplication::clipboard()->setText(QStringLiteral("+") + QString(2000, u'7'));
    PasteInto(dialog.operators(), kCentre);
  });
  EXPECT_EQ(Utf8(window.Stored().centre), "+" + std::string(510, '7'));
}

TEST(OperatorPage, ShowsALongStoredCentreWhole) {
  SettingsWindow window;
  StoreOperator(window, u"", u"", u"+12345678901234567890");
  window.EditAndConfirm([](SettingsDialog& dialog) {
    EXPECT_EQ(TextOf(dialog.operators(), kCentre), "+12345678901234567890");
  });
  EXPECT_EQ(Utf8(window.Stored().centre), "+12345678901234567890");
}

TEST(OperatorPage, TakesTheNumberOutOfAPastedText) {
  SettingsWindow window;
  window.Look([](SettingsDialog& dialog) {
    ClickTab(dialog, kOperatorTab);
    QApplication::clipboard()->setText(
        QStringLiteral("The centre of our network is +44 7700 900123 (day and night)"));
    PasteInto(dialog.operators(), kCentre);
    EXPECT_EQ(TextOf(dialog.operators(), kCentre), "+447700900123");
  });
}

TEST(OperatorPage, KeepsATypedCentreWhenTheSameOperatorIsPickedAgain) {
  SettingsWindow window;
  StoreOperator(window, u"Australia", u"Telstra", u"+61418706700");
  window.Look([](SettingsDialog& dialog) {
    ClickTab(dialog, kOperatorTab);
    TypeIntoList(dialog.operators(), kCentre, QStringLiteral("+61400000009"));
    PickOperator(dialog, "Australia", "Telstra");
    EXPECT_EQ(TextOf(dialog.operators(), kCentre), "+61400000009");
  });
}

TEST(OperatorPage, SubstitutesAForeignOperatorByThePickedOne) {
  SettingsWindow window;
  StoreOperator(window, u"Australia", u"Bush Telegraph", u"+61000000001");
  window.EditAndConfirm([](SettingsDialog& dialog) { PickOperator(dialog, "Australia", "Vodafone"); });
  EXPECT_EQ(Utf8(window.Stored().operator_name), "Vodafone");
  EXPECT_EQ(Utf8(window.Stored().centre), "+61415011501");
}

}  // namespace
}  // namespace celldesk
